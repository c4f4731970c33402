// The export's input readers: JSON Lines and GeoJSON into named fields and host values.

#include "refhost/HostSide.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "tessel/core/AppError.h"
#include "tessel/text/ExportInput.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;
using refhost::testing::TempDir;
using refhost::testing::U8;

std::string Describe(const CDataBox& value)
{
    switch (refhost::KindOf(value)) {
    case CDataBox::Kind::Null: return "null";
    case CDataBox::Kind::Integer:
        return "int " + std::to_string(refhost::IntegerOf(value));
    case CDataBox::Kind::Real: return "real " + U8(static_cast<WString>(value));
    case CDataBox::Kind::Text:
        return "text " + U8(refhost::TextOf(value));
    }
    return "";
}

std::vector<std::string> Describe(const InputRecord& record)
{
    std::vector<std::string> values;
    for (const CDataBox& value : record.values)
        values.push_back(Describe(value));
    return values;
}

TEST(ExportInput, JsonLinesValuesAreNamedByPosition)
{
    TempDir folder;
    folder.WriteFile("in.jsonl",
                     R"({"kind":"point","name":"P1","position":[1,2.5,0],"values":[1,2.5,"a",null,true,3000000000]})"
                     "\n\n"
                     R"({"kind":"line","name":null,"start":"S","end":"","values":[{"x":1}]})"
                     "\n");
    const ExportInput input = ReadExportInput(folder.Path() + "/in.jsonl", InputFormat::JsonLines);
    EXPECT_EQ(input.fieldNames, (std::vector<std::string>{"#0", "#1", "#2", "#3", "#4", "#5"}));
    ASSERT_EQ(input.records.size(), 2u);
    EXPECT_EQ(U8(*input.records[0].name), "P1");
    EXPECT_EQ(input.records[0].position->y, 2.5);
    EXPECT_EQ(Describe(input.records[0]),
              (std::vector<std::string>{"int 1", "real 2.5", "text a", "null", "text true", "real 3000000000"}));
    EXPECT_FALSE(input.records[1].name);
    EXPECT_EQ(U8(*input.records[1].start), "S");
    EXPECT_EQ(U8(*input.records[1].end), "");
    EXPECT_EQ(Describe(input.records[1]), std::vector<std::string>{"text {\"x\":1}"});
}

TEST(ExportInput, GeoJsonPropertiesKeepTheirDocumentOrder)
{
    TempDir folder;
    folder.WriteFile("in.geojson", R"({"type":"FeatureCollection","crs":{"type":"name"},"features":[
      {"type":"Feature","id":7,"geometry":{"type":"Point","coordinates":[10,20]},"properties":{"z":1,"a":"x"}},
      {"type":"Feature","geometry":{"type":"LineString","coordinates":[[0,0],[1,1]]},"properties":{"b":2.5,"a":"y"}},
      {"type":"Feature","geometry":{"type":0,"coordinates":[1,2]}}
    ]})");
    const ExportInput input = ReadExportInput(folder.Path() + "/in.geojson", InputFormat::GeoJson);
    EXPECT_EQ(input.fieldNames, (std::vector<std::string>{"z", "a", "b"}));
    ASSERT_EQ(input.records.size(), 3u);
    EXPECT_EQ(U8(*input.records[0].name), "7");
    EXPECT_EQ(input.records[0].position->x, 10);
    EXPECT_EQ(Describe(input.records[0]), (std::vector<std::string>{"int 1", "text x"}));
    EXPECT_FALSE(input.records[1].position);
    EXPECT_EQ(Describe(input.records[1]), (std::vector<std::string>{"null", "text y", "real 2.5"}));
    EXPECT_FALSE(input.records[2].position); // a geometry type that is no name is no point
    EXPECT_EQ(input.FieldIndex("b"), 2);
    EXPECT_EQ(input.FieldIndex("missing"), -1);
}

TEST(ExportInput, SingleFeatureDocumentIsOneRecord)
{
    TempDir folder;
    folder.WriteFile("one.json", R"({"type":"Feature","geometry":null,"properties":{"a":1}})");
    EXPECT_EQ(ReadExportInput(folder.Path() + "/one.json", InputFormat::GeoJson).records.size(), 1u);
}

TEST(ExportInput, UnusableInputNamesFileAndLine)
{
    TempDir folder;
    folder.WriteFile("bad.jsonl", "{\"values\":[]}\n[1,2]\n");
    folder.WriteFile("values.jsonl", "{\"values\":3}\n");
    folder.WriteFile("broken.geojson", "{\"type\":\"FeatureCollection\",\"features\":[");
    folder.WriteFile("other.geojson", "{\"type\":\"Topology\"}");
    const std::pair<std::string, InputFormat> files[] = {{"bad.jsonl", InputFormat::JsonLines},
                                                          {"values.jsonl", InputFormat::JsonLines},
                                                          {"broken.geojson", InputFormat::GeoJson},
                                                          {"other.geojson", InputFormat::GeoJson},
                                                          {"missing.jsonl", InputFormat::JsonLines}};
    const char* const errors[] = {"line 2: not a JSON object", "line 1: \"values\" is not an array",
                                  "is not a GeoJSON document (it does not parse as JSON)",
                                  "is not a GeoJSON FeatureCollection or Feature", "No such file or directory"};
    for (std::size_t i = 0; i < std::size(files); ++i) {
        try {
            ReadExportInput(folder.Path() + "/" + files[i].first, files[i].second);
            ADD_FAILURE() << files[i].first << " was read";
        } catch (const AppError& error) {
            EXPECT_EQ(error.Status(), ExitUsage);
            EXPECT_NE(std::string(error.what()).find(errors[i]), std::string::npos) << error.what();
        }
    }
}

} // namespace
} // namespace tessel
