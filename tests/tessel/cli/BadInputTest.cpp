// Wrong options and unusable input: one line on standard error naming the problem, a non-zero
// exit status, and nothing left behind.

#include "refhost/testing/TempDir.h"
#include "tests/tessel/AppTestSupport.h"

#include <algorithm>
#include <gtest/gtest.h>

#include <dirent.h>

namespace tessel {
namespace testing {
namespace {

using refhost::testing::TempDir;

struct BadCase {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    std::string error; // the one line of standard error
};

void PrintTo(const BadCase& test, std::ostream* out) { *out << test.name; }

const char kNegativeColumn[] = R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile="" delimiter=" " comments="" )"
                               R"(mode="0" colPositions=""><col no="-1" name="a" type="5005" onOff="1"/></cfg>)";

const BadCase kCases[] = {
    {"UnknownKind", {"import", "curves", "in.txt"}, 2,
     "tessel import: KIND: curves not in {points,lines,polygons,table,cloud}"},
    {"UnknownCommand", {"frobnicate"}, 2,
     "tessel frobnicate: unknown command 'frobnicate' (import, export, config, engines, describe, targets, configure, presets)"},
    {"MissingFile", {"import", "table", "missing.txt", "--column", "a"}, 1, "alert: Cannot open the file missing.txt."},
#ifdef _WIN32 // the reason in the system's own words, which Windows and Wine word differently
    {"UnreadableConfiguration", {"import", "points", "in.txt", "--config", "none.xml"}, 2,
     "tessel import: --config: cannot read 'none.xml': ..."},
#else
    {"UnreadableConfiguration", {"import", "points", "in.txt", "--config", "none.xml"}, 2,
     "tessel import: --config: cannot read 'none.xml': No such file or directory"},
#endif
    {"ConfigurationWithoutCfg", {"import", "points", "in.txt", "--config", "in.txt", "--strict"}, 2,
     "tessel import: --config: 'in.txt' holds no import configuration (no cfg element); the engine reads it as the "
     "default one (--strict)"},
    {"UnknownColumn", {"import", "points", "in.txt", "--column", "a", "--bind", "b=X", "--strict"}, 2,
     "tessel import: --bind: no column 'b' among the configuration's source fields (a); the engine adds nothing for "
     "it (--strict)"},
    {"UnknownReservedTarget", {"import", "points", "in.txt", "--column", "a", "--bind", "a=NODE_COORDINATES_X"}, 2,
     "tessel import: --bind: unknown reserved target 'NODE_COORDINATES_X' (reserved: ENTITY_NAME, "
     "NODE_COORDINATE_X, NODE_COORDINATE_Y, NODE_X, NODE_Y, NODE_S, NODE_E)"},
    {"ExcludedTarget", {"import", "points", "in.txt", "--data-only", "--column", "a", "--bind", "a=NODE_X"}, 2,
     "tessel import: --bind: a data-only job does not offer the target 'NODE_X'"},
    {"UnknownTransform", {"import", "points", "in.txt", "--column", "a", "--bind", "a=B", "--transform", "B=reverse"},
     2,
     "tessel import: --transform: unknown transform 'reverse' (known: upper, lower, trim, null, text, real, integer)"},
    {"TransformWithoutBind", {"import", "points", "in.txt", "--column", "a", "--transform", "B=upper"}, 2,
     "tessel import: --transform: no bind has the target 'B'"},
    {"NoColumns", {"import", "points", "in.txt", "--strict"}, 2,
     "tessel import: no columns: the engine offers no source fields (describe them with --column NAME[:type], or "
     "give --config) (--strict)"},
    {"BindsOnTables", {"import", "table", "in.txt", "--column", "a", "--bind", "a"}, 2,
     "tessel import: --bind does not apply to 'import table' (a row holds every column; no binds, no job)"},
    {"KeysOnPoints", {"import", "points", "in.txt", "--column", "a", "--keys", "A"}, 2,
     "tessel import: --keys does not apply to this kind (it selects rows of 'import table')"},
    {"DescendingPositions", {"import", "points", "in.txt", "--fixed", "5,3", "--column", "a"}, 2,
     "tessel import: --fixed: positions must ascend, but 3 follows 5"},
    {"CharacterOutsideCodePage", {"import", "points", "in.txt", "--column", "Ω"}, 2,
     "tessel import: --column: 'Ω' cannot be written in code page 1252"},
    {"PathOutsideCodePage", {"import", "table", "Łódź.txt", "--column", "a"}, 2,
     "tessel import: 'Łódź.txt': the configuration cannot name this path in code page 1252 (choose another with "
     "--codepage)"},
    {"UnknownCodePage", {"--codepage", "4711", "engines"}, 2,
     "tessel engines: --codepage: 4711 is not a code page this system converts (it converts: 437 ..."},
    {"OutputFolderMissing", {"import", "table", "in.txt", "--column", "a", "-o", "no/such/out.jsonl"}, 1,
     "tessel import: cannot write 'no/such/out.jsonl': No such file or directory"},
    {"RowsToFlatGeobuf", {"import", "table", "in.txt", "--column", "a", "-o", "out.fgb"}, 2,
     "tessel import: FlatGeobuf holds features with a geometry, and only points and cloud points have one: write "
     "lines, polygons and rows to GeoPackage, Shapefile, CSV or JSON Lines"},
#if TESSEL_WITH_GDAL
    {"CrsNonsense", {"import", "table", "in.txt", "--column", "a", "--crs", "EPSG:nonsense", "-o", "out.gpkg"}, 2,
     "tessel import: --crs 'EPSG:nonsense': not a coordinate system GDAL knows..."},
    {"GisDatasetToStandardOutput", {"import", "table", "in.txt", "--column", "a", "--format", "gpkg"}, 2,
     "tessel import: --format: a GIS dataset needs an output file (-o FILE)"},
    {"GisOutputFolderMissing", {"import", "table", "in.txt", "--column", "a", "-o", "no/such/out.gpkg"}, 1,
     "tessel import: cannot write 'no/such/out.gpkg': No such file or directory"},
    {"ExportSourceNotAVectorDataset", {"export", "points", "in.txt", "--input-format", "gdal", "-o", "out.txt"}, 2,
     "tessel export: 'in.txt': not a vector dataset GDAL reads..."},
#endif
    {"StrictValidation", {"import", "points", "in.txt", "--column", "a", "--strict"}, 1,
     "tessel import: The X and Y coordinates must be bound to columns of the file. (--strict)"},
    {"ExceptionInsideTheEngine", {"import", "table", "in.txt", "--config", "negative.xml"}, 3,
     "error: import column with a negative number"},
    {"ExportWithoutOutput", {"export", "points", "in.jsonl"}, 2, "tessel export: --output is required"},
    {"ExportInputNotJson", {"export", "points", "in.txt", "-o", "out.txt"}, 2,
     "tessel export: 'in.txt' line 1: not a JSON object"},
    {"ExportLayerOfJsonLines", {"export", "points", "in.jsonl", "-o", "out.txt", "--layer", "a"}, 2,
     "tessel export: --layer: 'in.jsonl' is read as JSON Lines, which has one layer (--input-format gdal reads it "
     "through GDAL)"},
    {"ExportUnknownSource", {"export", "points", "in.jsonl", "-o", "out.txt", "--bind", "#3=X"}, 2,
     "tessel export: --bind: no field '#3' in 'in.jsonl' (fields: #0, #1)"},
    {"ExportConfigurationWithoutCfg",
     {"export", "points", "in.jsonl", "-o", "out.txt", "--config", "in.txt", "--strict"}, 2,
     "tessel export: --config: 'in.txt' holds no export configuration (no cfg element); the engine reads it as the "
     "default one (--strict)"},
};

class BadInput : public ::testing::TestWithParam<BadCase> {};

std::vector<std::string> FolderEntries(const std::string& path)
{
    std::vector<std::string> names;
    DIR* folder = opendir(path.c_str());
    while (const dirent* entry = readdir(folder)) {
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && name.rfind(".tessel-test-", 0) != 0)
            names.push_back(name);
    }
    closedir(folder);
    std::sort(names.begin(), names.end());
    return names;
}

TEST_P(BadInput, PrintsOneLineAndLeavesNothingBehind)
{
    const BadCase& test = GetParam();
    TempDir folder;
    folder.WriteFile("in.txt", "P1 1 2\n");
    folder.WriteFile("in.jsonl", R"({"kind":"point","name":"P1","position":null,"values":["a","b"]})"
                                 "\n");
    folder.WriteFile("negative.xml", kNegativeColumn);
    const auto before = FolderEntries(folder.Path());
    std::vector<std::string> arguments = {"-q"};
    arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());

    const TesselRun run = RunTessel(arguments, folder.Path());
    EXPECT_EQ(run.status, test.status);
    // An expected text ending in "..." gives the start of the line; the system decides the rest.
    const std::string ellipsis = "...";
    const bool prefix = test.error.size() > ellipsis.size() &&
                        test.error.compare(test.error.size() - ellipsis.size(), ellipsis.size(), ellipsis) == 0;
    if (prefix) {
        const std::string start = test.error.substr(0, test.error.size() - ellipsis.size());
        EXPECT_EQ(run.err.substr(0, start.size()), start);
        EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
    } else {
        EXPECT_EQ(run.err, test.error + "\n");
    }
    EXPECT_EQ(FolderEntries(folder.Path()), before);
}

INSTANTIATE_TEST_SUITE_P(Cases, BadInput, ::testing::ValuesIn(kCases),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(BadInputOutput, FailedImportLeavesAnExistingOutputAsItWas)
{
    TempDir folder;
    folder.WriteFile("out.jsonl", "earlier\n");
    const TesselRun run =
        RunTessel({"-q", "import", "table", "missing.txt", "--column", "a", "-o", "out.jsonl"}, folder.Path());
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(folder.ReadFile("out.jsonl"), "earlier\n");
    EXPECT_EQ(FolderEntries(folder.Path()), std::vector<std::string>{"out.jsonl"});
}

} // namespace
} // namespace testing
} // namespace tessel
