// The command line: what each command's options become, and the combinations refused
// before anything is loaded.

#include "tessel/cli/CommandLine.h"
#include "tessel/core/AppError.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tessel {
namespace {

Command Parse(std::vector<std::string> words, std::ostream* out = nullptr)
{
    words.insert(words.begin(), "tessel");
    std::vector<const char*> argv;
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    std::ostringstream ignored;
    const auto command = ParseCommandLine(static_cast<int>(argv.size()), argv.data(), out ? *out : ignored);
    if (!command)
        throw std::logic_error("no command");
    return *command;
}

TEST(CommandLine, ImportComposesItsJobFromOptionsInOrder)
{
    const Command command =
        Parse({"--quiet", "import", "points", "survey.txt", "--delimiters", "\\t;", "--comments", "*",
               "--column", "name", "--column", "x:real", "--column", "skip:integer:off", "--bind", "name=ENTITY_NAME",
               "--bind", "x", "--transform", "ENTITY_NAME=upper", "--filter=-10,-20.5,10,20", "--entity-type", "32",
               "--data-only", "-o", "out.csv", "--format", "geojson", "--codepage", "1250"});
    EXPECT_EQ(command.name, CommandName::Import);
    EXPECT_TRUE(command.global.quiet);
    EXPECT_EQ(command.global.codePage, 1250u);
    const ImportRequest& request = command.import;
    EXPECT_EQ(request.kind, ImportKind::Points);
    EXPECT_EQ(request.file, "survey.txt");
    EXPECT_EQ(request.config.delimiters, "\t;");
    EXPECT_EQ(request.config.comments, "*");
    ASSERT_EQ(request.config.columns.size(), 3u);
    EXPECT_EQ(request.config.columns[1].type, kColumnReal);
    EXPECT_FALSE(request.config.columns[2].enabled);
    ASSERT_EQ(request.binds.size(), 2u);
    EXPECT_EQ(request.binds[1].source, "x");
    EXPECT_EQ(request.binds[1].target, "x");
    EXPECT_EQ(request.transforms[0].transform, "upper");
    ASSERT_TRUE(request.filter);
    EXPECT_EQ(request.filter->yMin, -20.5);
    EXPECT_EQ(request.entityType, 32);
    EXPECT_TRUE(request.dataOnly);
    EXPECT_EQ(request.output, "out.csv");
    EXPECT_EQ(request.format, OutputFormat::GeoJson);
}

TEST(CommandLine, TableVariantsFollowTheirOptions)
{
    EXPECT_EQ(Parse({"import", "table", "f", "--column", "k"}).import.tableVariant, TableVariant::AllRows);
    const Command keys = Parse({"import", "table", "f", "--column", "k", "--keys", "AB12,cd", "--key-index", "1"});
    EXPECT_EQ(keys.import.tableVariant, TableVariant::LinkedKeys);
    EXPECT_EQ(keys.import.keys, (std::vector<std::string>{"AB12", "cd"}));
    EXPECT_EQ(keys.import.keyIndex, 1);
    const Command value = Parse({"import", "table", "f", "--column", "k", "--key-value", "-0.5:real"});
    EXPECT_EQ(value.import.tableVariant, TableVariant::KeyValue);
    EXPECT_EQ(value.import.keyValue, "-0.5");
    EXPECT_EQ(value.import.keyValueType, KeyValueType::Real);
}

TEST(CommandLine, ExportAndConfigRequests)
{
    const Command exportCommand = Parse({"export", "lines", "in.geojson", "-o", "out.txt", "--delimiter", "\\s;",
                                         "--no-header", "--utf16", "--bind", "a=b", "--if-exists", "append"});
    EXPECT_EQ(exportCommand.name, CommandName::Export);
    EXPECT_EQ(exportCommand.exportJob.kind, ExportKind::Lines);
    EXPECT_EQ(exportCommand.exportJob.config.delimiter, " ;");
    EXPECT_EQ(exportCommand.exportJob.config.header, false);
    EXPECT_TRUE(exportCommand.exportJob.config.utf16);
    EXPECT_EQ(exportCommand.exportJob.ifExists, IfExists::Append);

    const Command config = Parse({"config", "import", "f.txt", "--fixed", "8,22", "--column", "a"});
    EXPECT_EQ(config.name, CommandName::ConfigImport);
    EXPECT_EQ(config.config.file, "f.txt");
    EXPECT_EQ(config.config.importConfig.fixedPositions, (std::vector<unsigned>{8, 22}));
    EXPECT_EQ(Parse({"config", "export"}).name, CommandName::ConfigExport);
}

TEST(CommandLine, HelpAndVersionPrintAndRunNothing)
{
    for (const auto& words : std::vector<std::vector<std::string>>{{"--help"}, {"import", "--help"}, {"--version"}}) {
        std::vector<const char*> argv = {"tessel"};
        for (const std::string& word : words)
            argv.push_back(word.c_str());
        std::ostringstream out;
        EXPECT_FALSE(ParseCommandLine(static_cast<int>(argv.size()), argv.data(), out));
        EXPECT_FALSE(out.str().empty());
    }
}

struct Refused {
    std::vector<std::string> words;
    const char* error;
};

TEST(CommandLine, RefusesWhatCannotBeRun)
{
    const Refused cases[] = {
        {{"import", "points", "f", "--config", "c.xml", "--column", "a"}, "--config excludes --column"},
        {{"import", "points", "f", "--secondary", "--column", "a"},
         "--secondary reads the secondary binds: give them with --node-bind"},
        {{"import", "lines", "f", "--filter", "0,0,1,1"},
         "--filter does not apply to this kind (only 'import points' filters positions)"},
        {{"import", "table", "f", "--max-lines", "3", "--keys", "A"}, "choose one of --max-lines, --keys and --key-value"},
        {{"import", "points", "f", "--entity-type", "7"},
         "--entity-type: 7 is not an entity type (0 none, 1 points, 2 lines, 16 polygons, 32 nodes)"},
        {{"import", "points", "f", "--column", "x:float"}, "--column: 'x:float' is not NAME[:real|text|integer][:off]"},
        {{"import", "points", "f", "--delimiters", "\\q"}, "--delimiters: unknown escape in '\\q' (use \\t, \\s or \\\\)"},
        {{"import", "points", "f", "--fixed", "0"}, "--fixed: '0' is not a character position (1 or more)"},
        {{"import", "points", "f", "--filter", "1,1,0,2"}, "--filter: '1,1,0,2' has a minimum above its maximum"},
        {{"import", "points", "f", "--filter", "1,2"}, "--filter: '1,2' is not XMIN,YMIN,XMAX,YMAX"},
        {{"import", "table", "f", "--key-value", "x:integer"}, "--key-value: 'x' is not an integer"},
        {{"import", "table", "f", "--key-value", "a:null"}, "--key-value: a null key value takes no text (write ':null')"},
        {{"import", "points", "f", "--bind", ""}, "--bind: an empty bind (use SOURCE=TARGET)"},
        {{"import", "points", "f", "--transform", "A"}, "--transform: 'A' is not TARGET=TRANSFORM"},
        {{"export", "points", "in", "-o", "o", "--header", "--no-header"}, "--header excludes --no-header"},
        {{"export", "points", "in", "-o", "o", "--if-exists", "skip"},
         "--if-exists: skip not in {overwrite,append,cancel}"},
    };
    for (const Refused& test : cases) {
        try {
            Parse(test.words);
            ADD_FAILURE() << test.error << ": accepted";
        } catch (const AppError& error) {
            EXPECT_EQ(error.Status(), ExitUsage);
            EXPECT_STREQ(error.what(), test.error);
        }
    }
}

} // namespace
} // namespace tessel
