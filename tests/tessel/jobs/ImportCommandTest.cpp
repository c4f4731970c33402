// tessel import, run as a user runs it, on small files built here: every kind in delimited
// and fixed-width mode, compared line by line with the JSON Lines it must print.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

struct ImportCase {
    const char* name;
    std::string file;
    std::vector<std::string> options; // after "import KIND in.txt"
    std::vector<std::string> expected;
};

void PrintTo(const ImportCase& test, std::ostream* out) { *out << test.name; }

std::vector<std::string> ImportArguments(const ImportCase& test)
{
    std::vector<std::string> arguments = {"-q", "import"};
    arguments.push_back(test.options.front());
    arguments.push_back("in.txt");
    arguments.insert(arguments.end(), test.options.begin() + 1, test.options.end());
    return arguments;
}

const std::vector<std::string> kPointColumns = {"--column", "name", "--column", "x:real", "--column", "y:real",
                                                "--column", "code"};

std::vector<std::string> With(std::vector<std::string> first, const std::vector<std::string>& more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

const ImportCase kCases[] = {
    {"PointsDelimited",
     "# name x y code\nP1 12.5 7 TREE\n\nP2 1,5 -3 X\n",
     With({"points"}, With(kPointColumns, {"--bind", "name=ENTITY_NAME", "--bind", "x=NODE_COORDINATE_X", "--bind",
                                            "y=NODE_COORDINATE_Y", "--bind", "code=CODE"})),
     {R"({"kind":"point","name":"P1","position":[12.5,7,0],"values":["P1",12.5,7,"TREE"]})",
      R"({"kind":"point","name":null,"position":null,"values":[null,null,null,null]})",
      R"({"kind":"point","name":"P2","position":[1.5,-3,0],"values":["P2",1.5,-3,"X"]})"}},
    {"PointsFixedWidthNameTransformedValueRaw",
     "A1   10.00 20.00\nB2   11.50 21.25\n",
     {"points", "--fixed", "5,11", "--column", "name", "--column", "x:real", "--column", "y:real", "--bind",
      "name=ENTITY_NAME", "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "--transform",
      "ENTITY_NAME=trim"},
     {R"({"kind":"point","name":"A1","position":[10,20,0],"values":["A1   ",10,20]})",
      R"({"kind":"point","name":"B2","position":[11.5,21.25,0],"values":["B2   ",11.5,21.25]})"}},
    {"PointsFilteredAndSecondary",
     "N1 5 5\nN2 50 50\n",
     {"points", "--column", "n", "--column", "x:real", "--column", "y:real", "--secondary", "--node-bind",
      "n=ENTITY_NAME", "--node-bind", "x=NODE_COORDINATE_X", "--node-bind", "y=NODE_COORDINATE_Y", "--filter",
      "0,0,10,10"},
     {R"({"kind":"point","name":"N1","position":[5,5,0],"values":["N1",5,5]})"}},
    {"PointsNodeYIsNoCoordinate",
     "1 2\n",
     {"points", "--entity-type", "32", "--column", "x:real", "--column", "y:real", "--bind", "x=NODE_X", "--bind",
      "y=NODE_Y"},
     {R"({"kind":"point","name":null,"position":null,"values":[1,2]})"}},
    {"LinesDelimited",
     "S1\tS2\troad\t3\nS2\t\tpath\tx\n",
     {"lines", "--delimiters", "\\t", "--column", "from", "--column", "to", "--column", "name", "--column",
      "dn:integer", "--bind", "from=NODE_S", "--bind", "to=NODE_E", "--bind", "name=ENTITY_NAME", "--bind", "dn=DN"},
     {R"({"kind":"line","name":"road","start":"S1","end":"S2","values":["S1","S2","road",3]})",
      R"({"kind":"line","name":"path","start":"S2","end":"","values":["S2",null,"path",0]})"}},
    {"LinesFixedWidth",
     "S1  S2  K1\nS2  S3  K2\n",
     {"lines", "--fixed", "4,8", "--column", "from", "--column", "to", "--column", "name", "--bind", "from=NODE_S",
      "--bind", "to=NODE_E", "--bind", "name=ENTITY_NAME"},
     {R"({"kind":"line","name":"K1","start":"S1  ","end":"S2  ","values":["S1  ","S2  ","K1"]})",
      R"({"kind":"line","name":"K2","start":"S2  ","end":"S3  ","values":["S2  ","S3  ","K2"]})"}},
    {"PolygonsDelimited",
     "F1,residential,12.5\nF1,park,3\n",
     {"polygons", "--delimiters", ",", "--column", "id", "--column", "use", "--column", "area:real", "--bind",
      "id=ENTITY_NAME", "--bind", "use=USE", "--bind", "area=AREA"},
     {R"({"kind":"polygon","name":"F1","values":["F1","residential",12.5]})",
      R"({"kind":"polygon","name":"F1","values":["F1","park",3]})"}},
    {"PolygonsFixedWidth",
     "F7 wood \n",
     {"polygons", "--fixed", "3", "--column", "id", "--column", "use", "--bind", "id=ENTITY_NAME", "--bind", "use"},
     {R"({"kind":"polygon","name":"F7 ","values":["F7 ","wood "]})"}},
    {"TableRowsKeepEveryColumn",
     "# rows\nk1 a 1\nK2 b 2\n",
     {"table", "--column", "key", "--column", "name", "--column", "n:integer:off"},
     {R"({"kind":"row","values":["k1","a",1]})", R"({"kind":"row","values":["K2","b",2]})"}},
    {"TableRowsFixedWidth",
     "k1a1\nk2b\n",
     {"table", "--fixed", "2,3", "--column", "key", "--column", "name", "--column", "n:integer"},
     {R"({"kind":"row","values":["k1","a",1]})", R"({"kind":"row","values":["k2","b",null]})"}},
    {"TableRowsMaxLinesCountComments",
     "# c\nr1\nr2\n",
     {"table", "--column", "a", "--max-lines", "2"},
     {R"({"kind":"row","values":["r1"]})"}},
    {"TableRowsByKeysUpperCased",
     "ab12 x\ncd34 y\n",
     {"table", "--column", "key", "--column", "v", "--keys", "AB12,XY"},
     {R"({"kind":"row","values":["AB12","x"]})"}},
    {"TableRowsByKeyValueOfEmptyKeys",
     "\tx\t1\nk\ty\t2\n",
     {"table", "--delimiters", "\\t", "--column", "key:real", "--column", "v", "--column", "n:integer",
      "--key-value", "0:real"},
     {R"({"kind":"row","values":[null,"x",1]})"}},
    {"CloudDelimited",
     "1 2\n3\n5 6\n",
     {"cloud", "--column", "x:real", "--column", "y:real", "--bind", "x=NODE_COORDINATE_X", "--bind",
      "y=NODE_COORDINATE_Y"},
     {R"({"kind":"cloud","x":1,"y":2})", R"({"kind":"cloud","x":5,"y":6})"}},
    {"CloudFixedWidth",
     "0.125-3.5\n",
     {"cloud", "--fixed", "5", "--column", "x:real", "--column", "y:real", "--bind", "x=NODE_E", "--bind",
      "y=NODE_COORDINATE_Y"},
     {R"({"kind":"cloud","x":0.125,"y":-3.5})"}},
};

class ImportCommand : public ::testing::TestWithParam<ImportCase> {};

TEST_P(ImportCommand, PrintsTheRecordsAsJsonLines)
{
    const ImportCase& test = GetParam();
    refhost::testing::TempDir folder;
    folder.WriteFile("in.txt", test.file);
    const TesselRun run = RunTessel(ImportArguments(test), folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Lines(run.out), test.expected);
}

INSTANTIATE_TEST_SUITE_P(EveryKindBothModes, ImportCommand, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ImportCommandOutput, FormatFollowsTheExtensionOrTheFormatOption)
{
    refhost::testing::TempDir folder;
    folder.WriteFile("in.txt", "P1 1.5 2 a,\"b\"\nP2 3 4 c\n");
    const std::vector<std::string> job = {"-q", "import", "points", "in.txt", "--column", "name", "--column", "x:real",
                                          "--column", "y:real", "--column", "code", "--bind", "name=ENTITY_NAME",
                                          "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y",
                                          "--bind", "code=CODE", "--bind", "code=CODE"};
    auto toGeoJson = job;
    toGeoJson.insert(toGeoJson.end(), {"-o", "out.geojson"});
    ASSERT_EQ(RunTessel(toGeoJson, folder.Path()).status, 0);
    EXPECT_EQ(folder.ReadFile("out.geojson"),
              "{\"type\":\"FeatureCollection\",\"features\":[\n"
              R"({"type":"Feature","id":"P1","geometry":{"type":"Point","coordinates":[1.5,2]},"properties":)"
              R"({"ENTITY_NAME":"P1","NODE_COORDINATE_X":1.5,"NODE_COORDINATE_Y":2,"CODE":"a,\"b\"","CODE#2":"a,\"b\""}},)"
              "\n"
              R"({"type":"Feature","id":"P2","geometry":{"type":"Point","coordinates":[3,4]},"properties":)"
              R"({"ENTITY_NAME":"P2","NODE_COORDINATE_X":3,"NODE_COORDINATE_Y":4,"CODE":"c","CODE#2":"c"}})"
              "\n]}\n");

    auto toCsv = job;
    toCsv.insert(toCsv.end(), {"-o", "out.data", "--format", "csv"});
    ASSERT_EQ(RunTessel(toCsv, folder.Path()).status, 0);
    EXPECT_EQ(folder.ReadFile("out.data"),
              "name,x,y,ENTITY_NAME,NODE_COORDINATE_X,NODE_COORDINATE_Y,CODE,CODE#2\r\n"
              "P1,1.5,2,P1,1.5,2,\"a,\"\"b\"\"\",\"a,\"\"b\"\"\"\r\n"
              "P2,3,4,P2,3,4,c,c\r\n");
}

TEST(ImportCommandJob, CodePageOptionReachesTheModuleAndTheConfiguration)
{
    refhost::testing::TempDir folder;
    // "Łódź 1 2" in Windows-1250, in a file of that name.
    folder.WriteFile("Łódź.txt", "\xA3\xF3" "d\x9F 1 2\n");
    const TesselRun run = RunTessel({"-q", "--codepage", "1250", "import", "points", "Łódź.txt", "--column",
                                     "Miejscowość", "--column", "x:real", "--column", "y:real", "--bind",
                                     "Miejscowość=ENTITY_NAME", "--bind", "x=NODE_COORDINATE_X", "--bind",
                                     "y=NODE_COORDINATE_Y"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "{\"kind\":\"point\",\"name\":\"Łódź\",\"position\":[1,2,0],\"values\":[\"Łódź\",1,2]}\n");
}

TEST(ImportCommandJob, SectionNodesOfALineJobReadTheNodeConfigurationIntoTheCloud)
{
    refhost::testing::TempDir folder;
    folder.WriteFile("nodes.txt", "N1;7;8\n");
    folder.WriteFile("node.xml", RunTessel({"-q", "config", "import", "--delimiters", ";", "--column", "n", "--column",
                                            "x:real", "--column", "y:real"},
                                           folder.Path())
                                     .out);
    // The main configuration (blank-delimited, one column) would read nothing useful.
    const TesselRun run = RunTessel({"-q", "import", "cloud", "nodes.txt", "--entity-type", "2", "--section-nodes",
                                     "--column", "only", "--node-config", "node.xml", "--node-bind",
                                     "x=NODE_COORDINATE_X", "--node-bind", "y=NODE_COORDINATE_Y"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "{\"kind\":\"cloud\",\"x\":7,\"y\":8}\n");
}

TEST(ImportCommandOutput, SummaryAndValidationWarningGoToStandardError)
{
    refhost::testing::TempDir folder;
    folder.WriteFile("in.txt", "# polygons\na\nb\n");
    const TesselRun run = RunTessel({"import", "polygons", "in.txt", "--column", "id", "--bind", "id=ENTITY_NAME"},
                                    folder.Path());
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(Lines(run.out).size(), 2u);
    const auto messages = Lines(run.err);
    ASSERT_EQ(messages.size(), 2u) << run.err;
    EXPECT_EQ(messages[0], "warning: the job does not validate");
    EXPECT_EQ(messages[1].rfind("tessel: read 3 lines of 'in.txt', imported 2 polygons (1 line skipped) to standard "
                                "output in ",
                                0),
              0u)
        << messages[1];
}

// What the engine accepts reaches it: tessel warns and passes it on, and the engine answers.
TEST(ImportCommandWarnings, LikelyMistakesReachTheEngine)
{
    const struct {
        std::vector<std::string> arguments;
        std::string warning;
        std::string output;
    } cases[] = {
        {{"import", "points", "in.txt", "--column", "a", "--column", "x:real", "--column", "y:real", "--bind",
          "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "--bind", "b=EXTRA"},
         "--bind: no column 'b' among the configuration's source fields (a, x, y); the engine adds nothing for it",
         "{\"kind\":\"point\",\"name\":null,\"position\":[1,2,0],\"values\":[1,2]}\n"},
        // The engine reads a file without a cfg element as its default record, FILE as its path.
        {{"import", "table", "in.txt", "--config", "in.txt"},
         "--config: 'in.txt' holds no import configuration (no cfg element); the engine reads it as the default one",
         "{\"kind\":\"row\",\"values\":[]}\n"},
        {{"config", "import", "in.txt", "--fixed", "3", "--delimiters", ";", "--column", "a\"b"},
         "--column: 'a\"b' contains '\"', which the configuration reads back as '×'",
         "<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"in.txt\" delimiter=\";\" comments=\"#\" mode=\"1\" "
         "colPositions=\"3¤\"><col no=\"0\" name=\"a=EF=BF=97b\" type=\"5005\" onOff=\"1\"/></cfg>\n"},
    };
    refhost::testing::TempDir folder;
    folder.WriteFile("in.txt", "P1 1 2\n");
    for (const auto& test : cases) {
        std::vector<std::string> arguments = {"-q"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const TesselRun run = RunTessel(arguments, folder.Path());
        EXPECT_EQ(run.status, 0) << test.warning;
        EXPECT_EQ(run.err, "warning: " + test.warning + "\n");
        EXPECT_EQ(run.out, test.output);
        arguments.push_back("--strict");
        const TesselRun strict = RunTessel(arguments, folder.Path());
        EXPECT_EQ(strict.status, 2);
        EXPECT_EQ(strict.out, "");
    }
}

} // namespace
} // namespace testing
} // namespace tessel
