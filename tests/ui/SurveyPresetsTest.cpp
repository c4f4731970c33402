// Survey presets and Detect, through their public functions: the shipped table, a preset
// applied to a configuration, Detect on generated lines (names lines, northing and easting
// that the numbers cannot tell apart, lines that do not fit) and on the real survey files of
// the shared corpus, and the user's preset folder.

#include "import/ImportTxtConfiguration.h"
#include "platform/UserFolders.h"
#include "refhost/Environment.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/PresetDetect.h"
#include "ui/UserPresets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

using refhost::testing::U8;
using refhost::testing::W;

namespace {

std::vector<DetectLine> LinesOf(const std::string& text)
{
    std::vector<DetectLine> lines;
    std::size_t number = 0, start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        lines.push_back({++number, W(text.substr(start, end - start))});
        start = end == std::string::npos ? text.size() : end + 1;
    }
    return lines;
}

std::string Fitting(const DetectResult& result)
{
    std::string names;
    for (const DetectCandidate& candidate : result.fitting)
        names += (names.empty() ? "" : " ") + U8(candidate.preset->name) + "/" + U8(DelimiterName(candidate.delimiter)) +
                 (candidate.headerLines ? "/names" : "");
    return names;
}

std::string ReasonFor(const DetectResult& result, const std::string& preset, const std::string& delimiter)
{
    for (const DetectCandidate& candidate : result.rejected) {
        if (U8(candidate.preset->name) == preset && U8(DelimiterName(candidate.delimiter)) == delimiter)
            return U8(candidate.reason);
    }
    return "(fits)";
}

} // namespace

TEST(SurveyPresets, ShippedTableHoldsTheSurveyLayoutsWithTheirBinds)
{
    const struct {
        const char* name;
        const char* columns; // name:type=target, blank-separated
    } expected[] = {
        {"PNEZD", "name:5005=ENTITY_NAME northing:5001=NODE_COORDINATE_Y easting:5001=NODE_COORDINATE_X "
                  "elevation:5001=HEIGHT description:5005=CODE"},
        {"PENZD", "name:5005=ENTITY_NAME easting:5001=NODE_COORDINATE_X northing:5001=NODE_COORDINATE_Y "
                  "elevation:5001=HEIGHT description:5005=CODE"},
        {"PNEZ", "name:5005=ENTITY_NAME northing:5001=NODE_COORDINATE_Y easting:5001=NODE_COORDINATE_X "
                 "elevation:5001=HEIGHT"},
        {"PENZ", "name:5005=ENTITY_NAME easting:5001=NODE_COORDINATE_X northing:5001=NODE_COORDINATE_Y "
                 "elevation:5001=HEIGHT"},
        {"NEZ", "northing:5001=NODE_COORDINATE_Y easting:5001=NODE_COORDINATE_X elevation:5001=HEIGHT"},
        {"ENZ", "easting:5001=NODE_COORDINATE_X northing:5001=NODE_COORDINATE_Y elevation:5001=HEIGHT"},
        {"XYZ", "X:5001=NODE_COORDINATE_X Y:5001=NODE_COORDINATE_Y Z:5001=HEIGHT"},
        {"XYZD", "X:5001=NODE_COORDINATE_X Y:5001=NODE_COORDINATE_Y Z:5001=HEIGHT D:5005=CODE"},
    };
    const auto& presets = ShippedPresets();
    ASSERT_EQ(presets.size(), std::size(expected));
    for (std::size_t i = 0; i < presets.size(); ++i) {
        std::string columns;
        for (const PresetColumn& column : presets[i].columns)
            columns += (columns.empty() ? "" : " ") + U8(column.name) + ":" + std::to_string(column.type) + "=" +
                       U8(column.target);
        EXPECT_EQ(U8(presets[i].name), expected[i].name);
        EXPECT_EQ(columns, expected[i].columns);
        EXPECT_EQ(presets[i].delimiters, (DelimiterList{W(","), W(" "), W("\t"), W(";")}));
    }
    EXPECT_EQ(FindPreset(presets, W("pnezd")), &presets[0]);
    EXPECT_EQ(FindPreset(presets, W("PNEZDX")), nullptr);
}

TEST(SurveyPresets, BadTableLinesAreNamed)
{
    const struct {
        const char* table;
        const char* problem;
    } cases[] = {
        {"delimiters ,\nA x:real\nB y\n", "line 3: 'y' is not COLUMN:TYPE[=TARGET]"},
        {"delimiters ,\nA x:float\n", "line 2: 'x:float' is not COLUMN:TYPE[=TARGET]"},
        {"A x:real\n", "line 1: the preset 'A' has no columns or no delimiters before it"},
    };
    for (const auto& c : cases) {
        std::vector<SurveyPreset> presets;
        WString problem;
        EXPECT_FALSE(ReadPresetTable(W(c.table), presets, problem));
        EXPECT_EQ(U8(problem), c.problem);
    }
}

TEST(SurveyPresets, ApplyingFillsTheOrdinaryConfiguration)
{
    ImportTxtConfiguration configuration;
    configuration.SetTxtFile(W("survey.txt"));
    configuration.SetComments(W("#"));
    configuration.SetMode(1);
    configuration.GetPositions() = {4, 9};
    ApplyPreset(*FindPreset(ShippedPresets(), W("XYZD")), W(";"), configuration);
    EXPECT_EQ(U8(configuration.ToXml()),
              R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="survey.txt" delimiter=";" comments="#" mode="0" )"
              R"(colPositions=""><col no="0" name="X" type="5001" onOff="1"/><col no="1" name="Y" type="5001" onOff="1"/>)"
              R"(<col no="2" name="Z" type="5001" onOff="1"/><col no="3" name="D" type="5005" onOff="1"/></cfg>)");
}

TEST(PresetDetect, FindsTheLayoutsThatFitEveryLineAndSaysWhyOthersDoNot)
{
    const struct {
        const char* name;
        std::string text;
        std::string fitting;
        bool decided;
        const char* preset; // a rejected candidate and its reason
        const char* delimiter;
        const char* reason;
    } cases[] = {
        {"NorthingAndEastingOpen", "P1,5000.5,400.25,10,TREE\nP2,5010.5,400.5,11,POLE\n",
         "PNEZD/comma PENZD/comma", false, "PNEZ", "comma", "line 1 has 5 columns, PNEZ needs 4"},
        {"NamesLineNamesTheOrder", "Point,Easting,Northing,Height\nP1,400.5,5000.5,1\nP2,401,5001,2\n",
         "PENZ/comma/names PNEZ/comma/names", true, "PNEZD", "comma", "line 1 has 4 columns, PNEZD needs 5"},
        {"TextInANumberColumn", "P1 1 2 3\nP2 1 2 3\nP3 1 2 3\nP4 1 2 3\nP5 1 2 3\nP6 1 2 3\nP7 abc 2 3\n", "",
         false, "PNEZ", "blank", "column 2 'abc' on line 7 is not a number"},
        {"EqualLayoutsAreOneChoice", "1\t2\t3\n4\t5\t6\n", "NEZ/tab ENZ/tab XYZ/tab", false, "XYZD", "tab",
         "line 1 has 3 columns, XYZD needs 4"},
        {"SemicolonWithDescription", "1;2;3;a b\n", "XYZD/semicolon", true, "XYZD", "comma",
         "line 1 has 1 columns, XYZD needs 4"},
        {"DelimiterInsideANameSplitsIt", "Point ID 1 2 3\nP1 1 2 3\n", "", false, "PNEZ", "blank",
         "the names line has 5 names, PNEZ needs 4"},
        {"DelimiterInsideANameKeptByAnother", "Point ID,E,N,H\nP1,1,2,3\n", "PENZ/comma/names PNEZ/comma/names", true,
         "PNEZ", "blank", "line 1 has 2 columns, PNEZ needs 4"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const DetectResult result = DetectPresets(LinesOf(c.text), ShippedPresets());
        EXPECT_EQ(Fitting(result), c.fitting);
        EXPECT_EQ(result.decided, c.decided);
        EXPECT_EQ(ReasonFor(result, c.preset, c.delimiter), c.reason);
    }
}

TEST(PresetDetect, NamesLineGivesTheColumnNamesAndOneHeaderLine)
{
    const DetectResult result = DetectPresets(LinesOf("Point,Easting,Northing,Height\nP1,400.5,5000.5,1\n"),
                                              ShippedPresets());
    ASSERT_TRUE(result.decided);
    const DetectCandidate& best = result.fitting.front();
    EXPECT_EQ(U8(best.preset->name), "PENZ");
    EXPECT_TRUE(result.fitting.back().namesContradict);
    EXPECT_EQ(U8(result.note), "the names line tells northing from easting");
    ImportTxtConfiguration configuration;
    ApplyCandidate(best, configuration);
    EXPECT_EQ(configuration.GetHeaderLines(), 1);
    ASSERT_EQ(configuration.GetColumns().size(), 4u);
    EXPECT_EQ(U8(configuration.GetColumns()[1]->GetName()), "Easting");
}

TEST(PresetDetect, AreaOfUsePutsTheOrderWhosePointsFallInsideFirst)
{
    const auto lines = LinesOf("P1 5800000 390000 10\nP2 5800100 390100 11\n");
    // An area where northings are millions and eastings hundreds of thousands.
    const AreaOfUseTest area = [](double x, double y) { return x < 1000000 && y > 1000000; };
    const DetectResult result = DetectPresets(lines, ShippedPresets(), area);
    EXPECT_TRUE(result.decided);
    EXPECT_FALSE(result.northingEastingOpen);
    EXPECT_EQ(U8(result.fitting.front().preset->name), "PNEZ");
    const DetectResult everywhere = DetectPresets(lines, ShippedPresets(), [](double, double) { return true; });
    EXPECT_FALSE(everywhere.decided);
    EXPECT_TRUE(everywhere.northingEastingOpen);
}

TEST(PresetDetect, RealSurveyFilesOfTheCorpus)
{
    const std::filesystem::path corpus = TESSEL_TESTDATA;
    if (!std::filesystem::is_directory(corpus))
        GTEST_SKIP() << "corpus not found at " << corpus;
    const struct {
        const char* file;
        const char* best; // empty: nothing fits
        bool decided;
    } cases[] = {
        {"os-ostn15-testpoints/OSTN15_OSGM15_TestInput_OSGBtoETRS.txt", "PENZ/comma/names", true},
        {"os-ostn15-testpoints/OSTN15_OSGM15_TestInput_ETRStoOSGB.txt", "PNEZ/comma/names", false},
        {"pdal/gdal/data.xyz", "NEZ/blank", false},
        {"pdal/text/file1.txt", "ENZ/blank/names", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        std::vector<DetectLine> lines;
        ASSERT_TRUE(ReadDetectLines(W((corpus / c.file).string()), W("#"), lines));
        const DetectResult result = DetectPresets(lines, ShippedPresets());
        const std::string fitting = Fitting(result);
        EXPECT_EQ(fitting.substr(0, fitting.find(' ')), c.best);
        EXPECT_EQ(result.decided, c.decided);
    }
}

TEST(UserPresets, ConfigurationFilesAreListedAndOthersNamed)
{
    refhost::testing::TempDir folder;
    const WString presets = W(folder.Path() + "/presets");
    ImportTxtConfiguration configuration;
    configuration.SetTxtFile(W("/data/job.txt"));
    ApplyPreset(*FindPreset(ShippedPresets(), W("PNEZ")), W(";"), configuration);
    configuration.SetHeaderLines(2);
    const WString saved = SaveUserPreset(presets, W("Site A"), configuration);
    ASSERT_FALSE(saved.empty());
    EXPECT_TRUE(SaveUserPreset(presets, W("../up"), configuration).empty());
    folder.WriteFile("presets/broken.xml", "<notacfg/>");

    const UserPresetList list = ReadUserPresets(presets);
    ASSERT_EQ(list.presets.size(), 1u);
    const SurveyPreset& site = list.presets.front();
    EXPECT_EQ(U8(site.name), "Site A");
    EXPECT_EQ(site.file, saved);
    EXPECT_EQ(site.headerLines, 2);
    EXPECT_EQ(site.delimiters, DelimiterList{W(";")});
    ASSERT_EQ(site.columns.size(), 4u);
    EXPECT_EQ(U8(site.columns[1].target), "NODE_COORDINATE_Y");
    ASSERT_EQ(list.problems.size(), 1u);
    EXPECT_EQ(U8(DescribePresetProblem(list.problems.front())),
              U8(presets + Platform::PathSeparator() + W("broken.xml")) +
                  ": not an import configuration (no cfg element)");
}

#ifndef _WIN32
TEST(UserPresets, FolderFollowsTheUsersSettingsFolder)
{
    refhost::SetEnvironment("XDG_CONFIG_HOME", "/tmp/settings-here");
    EXPECT_EQ(U8(UserPresetFolder()), "/tmp/settings-here/VeltoXTessel/presets");
    refhost::SetEnvironment("XDG_CONFIG_HOME", "relative/ignored");
    refhost::SetEnvironment("HOME", "/home/surveyor");
    EXPECT_EQ(U8(UserPresetFolder()), "/home/surveyor/.config/VeltoXTessel/presets");
    refhost::SetEnvironment("XDG_CONFIG_HOME", nullptr);
}
#endif
