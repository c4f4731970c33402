// The output formats: numbers that read back to the same double, JSON and CSV escaping, and
// the exact text of each writer for each kind of record.

#include "refhost/testing/TestText.h"
#include "tessel/jobs/ImportOutput.h"
#include "tessel/text/RecordWriter.h"
#include "tessel/text/ValueText.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <cstdlib>
#include <limits>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::DataValueList;
using refhost::testing::W;

TEST(ValueText, NumbersAreTheShortestTextThatReadsBack)
{
    const std::pair<double, const char*> cases[] = {
        {12.5, "12.5"},         {0.1, "0.1"},       {456789.123, "456789.123"}, {5.0, "5"},
        {-0.0, "-0"},           {1e21, "1e+21"},    {1.0 / 3, "0.3333333333333333"},
        {5e-324, "5e-324"},     {5123456.789, "5123456.789"}, {5000000.0, "5000000"},
        {3e9, "3000000000"},    {1e-8, "1e-08"},
    };
    for (const auto& [value, text] : cases) {
        std::string out;
        AppendJsonNumber(out, value);
        EXPECT_EQ(out, text);
        EXPECT_EQ(std::strtod(out.c_str(), nullptr), value) << text;
    }
}

// A file written by the application shows each real as the host itself shows it.
TEST(ValueText, NumbersReadAsTheHostWritesThem)
{
    std::mt19937_64 random(20240611);
    std::vector<double> values = {0.001, -0.001, 1e-7, 999999999.999999, 0.1 + 0.2, 123456789.5, 1e300};
    for (int i = 0; i < 20000; ++i) {
        const auto units = static_cast<long long>(random() % 2000000000000ULL) - 1000000000000LL;
        values.push_back(static_cast<double>(units) / std::pow(10.0, random() % 10));
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        if (std::isfinite(value))
            values.push_back(value);
    }
    for (const double value : values) {
        CDataBox box;
        box.SetValue(value);
        const std::string host = refhost::testing::U8(box);
        std::string json, csv;
        AppendJsonNumber(json, value);
        AppendCsvValue(csv, &box);
        ASSERT_EQ(json, host);
        ASSERT_EQ(csv, host);
    }
}

TEST(ValueText, NonFiniteNumbersBecomeStringsNotNulls)
{
    std::string out;
    AppendJsonNumber(out, std::numeric_limits<double>::infinity());
    out += ',';
    AppendJsonNumber(out, -std::numeric_limits<double>::infinity());
    out += ',';
    AppendJsonNumber(out, std::nan(""));
    EXPECT_EQ(out, R"("inf","-inf","nan")");
}

TEST(ValueText, JsonStringsEscapeQuotesBackslashesAndControls)
{
    const std::pair<std::string, const char*> cases[] = {
        {"plain", R"("plain")"},        {"a\"b", R"("a\"b")"},          {"a\\b", R"("a\\b")"},
        {"\t\r\n\b\f", R"("\t\r\n\b\f")"}, {std::string("\x01\x1f", 2), R"("\u0001\u001f")"},
        {"Grüße Ø", "\"Grüße Ø\""},
    };
    for (const auto& [text, json] : cases) {
        std::string out;
        AppendJsonString(out, text);
        EXPECT_EQ(out, json);
    }
}

TEST(ValueText, CsvFieldsAreQuotedOnlyWhenNeeded)
{
    const std::pair<const char*, const char*> cases[] = {
        {"plain", "plain"}, {"a,b", "\"a,b\""}, {"say \"hi\"", "\"say \"\"hi\"\"\""},
        {"two\nlines", "\"two\nlines\""}, {" padded", "\" padded\""}, {"", ""},
    };
    for (const auto& [text, csv] : cases) {
        std::string out;
        AppendCsvField(out, text);
        EXPECT_EQ(out, csv);
    }
}

TEST(UniqueFieldNames, RepeatsAreNumberedPastNamesInTheList)
{
    EXPECT_EQ(UniqueFieldNames({"A", "B", "A", "A#2", "A"}), (std::vector<std::string>{"A", "B", "A#3", "A#2", "A#4"}));
    EXPECT_EQ(UniqueFieldNames({}), std::vector<std::string>{});
}

TEST(FormatForPath, ExtensionChoosesWithJsonLinesOtherwise)
{
    EXPECT_EQ(FormatForPath("out.GeoJSON"), OutputFormat::GeoJson);
    EXPECT_EQ(FormatForPath("out.json"), OutputFormat::GeoJson);
    EXPECT_EQ(FormatForPath("out.csv"), OutputFormat::Csv);
    EXPECT_EQ(FormatForPath("out.jsonl"), OutputFormat::JsonLines);
    EXPECT_EQ(FormatForPath("dir.csv/out"), OutputFormat::JsonLines);
    EXPECT_EQ(FormatForPath("-"), OutputFormat::JsonLines);
}

// Writes the same records through a writer of each format.
struct Records {
    DataValueList values;
    WString name = W("P1");
    WString start = W("S1");
    AcGePoint3d position{1.5, -2, 0};

    Records()
    {
        auto integer = boost::make_shared<CDataBox>();
        integer->SetValue(7);
        auto real = boost::make_shared<CDataBox>();
        real->SetValue(0.1);
        values = {integer, real, boost::make_shared<CDataBox>(), boost::make_shared<CDataBox>(WTEXT("x,\"y\""))};
    }

    std::string Write(OutputFormat format, RecordKind kind)
    {
        TextSink sink;
        const auto writer = MakeRecordWriter(format, sink, "records");
        RecordLayout layout;
        layout.kind = kind;
        layout.fieldNames = {"I", "R", "N", "T"};
        writer->Begin(layout);
        EntityRecord entity;
        entity.name = &name;
        entity.values = &values;
        if (kind == RecordKind::Point)
            entity.position = &position;
        if (kind == RecordKind::Line)
            entity.start = &start;
        switch (kind) {
        case RecordKind::Row: writer->Row(values); break;
        case RecordKind::Cloud: writer->CloudPoint(1.5, -2); break;
        default: writer->Entity(entity); break;
        }
        writer->End();
        return sink.Text();
    }
};

TEST(JsonLinesWriter, OneObjectPerRecordWithKeysInFixedOrder)
{
    Records records;
    const std::string values = R"("values":[7,0.1,null,"x,\"y\""])";
    EXPECT_EQ(records.Write(OutputFormat::JsonLines, RecordKind::Point),
              R"({"kind":"point","name":"P1","position":[1.5,-2,0],)" + values + "}\n");
    EXPECT_EQ(records.Write(OutputFormat::JsonLines, RecordKind::Line),
              R"({"kind":"line","name":"P1","start":"S1","end":null,)" + values + "}\n");
    EXPECT_EQ(records.Write(OutputFormat::JsonLines, RecordKind::Polygon),
              R"({"kind":"polygon","name":"P1",)" + values + "}\n");
    EXPECT_EQ(records.Write(OutputFormat::JsonLines, RecordKind::Row), R"({"kind":"row",)" + values + "}\n");
    EXPECT_EQ(records.Write(OutputFormat::JsonLines, RecordKind::Cloud), "{\"kind\":\"cloud\",\"x\":1.5,\"y\":-2}\n");
}

TEST(GeoJsonWriter, FeaturesWithPointGeometryOrNullAndNamedProperties)
{
    Records records;
    const std::string head = "{\"type\":\"FeatureCollection\",\"features\":[\n";
    const std::string properties = R"("properties":{"I":7,"R":0.1,"N":null,"T":"x,\"y\""})";
    EXPECT_EQ(records.Write(OutputFormat::GeoJson, RecordKind::Point),
              head + R"({"type":"Feature","id":"P1","geometry":{"type":"Point","coordinates":[1.5,-2]},)" +
                  properties + "}\n]}\n");
    EXPECT_EQ(records.Write(OutputFormat::GeoJson, RecordKind::Line),
              head + R"({"type":"Feature","id":"P1","geometry":null,"start":"S1","end":null,)" + properties +
                  "}\n]}\n");
    EXPECT_EQ(records.Write(OutputFormat::GeoJson, RecordKind::Row),
              head + R"({"type":"Feature","geometry":null,)" + properties + "}\n]}\n");
    EXPECT_EQ(records.Write(OutputFormat::GeoJson, RecordKind::Cloud),
              head + R"({"type":"Feature","geometry":{"type":"Point","coordinates":[1.5,-2]},"properties":{}})" +
                  "\n]}\n");

    TextSink sink;
    const auto writer = MakeGeoJsonWriter(sink);
    RecordLayout layout;
    layout.kind = RecordKind::Polygon;
    writer->Begin(layout);
    writer->End();
    EXPECT_EQ(sink.Text(), "{\"type\":\"FeatureCollection\",\"features\":[]}\n");
}

TEST(CsvWriter, HeaderByKindThenOneLinePerRecord)
{
    Records records;
    const std::string values = "7,0.1,,\"x,\"\"y\"\"\"\r\n";
    EXPECT_EQ(records.Write(OutputFormat::Csv, RecordKind::Point), "name,x,y,I,R,N,T\r\nP1,1.5,-2," + values);
    EXPECT_EQ(records.Write(OutputFormat::Csv, RecordKind::Line), "name,start,end,I,R,N,T\r\nP1,S1,," + values);
    EXPECT_EQ(records.Write(OutputFormat::Csv, RecordKind::Polygon), "name,I,R,N,T\r\nP1," + values);
    EXPECT_EQ(records.Write(OutputFormat::Csv, RecordKind::Row), "I,R,N,T\r\n" + values);
    EXPECT_EQ(records.Write(OutputFormat::Csv, RecordKind::Cloud), "x,y\r\n1.5,-2\r\n");
}

} // namespace
} // namespace tessel
