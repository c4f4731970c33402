#pragma once
// The writers of imported records that tessel writes itself: JSON Lines, GeoJSON, CSV and
// FlatGeobuf. Each gets the records one at a time, in file order, and appends its text (or
// bytes) to a sink; the sink decides when they reach the file. Field names (GeoJSON
// properties, CSV header, FlatGeobuf columns) come with the layout, one per value position.

#include "host/ImpexData.h"
#include "tessel/core/Requests.h"

#include <memory>
#include <string>
#include <vector>

namespace tessel {

// Receives the writers' text. A writer appends one record to Text() and then calls
// RecordDone(), where the sink may pass what it has on.
class TextSink {
public:
    virtual ~TextSink() = default;
    std::string& Text() { return text_; }
    virtual void RecordDone() {}

protected:
    std::string text_;
};

enum class RecordKind { Point, Line, Polygon, Row, Cloud };

// The type of a field, from the values it holds: Integer when every value is an integer,
// Real when every value is a number, Text otherwise (and when every value is null).
enum class FieldType { Integer, Real, Text };

class CoordinateSystem;

struct RecordLayout {
    RecordKind kind = RecordKind::Point;
    std::vector<std::string> fieldNames; // UTF-8, unique; value i is named fieldNames[i]
    std::vector<FieldType> fieldTypes;   // one per field name
    // The coordinate system the user gave the positions (none: nothing is claimed).
    std::shared_ptr<const CoordinateSystem> crs;
    std::size_t records = 0; // how many records follow
};

// One imported entity as the framework holds it. Pointers that are null stand for what the
// module never set.
struct EntityRecord {
    const WString* name = nullptr;
    const AcGePoint3d* position = nullptr; // points
    const WString* start = nullptr;        // lines
    const WString* end = nullptr;          // lines
    const VeltoGis::ImportExport::DataValueList* values = nullptr;
};

class RecordWriter {
public:
    virtual ~RecordWriter() = default;
    virtual void Begin(const RecordLayout& layout) = 0;
    virtual void Entity(const EntityRecord& entity) = 0; // points, lines, polygons
    virtual void Row(const VeltoGis::ImportExport::DataValueList& values) = 0;
    virtual void CloudPoint(double x, double y) = 0;
    virtual void End() = 0;
};

std::unique_ptr<RecordWriter> MakeJsonLinesWriter(TextSink& sink);
std::unique_ptr<RecordWriter> MakeGeoJsonWriter(TextSink& sink);
std::unique_ptr<RecordWriter> MakeCsvWriter(TextSink& sink);

// The output format for a path: .geojson (or .json) GeoJSON, .csv CSV, .gpkg GeoPackage,
// .fgb FlatGeobuf, .shp ESRI Shapefile, anything else (and standard output) JSON Lines.
OutputFormat FormatForPath(const std::string& path);

// Names made unique by numbering repeats: "CODE", "CODE#2", "CODE#3".
std::vector<std::string> UniqueFieldNames(const std::vector<std::string>& names);

} // namespace tessel
