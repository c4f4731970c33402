#pragma once
// Spatial indexes of GIS datasets that GDAL wrote without one, built in one go once every
// feature is in. GDAL 3.6 inserts each point into a GeoPackage's SQLite R-tree as it comes
// (12 of the 15 s that a million points cost) and spends 5 s of every million on
// FlatGeobuf's index; packing either tree from the sorted points takes a fraction of that.
// Each index is the one GDAL itself would have made, so every reader uses it.

#include <cstdint>
#include <string>
#include <vector>

namespace tessel {

// A feature's point; x and y are NaN for a feature without one.
struct IndexedPoint {
    std::int64_t fid;
    double x, y;
};

// Adds the R-tree extension's index of table's geometry column, holding points (by the
// table's feature id column), to the GeoPackage at path: the virtual table, its triggers and
// the extension's row. Nobody else may have the file open, and the table has no index yet.
// Throws JobError.
void AddGpkgSpatialIndex(const std::string& path, const std::string& table, const std::string& geometryColumn,
                         const std::string& fidColumn, std::vector<IndexedPoint> points);

// Adds the packed Hilbert R-tree to the FlatGeobuf file at path, which GDAL wrote without an
// index; points holds every feature's point in the order written (at least one: GDAL writes
// no header for a file without features, so an empty file is GDAL's own). The features are
// rewritten in the tree's order, as FlatGeobuf keeps them. Throws JobError.
void AddFlatGeobufIndex(const std::string& path, const std::vector<IndexedPoint>& points);

} // namespace tessel
