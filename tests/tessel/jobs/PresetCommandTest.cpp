// tessel with survey presets, header lines and the list of values that did not convert, run
// as a user runs it: every preset through an export and back for each of its delimiters,
// --preset auto on names lines and orders the numbers cannot tell apart, the user's preset
// folder, and the options' bad values.

#include "refhost/Environment.h"
#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace tessel {
namespace testing {
namespace {

const char kSurvey[] = "P1 400000.125 5800000.25 10.5 TREE\nP2 400010.5 5800020.75 -1.25 POLE\nP3 0.001 2 3 KERB\n";

// The name and position of every point, and whether its description came through.
std::vector<std::string> PointsOf(const std::string& jsonLines, bool names, bool descriptions)
{
    static const std::regex point(R"re("name":("[^"]*"|null),"position":(\[[^\]]*\]).*)re");
    std::vector<std::string> points;
    for (const std::string& line : Lines(jsonLines)) {
        std::smatch match;
        if (!std::regex_search(line, match, point))
            continue;
        std::string text = (names ? match[1].str() : "") + match[2].str();
        for (const char* code : {"TREE", "POLE", "KERB"}) {
            if (descriptions && line.find(std::string("\"") + code + "\"") != std::string::npos)
                text += code;
        }
        points.push_back(text);
    }
    return points;
}

std::string FileText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

bool Contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class PresetCommand : public ::testing::Test {
protected:
    TesselRun Run(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), "-q");
        return RunTessel(arguments, folder_.Path());
    }
    refhost::testing::TempDir folder_;
};

} // namespace

TEST_F(PresetCommand, EveryPresetComesBackThroughAnExportForEachDelimiter)
{
    folder_.WriteFile("survey.txt", kSurvey);
    const TesselRun first = Run({"import", "points", "survey.txt", "--column", "name", "--column", "x:real", "--column",
                                 "y:real", "--column", "z:real", "--column", "code", "--bind", "name=ENTITY_NAME",
                                 "--bind", "x=NODE_COORDINATE_X", "--bind", "y=NODE_COORDINATE_Y", "--bind",
                                 "z=HEIGHT", "--bind", "code=CODE", "-o", "points.geojson"});
    ASSERT_EQ(first.status, 0) << first.err;
    const std::string original = Run({"import", "points", "survey.txt", "--preset", "PENZD"}).out;
    const struct {
        const char* preset;
        bool names, descriptions;
    } presets[] = {{"PNEZD", true, true}, {"PENZD", true, true}, {"PNEZ", true, false}, {"PENZ", true, false},
                   {"NEZ", false, false}, {"ENZ", false, false},  {"XYZ", false, false}, {"XYZD", false, true}};
    for (const auto& preset : presets) {
        for (const char* delimiter : {",", " ", "\t", ";"}) {
            SCOPED_TRACE(std::string(preset.preset) + " '" + delimiter + "'");
            const TesselRun exported = Run({"export", "points", "points.geojson", "-o", "out.txt", "--preset",
                                            preset.preset, "--delimiter", delimiter, "--if-exists", "overwrite"});
            ASSERT_EQ(exported.status, 0) << exported.err;
            const TesselRun imported = Run({"import", "points", "out.txt", "--preset", preset.preset});
            ASSERT_EQ(imported.status, 0) << imported.err;
            EXPECT_EQ(imported.err, "");
            EXPECT_EQ(PointsOf(imported.out, preset.names, preset.descriptions),
                      PointsOf(original, preset.names, preset.descriptions));
            EXPECT_EQ(PointsOf(imported.out, false, false).size(), 3u);
        }
    }
}

TEST_F(PresetCommand, AutoTakesANamesLineOrRefusesWhereTheOrderIsOpen)
{
    folder_.WriteFile("named.txt", "Point,Easting,Northing,Height\nP1,400.5,5000.5,1\nP2,401,5001,2\n");
    const TesselRun named = RunTessel({"import", "points", "named.txt", "--preset", "auto"}, folder_.Path());
    ASSERT_EQ(named.status, 0) << named.err;
    EXPECT_TRUE(Contains(named.err, "--preset auto chose PENZ (comma, names line)")) << named.err;
    EXPECT_TRUE(Contains(named.err, "imported 2 points (1 line skipped)")) << named.err;
    EXPECT_EQ(PointsOf(named.out, true, false), (std::vector<std::string>{"\"P1\"[400.5,5000.5,0]", "\"P2\"[401,5001,0]"}));

    folder_.WriteFile("open.txt", "P1;5000.5;400.25;10;TREE\nP2;5010.5;400.5;11;POLE\n");
    const TesselRun open = Run({"import", "points", "open.txt", "--preset", "auto"});
    EXPECT_EQ(open.status, 2);
    EXPECT_TRUE(Contains(open.err, "northing and easting cannot be told apart by the numbers")) << open.err;
    EXPECT_TRUE(Contains(open.err, "\n  PNEZD (semicolon)\n  PENZD (semicolon)")) << open.err;
    EXPECT_EQ(open.out, "");
}

TEST_F(PresetCommand, BadValuesAreNamedWithTheirOption)
{
    folder_.WriteFile("in.txt", "#c\nP1 1 2 3\nP2 1 2 3\n");
    const struct {
        std::vector<std::string> arguments;
        const char* message;
    } cases[] = {
        {{"import", "points", "in.txt", "--preset", "PNZED"},
         "--preset: no preset 'PNZED' (known: PNEZD, PENZD, PNEZ, PENZ, NEZ, ENZ, XYZ, XYZD"},
        {{"export", "points", "in.jsonl", "-o", "x.txt", "--preset", "nope"}, "--preset: no preset 'nope'"},
        {{"import", "points", "in.txt", "--preset", "PNEZ", "--header-lines", "3"},
         "--header-lines 3: 'in.txt' has only 2 lines that are not a comment"},
        {{"import", "points", "in.txt", "--column", "a", "--header-lines", "-1"},
         "--header-lines: '-1' is not a number of lines (0 or more)"},
        {{"config", "import", "--header-lines", "two"}, "--header-lines: 'two' is not a number of lines (0 or more)"},
        {{"import", "points", "words.txt", "--preset", "auto"},
         "--preset auto: no preset fits 'words.txt':\n  PNEZD (blank): line 1 has 2 columns, PNEZD needs 5\n"},
        // Delimiters the line does not hold are summed up, not listed preset by preset.
        {{"import", "points", "words.txt", "--preset", "auto"},
         "  XYZD (blank): line 1 has 2 columns, XYZD needs 4\n  Not tried further with comma, tab, semicolon: line 1 "
         "has none of them.\n"},
    };
    folder_.WriteFile("in.jsonl", "");
    folder_.WriteFile("words.txt", "just words\n");
    for (const auto& c : cases) {
        const TesselRun run = Run(c.arguments);
        EXPECT_EQ(run.status, 2) << c.message;
        EXPECT_TRUE(Contains(run.err, c.message)) << run.err;
    }
}

TEST_F(PresetCommand, HeaderLinesAreStoredAndSkipped)
{
    const TesselRun config = Run({"config", "import", "--header-lines", "2", "--column", "a"});
    EXPECT_TRUE(Contains(config.out, R"(colPositions="" headerLines="2"><col no="0")")) << config.out;
    EXPECT_FALSE(Contains(Run({"config", "import", "--column", "a"}).out, "headerLines"));
    folder_.WriteFile("in.txt", "name x\n# note\nunits m\nP1 5\n");
    const TesselRun imported = RunTessel({"import", "table", "in.txt", "--column", "name", "--column", "x:real",
                                          "--header-lines", "2"},
                                         folder_.Path());
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(imported.out, "{\"kind\":\"row\",\"values\":[\"P1\",5]}\n");
    EXPECT_TRUE(Contains(imported.err, "read 4 lines")) << imported.err;
}

TEST_F(PresetCommand, RejectsListExactlyTheValuesThatDidNotConvert)
{
    folder_.WriteFile("bad.txt", "P1,1.5,2,7\n#c\nP2,abc,2,7\nP3,1,2,7\nP4,1,\"2\",7.5\nP5,1,2,\n");
    const TesselRun run = RunTessel({"import", "points", "bad.txt", "--delimiters", ",", "--column", "name",
                                     "--column", "x:real", "--column", "y:real", "--column", "n:integer", "--bind",
                                     "name=ENTITY_NAME", "--bind", "x=NODE_COORDINATE_X", "--bind",
                                     "y=NODE_COORDINATE_Y", "--bind", "n=N", "--rejects", "rejects.csv", "-o",
                                     "points.jsonl"},
                                    folder_.Path());
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(Contains(run.err, "tessel: 3 values did not convert to their column's type: 'x' 1, 'y' 1, 'n' 1 "
                                  "(listed in 'rejects.csv')"))
        << run.err;
    EXPECT_EQ(FileText(folder_.Path() + "/rejects.csv"), "line,column,text,reason\n"
                                                         "3,x,abc,not a number\n"
                                                         "5,y,\"\"\"2\"\"\",not a number\n"
                                                         "5,n,7.5,not a whole number\n");
    const TesselRun clean = RunTessel({"import", "points", "bad.txt", "--delimiters", ",", "--column", "name",
                                       "--bind", "name=ENTITY_NAME", "--rejects", "none.csv"},
                                      folder_.Path());
    EXPECT_FALSE(Contains(clean.err, "did not convert"));
    EXPECT_EQ(FileText(folder_.Path() + "/none.csv"), "line,column,text,reason\n");
}

#ifndef _WIN32 // the settings folder is XDG's here, %APPDATA%'s on Windows
TEST_F(PresetCommand, PresetFolderFilesThatAreNoConfigurationAreNamedAndLeftOut)
{
    std::filesystem::create_directories(folder_.Path() + "/config/VeltoXTessel/presets");
    folder_.WriteFile("config/VeltoXTessel/presets/Site.xml",
                      R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="" delimiter=";" comments="#" mode="0" )"
                      R"(colPositions=""><col no="0" name="name" type="5005" onOff="1"/>)"
                      R"(<col no="1" name="easting" type="5001" onOff="1"/></cfg>)");
    folder_.WriteFile("config/VeltoXTessel/presets/notes.txt", "just notes\n");
    refhost::SetEnvironment("XDG_CONFIG_HOME", (folder_.Path() + "/config").c_str());
    const TesselRun presets = Run({"presets"});
    refhost::SetEnvironment("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(presets.status, 0) << presets.err;
    EXPECT_TRUE(Contains(presets.out, "\nSite (" + folder_.Path() +
                                          "/config/VeltoXTessel/presets/Site.xml): name:text=ENTITY_NAME "
                                          "easting:real=NODE_COORDINATE_X; delimiters: semicolon\n"))
        << presets.out;
    EXPECT_TRUE(Contains(presets.err, "presets/notes.txt: not an import configuration (no cfg element); left out"))
        << presets.err;
    EXPECT_FALSE(Contains(presets.out, "notes"));
}
#endif

} // namespace testing
} // namespace tessel
