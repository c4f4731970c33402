// config, describe, engines, targets and configure, as a user runs them.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <gtest/gtest.h>

namespace tessel {
namespace testing {
namespace {

using refhost::testing::TempDir;

TEST(ConfigCommand, PrintsTheEnginesStringThatImportThenReadsAsComposed)
{
    TempDir folder;
    folder.WriteFile("data.txt", "a;1,5\n");
    const TesselRun config = RunTessel(
        {"-q", "config", "import", "data.txt", "--delimiters", ";", "--column", "a", "--column", "b:real:off"},
        folder.Path());
    ASSERT_EQ(config.status, 0) << config.err;
    EXPECT_EQ(config.out, R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="data.txt" delimiter=";" )"
                          R"(comments="#" mode="0" colPositions=""><col no="0" name="a" type="5005" onOff="1"/>)"
                          R"(<col no="1" name="b" type="5001" onOff="0"/></cfg>)"
                          "\n");
    folder.WriteFile("cfg.xml", config.out);
    // FILE replaces the stored path, as when a user picks another file.
    folder.WriteFile("other.txt", "x;2\n");
    const TesselRun run = RunTessel({"-q", "import", "table", "other.txt", "--config", "cfg.xml"}, folder.Path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "{\"kind\":\"row\",\"values\":[\"x\",2]}\n");
}

TEST(ConfigCommand, ExportStringAndDescriptions)
{
    TempDir folder;
    const TesselRun config =
        RunTessel({"-q", "config", "export", "out.txt", "--delimiter", ";", "--utf16"}, folder.Path());
    ASSERT_EQ(config.status, 0) << config.err;
    EXPECT_EQ(config.out, R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="out.txt" comment="#" )"
                          R"(delimiter=";" header="1" format="1"/>)"
                          "\n");
    folder.WriteFile("export.xml", config.out);
    EXPECT_EQ(RunTessel({"describe", "export.xml", "--node"}, folder.Path()).out,
              "engine: EXPORT_TXT\ndescription: File: out.txt \r\nDelimiter: ;\nfile: out.txt\n");

    folder.WriteFile("import.xml", RunTessel({"-q", "config", "import", "s.txt", "--column", "n", "--column",
                                              "x:real", "--column", "k:integer"},
                                             folder.Path())
                                       .out);
    EXPECT_EQ(RunTessel({"describe", "import.xml"}, folder.Path()).out,
              "engine: IMPORT_TXT\ndescription: Text file:s.txt\nfile: s.txt\n"
              "source fields: n (text) x (real) k (integer)\n");
}

TEST(EnginesCommand, ListsBothEnginesWithTheirFilters)
{
    TempDir folder;
    const TesselRun run = RunTessel({"engines", "--verbose"}, folder.Path());
    EXPECT_EQ(run.status, 0);
    const auto lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 13u) << run.out;
    EXPECT_EQ(lines[0], "IMPORT_TXT (import)");
    EXPECT_EQ(lines[3], "  file filter: All files (*.*)|*.*||");
    EXPECT_EQ(lines[5], "  capabilities: 2=1 15=0 17=0 20=1");
    EXPECT_EQ(lines[6], "  import extension: none");
    EXPECT_EQ(lines[7], "EXPORT_TXT (export)");
    EXPECT_EQ(lines[10], "  file filter: TXT (*.txt)|*.txt||");
    EXPECT_EQ(lines[11], "  mask: 0x1111");
    EXPECT_EQ(lines[12], "  capabilities: 3=1 7=0 8=1 10=0 11=0 12=0 16=0 17=1");
}

TEST(TargetsCommand, RequiredAndExcludedByJob)
{
    TempDir folder;
    EXPECT_EQ(RunTessel({"targets", "points"}, folder.Path()).out,
              "required: NODE_COORDINATE_X NODE_COORDINATE_Y\nexcluded: none\n");
    EXPECT_EQ(RunTessel({"targets", "cloud", "--entity-type", "32"}, folder.Path()).out,
              "required: NODE_X NODE_Y\nexcluded: none\n");
    EXPECT_EQ(RunTessel({"targets", "lines", "--data-only"}, folder.Path()).out,
              "required: ENTITY_NAME\n"
              "excluded: NODE_X NODE_Y NODE_S NODE_E NODE_COORDINATE_X NODE_COORDINATE_Y\n");
}

TEST(ConfigureCommand, WithoutADisplayNothingIsConfigured)
{
    TempDir folder;
    for (const std::vector<std::string>& words : {std::vector<std::string>{"configure", "import", "survey.xyz"},
                                                  std::vector<std::string>{"configure", "export", "--node"}}) {
        const TesselRun run = RunTessel(words, folder.Path());
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.err, "tessel configure: no dialog can be shown here (no display, or --no-dialogs); compose "
                           "the configuration with 'tessel config'\n");
        EXPECT_EQ(run.out, "");
    }
}

} // namespace
} // namespace testing
} // namespace tessel
