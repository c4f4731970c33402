// Import then export through tessel: the text that comes back holds the original columns.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

using refhost::testing::TempDir;

std::vector<std::string> Joined(std::vector<std::string> first, const std::vector<std::string>& more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

const std::vector<std::string> kSurveyImport = {
    "--column", "name",   "--column", "x:real", "--column", "y:real", "--column", "z:real", "--column", "code",
    "--bind", "name=ENTITY_NAME", "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y",
    "--bind", "z=HEIGHT",         "--bind", "code=CODE"};

const char kSurvey[] = "# name x y z code\r\n"
                       "P1 456789.123 5123456.789 301.25 TREE\r\n"
                       "P2 456790.5 5123457.25 300.1 FENCE\r\n"
                       "P3 456801 5123460.004 299.875 MANHOLE\r\n";

TEST(RoundTrip, PointsThroughGeoJsonComeBackByteForByte)
{
    TempDir folder;
    folder.WriteFile("survey.txt", kSurvey);
    ASSERT_EQ(RunTessel(Joined({"-q", "import", "points", "survey.txt", "-o", "survey.geojson"}, kSurveyImport),
                        folder.Path())
                  .status,
              0);
    const TesselRun run = RunTessel({"-q", "export", "points", "survey.geojson", "-o", "back.txt", "--comment", "# ",
                                     "--delimiter", "\\s", "--bind", "ENTITY_NAME=name", "--bind",
                                     "NODE_COORDINATE_X=x", "--bind", "NODE_COORDINATE_Y=y", "--bind", "HEIGHT=z",
                                     "--bind", "CODE=code"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("back.txt"), kSurvey);
}

TEST(RoundTrip, JsonLinesValuesAreBoundByPosition)
{
    TempDir folder;
    folder.WriteFile("survey.txt", kSurvey);
    ASSERT_EQ(RunTessel(Joined({"-q", "import", "points", "survey.txt", "-o", "survey.jsonl"}, kSurveyImport),
                        folder.Path())
                  .status,
              0);
    const TesselRun run =
        RunTessel({"-q", "export", "polygons", "survey.jsonl", "-o", "codes.txt", "--no-header", "--delimiter", ";",
                   "--bind", "#4=code", "--bind", "#0=name", "--transform", "code=lower"},
                  folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("codes.txt"), "tree;P1\r\nfence;P2\r\nmanhole;P3\r\n");
}

TEST(RoundTrip, Utf16FileWithHeaderCommentComesBackInUtf16)
{
    const std::string original = Utf16LeWithMark(WTEXT("# Punkt\tHöhe\r\nBrücke\t2.5\r\n"));
    TempDir folder;
    folder.WriteFile("in.txt", original);
    ASSERT_EQ(RunTessel({"-q", "import", "polygons", "in.txt", "--delimiters", "\\t", "--column", "Punkt",
                         "--column", "Höhe:real", "--bind", "Punkt=ENTITY_NAME", "--bind", "Höhe", "-o", "p.geojson"},
                        folder.Path())
                  .status,
              0);
    const TesselRun run = RunTessel({"-q", "export", "polygons", "p.geojson", "-o", "back.txt", "--utf16",
                                     "--comment", "# ", "--bind", "ENTITY_NAME=Punkt", "--bind", "Höhe"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("back.txt"), original);
}

TEST(RoundTrip, LinesAreReadFromTheDrawingByField)
{
    TempDir folder;
    folder.WriteFile("sewer.txt", "S101 S102 K1 300\nS102 S103 K2 400\n");
    ASSERT_EQ(RunTessel({"-q", "import", "lines", "sewer.txt", "--column", "from", "--column", "to", "--column",
                         "name", "--column", "dn:integer", "--bind", "from=NODE_S", "--bind", "to=NODE_E", "--bind",
                         "name=ENTITY_NAME", "--bind", "dn=DN", "-o", "sewer.geojson"},
                        folder.Path())
                  .status,
              0);
    const TesselRun run = RunTessel({"-q", "export", "lines", "sewer.geojson", "-o", "back.txt", "--no-header",
                                     "--delimiter", "\\s", "--bind", "NODE_S", "--bind", "NODE_E", "--bind",
                                     "ENTITY_NAME", "--bind", "DN"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("back.txt"), "S101 S102 K1 300\r\nS102 S103 K2 400\r\n");
}

TEST(RoundTrip, ExportWithoutBindsWritesEveryField)
{
    TempDir folder;
    folder.WriteFile("in.geojson", R"({"type":"FeatureCollection","features":[
{"type":"Feature","id":"A","geometry":null,"properties":{"b":1,"a":"x"}},
{"type":"Feature","id":"B","geometry":null,"properties":{"c":2.5}}]})");
    const TesselRun run = RunTessel({"-q", "export", "points", "in.geojson", "-o", "out.txt"}, folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("out.txt"), "#b\ta\tc\r\n1\tx\t\r\n\t\t2.5\r\n");
}

TEST(RoundTrip, OtherEntityTypesExportThroughTheNodeSide)
{
    TempDir folder;
    folder.WriteFile("in.jsonl", R"({"kind":"point","name":"N1","position":[1,2,0],"values":["N1",1,2]})"
                                 "\n");
    folder.WriteFile("node.xml", RunTessel({"-q", "config", "export", "--delimiter", ",", "--comment", "//"},
                                           folder.Path())
                                     .out);
    const TesselRun run = RunTessel({"-q", "export", "points", "in.jsonl", "-o", "nodes.txt", "--entity-type", "32",
                                     "--bind", "#0=ignored", "--node-config", "node.xml", "--node-bind", "#1=X",
                                     "--node-bind", "#2=Y"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("nodes.txt"), "//X,Y\r\n1,2\r\n");
}

TEST(ExportExistingFile, AnswersComeFromIfExistsAndCancelLeavesTheFile)
{
    TempDir folder;
    folder.WriteFile("in.jsonl", R"({"kind":"point","name":"A","position":null,"values":["v"]})"
                                 "\n");
    folder.WriteFile("out.txt", "old\r\n");
    const std::vector<std::string> job = {"-q", "export", "points", "in.jsonl", "-o", "out.txt", "--no-header"};

    TesselRun run = RunTessel(job, folder.Path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tessel export: 'out.txt' exists and was left as it was: the export was cancelled "
                       "(answer with --if-exists)\n");
    EXPECT_EQ(folder.ReadFile("out.txt"), "old\r\n");

    run = RunTessel(Joined(job, {"--if-exists", "cancel"}), folder.Path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tessel export: 'out.txt' exists and was left as it was: the export was cancelled\n");
    EXPECT_EQ(folder.ReadFile("out.txt"), "old\r\n");

    run = RunTessel(Joined(job, {"--if-exists", "append"}), folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("out.txt"), "old\r\nv\r\n");

    run = RunTessel(Joined(job, {"--if-exists", "overwrite"}), folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(folder.ReadFile("out.txt"), "v\r\n");
}

} // namespace
} // namespace testing
} // namespace tessel
