// The three writers produce the same file from the same values; each test runs all three.

#include "ExportTestSupport.h"

#include "host/GisUtility.h"
#include "refhost/HostSide.h"

#include <gtest/gtest.h>

using namespace exporttest;
using namespace std::string_literals;
using refhost::testing::MakeExportDefinition;
using refhost::testing::TempDir;
using VeltoGis::Utility::CCoreProgressBar;

namespace {

class EntityWriters : public ::testing::TestWithParam<Writer> {
protected:
    // Exports the rows to out.txt through binds to the targets; returns the writer's result.
    int Export(const std::vector<std::string>& targets, const std::vector<Row>& rows, const Settings& settings = {},
               const std::string& file = "out.txt")
    {
        CExportDefinition definition = MakeExportDefinition(
            GetParam().entityType, ConfigurationFor(dir.FilePath(file), settings), BindsTo(targets));
        return GetParam().run(engine, &definition, rows);
    }
    std::string Written(const std::string& file = "out.txt") { return dir.ReadFile(file); }

    TempDir dir;
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
};

// One export and the exact bytes it leaves in the file.
struct ByteCase {
    const char* name;
    Settings settings;
    std::vector<std::string> targets;
    std::vector<Row> rows;
    std::optional<std::string> existing; // the file before, when there is one
    int fileChoice;
    std::string bytes;
};

const std::string kUtf16Lines = "\xFF\xFE#\0X\0\t\0Y\0\r\0\n\0" "1\0\t\0" "2\0\r\0\n\0"s;
const std::string kUtf16Before = "\xFF\xFE" "a\0\r\0\n\0"s;

const ByteCase kByteCases[] = {
    {"DefaultsGiveHeaderAndTabbedAnsiLines", {}, {"X", "Y"}, {{1, 2}}, {}, FileChoiceOverwrite, "#X\tY\r\n1\t2\r\n"},
    {"FormatOneIsUtf16LeWithMark", {"#", "\t", 1, 1}, {"X", "Y"}, {{1, 2}}, {}, FileChoiceOverwrite, kUtf16Lines},
    {"AnyNonZeroFormatIsUtf16Le", {"#", "\t", 1, 2}, {"X", "Y"}, {{1, 2}}, {}, FileChoiceOverwrite, kUtf16Lines},
    {"NegativeFormatIsUtf16Le", {"#", "\t", 1, -1}, {"X", "Y"}, {{1, 2}}, {}, FileChoiceOverwrite, kUtf16Lines},
    {"NullValuesLeaveTheirFieldEmpty", {"//", " ;; ", 1, 0}, {"A", "B", "C"},
     {{Cell(), "b", "c"}, {"a", Cell(), "c"}, {"a", "b", Cell()}, {Cell(), Cell(), Cell()}}, {}, FileChoiceOverwrite,
     "//A ;; B ;; C\r\n ;; b ;; c\r\na ;;  ;; c\r\na ;; b ;; \r\n ;;  ;; \r\n"},
    {"ValuesAreNeitherQuotedNorEscaped", {}, {"A", "B"}, {{"x\ty", "\"q\""}, {"two\nlines", -7}}, {},
     FileChoiceOverwrite, "#A\tB\r\nx\ty\t\"q\"\r\ntwo\r\nlines\t-7\r\n"},
    {"NoEntitiesWriteTheHeaderAlone", {}, {"A", "B"}, {}, {}, FileChoiceOverwrite, "#A\tB\r\n"},
    {"NoEntitiesAndNoHeaderEmptyAnOverwrittenFile", {"#", "\t", 0, 0}, {"A"}, {}, "old content\r\n",
     FileChoiceOverwrite, ""},
    {"AppendingWritesTheHeaderAgainWithoutASecondMark", {"#", "\t", 1, 1}, {"X"}, {{5}}, kUtf16Before,
     FileChoiceAppend, kUtf16Before + "#\0X\0\r\0\n\0" "5\0\r\0\n\0"s},
    {"AppendingToAnEmptyFileStartsWithTheMark", {"#", "\t", 1, 1}, {"X"}, {{5}}, "", FileChoiceAppend,
     "\xFF\xFE#\0X\0\r\0\n\0" "5\0\r\0\n\0"s},
};

TEST_P(EntityWriters, WriteTheBytesOfEachCase)
{
    for (const ByteCase& c : kByteCases) {
        SCOPED_TRACE(c.name);
        const std::string file = std::string(c.name) + ".txt";
        dialogs.askedPaths.clear();
        dialogs.fileChoice = c.fileChoice;
        if (c.existing)
            dir.WriteFile(file, *c.existing);
        EXPECT_EQ(Export(c.targets, c.rows, c.settings, file), 1);
        EXPECT_EQ(Written(file), c.bytes);
        // Only a file that is already there needs a question.
        EXPECT_EQ(dialogs.askedPaths, c.existing ? std::vector<WString>{dir.FilePath(file)} : std::vector<WString>{});
    }
}

TEST_P(EntityWriters, OtherEntityTypeUsesTheNodeConfigurationAndBinds)
{
    CExportDefinition definition = MakeExportDefinition(VeltoGis::EntityTypeNodeXY,
                                                        ConfigurationFor(dir.FilePath("main.txt")), BindsTo({"Main"}));
    Settings settings;
    settings.delimiter = "|";
    definition.SetExporterConfigurationNode(ConfigurationFor(dir.FilePath("node.txt"), settings).c_str());
    refhost::SetDBCollectionNode(definition, refhost::testing::MakeBinds(BindsTo({"N0", "N1"})));
    EXPECT_EQ(GetParam().run(engine, &definition, {{"a", "b"}}), 1);
    EXPECT_EQ(dir.ReadFile("node.txt"), "#N0|N1\r\na|b\r\n");
    EXPECT_EQ(dir.ReadFile("main.txt"), "");
}

TEST_P(EntityWriters, ExportTransformChangesOnlyTheWrittenValue)
{
    CExportDefinition definition = MakeExportDefinition(GetParam().entityType,
                                                        ConfigurationFor(dir.FilePath("out.txt")), BindsTo({"A", "B", "C"}));
    auto& binds = definition.GetDBCollection()->GetDataBindCollection();
    int calls = 0;
    refhost::SetExportTransform(*binds[0], [&calls](CDataBox& value) {
        ++calls;
        value.SetValue((static_cast<WString>(value) + W("!")).c_str());
    });
    refhost::SetExportTransform(*binds[1], [](CDataBox& value) { value.SetNull(); });
    EXPECT_EQ(GetParam().run(engine, &definition, {{"a", "b", 3}, {Cell(), "b", 4}}), 1);
    EXPECT_EQ(Written(), "#A\tB\tC\r\na!\t\t3\r\n\t\t4\r\n");
    EXPECT_EQ(calls, 1) << "a null value is not transformed";
}

// Without a definition nothing is shown at all.
TEST_P(EntityWriters, ProgressBarCountsEntitiesFromZeroAndIsGivenBack)
{
    using Kind = refhost::ProgressCallKind;
    refhost::StartProgressRecording();
    EXPECT_EQ(GetParam().run(engine, nullptr, {{"1"}}), 0);
    EXPECT_TRUE(refhost::RecordedProgressCalls().empty());
    EXPECT_EQ(Export({"A"}, {{"1"}, {"2"}, {"3"}}), 1);
    refhost::StopProgressRecording();
    std::vector<std::pair<Kind, int>> calls;
    for (const auto& call : refhost::RecordedProgressCalls())
        calls.emplace_back(call.kind, call.value);
    EXPECT_EQ(calls, (std::vector<std::pair<Kind, int>>{{Kind::SaveState, 0}, {Kind::Show, 0}, {Kind::SetPosition, 0},
                                                        {Kind::SetPosition, 1}, {Kind::SetPosition, 2},
                                                        {Kind::RestoreState, 0}, {Kind::Hide, 0}}));
    ASSERT_EQ(calls.size(), 7u);
    EXPECT_EQ(refhost::RecordedProgressCalls()[1].text, VeltoGis::CModuleConfiguration::Instance()->GetMsg(4048));
    EXPECT_EQ(refhost::RecordedProgressCalls()[1].upper, 3);
}

INSTANTIATE_TEST_SUITE_P(EachWriter, EntityWriters, ::testing::ValuesIn(AllWriters()),
                         [](const ::testing::TestParamInfo<Writer>& info) { return std::string(info.param.name); });

// What each writer does on its own.

class SingleWriter : public ::testing::Test {
protected:
    CExportDefinition Job(VeltoGis::enmEntityType type, const std::vector<std::string>& targets)
    {
        return MakeExportDefinition(type, ConfigurationFor(dir.FilePath("out.txt")), BindsTo(targets));
    }

    TempDir dir;
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
};

// Values are taken by position, whatever the bind: one without a source definition, an empty
// one (whose column stays, unnamed), an entity with too few values or none at all. The
// framework expects each value to be transformed where it stands, in the entity.
TEST_F(SingleWriter, PointsTakeValuesByPositionAndTransformThemInPlace)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePoint, {"A", "B", "C"});
    auto& binds = definition.GetDBCollection()->GetDataBindCollection();
    refhost::SetSourceDataDefinition(*binds[0], nullptr);
    binds[1].reset();
    refhost::SetExportTransform(*binds[2], [](CDataBox& value) { value.SetValue(42); });
    ImpexEntityList entities = EntityList({{"a"}, {}, {"a", "b", "c", "d"}}, false);
    entities.push_back(nullptr);
    EXPECT_EQ(engine.ExportPoints(&definition, entities), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\t\tC\r\na\t\t\r\n\t\t\r\na\tb\t42\r\n\t\t\r\n");
    EXPECT_EQ(static_cast<WString>(*(*entities[2]->GetData())[2]), W("42"));
}

TEST_F(SingleWriter, PolygonsWithFewerValuesThanBindsThrowAndLeaveTheFileAsItWas)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePolygon, {"A", "B"});
    ImpexEntityList entities = EntityList({{"a", "b"}, {"c"}, {"d", "e"}}, true);
    dir.WriteFile("out.txt", "old\r\n");
    refhost::StartProgressRecording();
    try {
        engine.ExportPolygons(&definition, entities);
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
    refhost::StopProgressRecording();
    EXPECT_EQ(dir.ReadFile("out.txt"), "old\r\n") << "an export that stops leaves the file as it was";
    ASSERT_GE(refhost::RecordedProgressCalls().size(), 2u);
    EXPECT_EQ(refhost::RecordedProgressCalls().back().kind, refhost::ProgressCallKind::Hide);
    EXPECT_FALSE(refhost::ProgressBarShown());
}

TEST_F(SingleWriter, LinesReadFieldsFromTheDrawingAndLeaveUnknownFieldsEmpty)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypeLine, {"A", "B"});
    auto container = DrawingEntities({{"a", 1}, {Cell(), 2}});
    container->GetEntities().push_back(nullptr);
    auto& binds = definition.GetDBCollection()->GetDataBindCollection();
    auto unknown = boost::make_shared<VeltoGis::Data::CDataDefinition>();
    unknown->SetDataID(W("nowhere").c_str());
    refhost::SetSourceDataDefinition(*binds[1], unknown);
    EXPECT_EQ(engine.ExportLines(&definition, container), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\tB\r\na\t\r\n\t\r\n\t\r\n");
    EXPECT_EQ(engine.ExportLines(&definition, nullptr), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\tB\r\n") << "no container: the header alone";
}

} // namespace
