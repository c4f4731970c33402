// JSON Lines: one object per record, keys in a fixed order, so that other tools can rely on
// the form: {"kind":"point","name":..,"position":[X,Y,0]|null,"values":[..]} and the like.

#include "tessel/text/RecordWriter.h"
#include "tessel/text/ValueText.h"

namespace tessel {
namespace {

using VeltoGis::ImportExport::DataValueList;

void AppendOptionalText(std::string& out, const WString* text)
{
    if (text)
        AppendJsonString(out, *text);
    else
        out += "null";
}

void AppendValues(std::string& out, const DataValueList* values)
{
    out += "\"values\":[";
    if (values) {
        bool first = true;
        for (const auto& value : *values) {
            if (!first)
                out.push_back(',');
            first = false;
            AppendJsonValue(out, value.get());
        }
    }
    out.push_back(']');
}

class JsonLinesWriter final : public RecordWriter {
public:
    explicit JsonLinesWriter(TextSink& sink) : sink_(sink) {}

    void Begin(const RecordLayout& layout) override { kind_ = layout.kind; }

    void Entity(const EntityRecord& entity) override
    {
        std::string& out = sink_.Text();
        switch (kind_) {
        case RecordKind::Point:
            out += "{\"kind\":\"point\",\"name\":";
            AppendOptionalText(out, entity.name);
            out += ",\"position\":";
            if (entity.position) {
                out.push_back('[');
                AppendJsonNumber(out, entity.position->x);
                out.push_back(',');
                AppendJsonNumber(out, entity.position->y);
                out.push_back(',');
                AppendJsonNumber(out, entity.position->z);
                out += "],";
            } else {
                out += "null,";
            }
            break;
        case RecordKind::Line:
            out += "{\"kind\":\"line\",\"name\":";
            AppendOptionalText(out, entity.name);
            out += ",\"start\":";
            AppendOptionalText(out, entity.start);
            out += ",\"end\":";
            AppendOptionalText(out, entity.end);
            out.push_back(',');
            break;
        default:
            out += "{\"kind\":\"polygon\",\"name\":";
            AppendOptionalText(out, entity.name);
            out.push_back(',');
            break;
        }
        AppendValues(out, entity.values);
        out += "}\n";
        sink_.RecordDone();
    }

    void Row(const DataValueList& values) override
    {
        std::string& out = sink_.Text();
        out += "{\"kind\":\"row\",";
        AppendValues(out, &values);
        out += "}\n";
        sink_.RecordDone();
    }

    void CloudPoint(double x, double y) override
    {
        std::string& out = sink_.Text();
        out += "{\"kind\":\"cloud\",\"x\":";
        AppendJsonNumber(out, x);
        out += ",\"y\":";
        AppendJsonNumber(out, y);
        out += "}\n";
        sink_.RecordDone();
    }

    void End() override {}

private:
    TextSink& sink_;
    RecordKind kind_ = RecordKind::Point;
};

} // namespace

std::unique_ptr<RecordWriter> MakeJsonLinesWriter(TextSink& sink) { return std::make_unique<JsonLinesWriter>(sink); }

} // namespace tessel
