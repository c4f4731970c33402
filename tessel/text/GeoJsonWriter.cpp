// GeoJSON: one FeatureCollection, one feature per line. Points carry their position as Point
// geometry (x, y: the module's Z is always 0 and is no elevation); every other record has
// null geometry. Properties are named by the layout's field names, in value order. The
// entity name becomes the feature's "id"; lines keep their node names in "start" and "end".
// A coordinate system with an EPSG code is named in the collection's "crs" member.

#include "tessel/gis/CoordinateSystem.h"
#include "tessel/text/RecordWriter.h"
#include "tessel/text/ValueText.h"

namespace tessel {
namespace {

using VeltoGis::ImportExport::DataValueList;

class GeoJsonWriter final : public RecordWriter {
public:
    explicit GeoJsonWriter(TextSink& sink) : sink_(sink) {}

    void Begin(const RecordLayout& layout) override
    {
        layout_ = layout;
        // Every feature repeats the property names: their JSON text is made once.
        for (const std::string& name : layout.fieldNames) {
            keys_.emplace_back();
            AppendJsonString(keys_.back(), name);
            keys_.back().push_back(':');
        }
        sink_.Text() += "{\"type\":\"FeatureCollection\",";
        // The named coordinate system of GeoJSON's 2008 form, which GIS programs still read.
        if (layout.crs && !layout.crs->EpsgUrn().empty())
            sink_.Text() += "\"crs\":{\"type\":\"name\",\"properties\":{\"name\":\"" + layout.crs->EpsgUrn() + "\"}},";
        sink_.Text() += "\"features\":[";
        sink_.RecordDone();
    }

    void Entity(const EntityRecord& entity) override
    {
        std::string& out = StartFeature();
        if (entity.name) {
            out += "\"id\":";
            AppendJsonString(out, *entity.name);
            out.push_back(',');
        }
        if (entity.position)
            AppendPointGeometry(out, entity.position->x, entity.position->y);
        else
            out += "\"geometry\":null,";
        if (layout_.kind == RecordKind::Line) {
            AppendNodeName(out, "start", entity.start);
            AppendNodeName(out, "end", entity.end);
        }
        AppendProperties(out, entity.values);
        EndFeature();
    }

    void Row(const DataValueList& values) override
    {
        std::string& out = StartFeature();
        out += "\"geometry\":null,";
        AppendProperties(out, &values);
        EndFeature();
    }

    void CloudPoint(double x, double y) override
    {
        std::string& out = StartFeature();
        AppendPointGeometry(out, x, y);
        out += "\"properties\":{}";
        EndFeature();
    }

    void End() override
    {
        sink_.Text() += features_ ? "\n]}\n" : "]}\n";
        sink_.RecordDone();
    }

private:
    std::string& StartFeature()
    {
        std::string& out = sink_.Text();
        out += features_++ ? ",\n" : "\n";
        out += "{\"type\":\"Feature\",";
        return out;
    }

    void EndFeature()
    {
        sink_.Text().push_back('}');
        sink_.RecordDone();
    }

    static void AppendPointGeometry(std::string& out, double x, double y)
    {
        out += "\"geometry\":{\"type\":\"Point\",\"coordinates\":[";
        AppendJsonNumber(out, x);
        out.push_back(',');
        AppendJsonNumber(out, y);
        out += "]},";
    }

    static void AppendNodeName(std::string& out, const char* key, const WString* name)
    {
        out.push_back('"');
        out += key;
        out += "\":";
        if (name)
            AppendJsonString(out, *name);
        else
            out += "null";
        out.push_back(',');
    }

    void AppendProperties(std::string& out, const DataValueList* values)
    {
        out += "\"properties\":{";
        if (values) {
            for (std::size_t i = 0; i < values->size(); ++i) {
                if (i > 0)
                    out.push_back(',');
                if (i < keys_.size()) {
                    out += keys_[i];
                } else {
                    AppendJsonString(out, "#" + std::to_string(i));
                    out.push_back(':');
                }
                AppendJsonValue(out, (*values)[i].get());
            }
        }
        out.push_back('}');
    }

    TextSink& sink_;
    RecordLayout layout_;
    std::vector<std::string> keys_;
    std::size_t features_ = 0;
};

} // namespace

std::unique_ptr<RecordWriter> MakeGeoJsonWriter(TextSink& sink) { return std::make_unique<GeoJsonWriter>(sink); }

} // namespace tessel
