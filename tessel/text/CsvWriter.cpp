// CSV (RFC 4180): a header line, then one line per record, CR LF line ends. Null values and
// names the module never set are empty fields. Columns: points name, x, y; lines name,
// start, end; polygons name; each followed by the layout's field names; rows the field names
// alone; cloud points x, y.

#include "host/Utf8.h"
#include "tessel/text/RecordWriter.h"
#include "tessel/text/ValueText.h"

namespace tessel {
namespace {

using VeltoGis::ImportExport::DataValueList;

class CsvWriter final : public RecordWriter {
public:
    explicit CsvWriter(TextSink& sink) : sink_(sink) {}

    void Begin(const RecordLayout& layout) override
    {
        kind_ = layout.kind;
        std::vector<std::string> header;
        switch (kind_) {
        case RecordKind::Point: header = {"name", "x", "y"}; break;
        case RecordKind::Line: header = {"name", "start", "end"}; break;
        case RecordKind::Polygon: header = {"name"}; break;
        case RecordKind::Cloud: header = {"x", "y"}; break;
        case RecordKind::Row: break;
        }
        if (kind_ != RecordKind::Cloud)
            header.insert(header.end(), layout.fieldNames.begin(), layout.fieldNames.end());
        std::string& out = sink_.Text();
        for (std::size_t i = 0; i < header.size(); ++i) {
            if (i > 0)
                out.push_back(',');
            AppendCsvField(out, header[i]);
        }
        out += "\r\n";
        sink_.RecordDone();
    }

    void Entity(const EntityRecord& entity) override
    {
        std::string& out = sink_.Text();
        AppendText(out, entity.name);
        if (kind_ == RecordKind::Point) {
            out.push_back(',');
            if (entity.position)
                AppendCsvNumber(out, entity.position->x);
            out.push_back(',');
            if (entity.position)
                AppendCsvNumber(out, entity.position->y);
        } else if (kind_ == RecordKind::Line) {
            out.push_back(',');
            AppendText(out, entity.start);
            out.push_back(',');
            AppendText(out, entity.end);
        }
        if (entity.values) {
            for (const auto& value : *entity.values) {
                out.push_back(',');
                AppendCsvValue(out, value.get());
            }
        }
        out += "\r\n";
        sink_.RecordDone();
    }

    void Row(const DataValueList& values) override
    {
        std::string& out = sink_.Text();
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (i > 0)
                out.push_back(',');
            AppendCsvValue(out, values[i].get());
        }
        out += "\r\n";
        sink_.RecordDone();
    }

    void CloudPoint(double x, double y) override
    {
        std::string& out = sink_.Text();
        AppendCsvNumber(out, x);
        out.push_back(',');
        AppendCsvNumber(out, y);
        out += "\r\n";
        sink_.RecordDone();
    }

    void End() override {}

private:
    static void AppendText(std::string& out, const WString* text)
    {
        if (text)
            AppendCsvField(out, ToUtf8(*text));
    }

    TextSink& sink_;
    RecordKind kind_ = RecordKind::Point;
};

} // namespace

std::unique_ptr<RecordWriter> MakeCsvWriter(TextSink& sink) { return std::make_unique<CsvWriter>(sink); }

} // namespace tessel
