#pragma once
// The records an export starts from: JSON Lines or GeoJSON as "tessel import" writes them,
// or as another tool wrote them in the same shape. Fields are named: GeoJSON properties by
// their names, the values of a JSON Lines record by their position, "#0", "#1", ...

#include "host/CadPlatform.h"
#include "host/GisData.h"
#include "tessel/core/Requests.h"

#include <istream>
#include <optional>
#include <string>
#include <vector>

namespace tessel {

struct InputRecord {
    std::optional<WString> name;         // "name", or a feature's "id"
    std::optional<AcGePoint3d> position; // "position", or a Point geometry
    std::optional<WString> start, end;   // a line's node names
    // Field values by field index (see ExportInput::fieldNames); missing at the end: null.
    std::vector<VeltoGis::Data::CDataBox> values;
};

struct ExportInput {
    std::vector<std::string> fieldNames; // in order of first appearance
    std::vector<InputRecord> records;

    // The index of a field name, or -1.
    int FieldIndex(const std::string& name) const;
};

// Makes the position's coordinates fields of their own for each of "@x", "@y", "@z" among the
// sources (the names binds give), real values, null where a record has no position. Throws a
// usage AppError naming the input when a coordinate is asked for and no record has a position.
void AddCoordinateFields(ExportInput& input, const std::vector<std::string>& sources, const std::string& path);

// GeoJSON for .geojson and .json; GDAL for .gpkg, .fgb, .shp and .csv; JSON Lines otherwise.
InputFormat InputFormatForPath(const std::string& path);

// Reads the whole input. Throws a usage AppError naming the file (and the line, for JSON
// Lines) when it cannot be read or is not in the expected shape. JSON values become host
// values: integers that fit an int as integers, other numbers as reals, strings as text,
// true and false as text, arrays and objects as their JSON text.
ExportInput ReadExportInput(const std::string& path, InputFormat format);
// The same from a stream; name stands for the input in error lines.
ExportInput ParseExportInput(std::istream& input, InputFormat format, const std::string& name);

} // namespace tessel
