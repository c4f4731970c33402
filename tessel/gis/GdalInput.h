#pragma once
// Export records from any vector dataset GDAL reads (GeoPackage, Shapefile, FlatGeobuf,
// GeoJSON, CSV, ...): one layer, its attribute fields by name and, for point geometries, the
// position.

#include "tessel/text/ExportInput.h"

#include <optional>
#include <string>

namespace tessel {

// Reads the layer named (or the dataset's only one). Throws a usage AppError naming the path:
// not a vector dataset, no such layer, several layers and none named. Field values become host
// values: integers that fit an int as integers, other numbers as reals, the rest as text, unset
// and null fields as null.
ExportInput ReadGdalInput(const std::string& path, const std::optional<std::string>& layer);

} // namespace tessel
