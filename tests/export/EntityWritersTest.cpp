// The three writers produce the same file from the same values; each test runs all three.

#include "ExportTestSupport.h"

#include "host/GisUtility.h"

#include <gtest/gtest.h>

#include <cstdio>

using namespace exporttest;
using namespace std::string_literals;
using refhost::testing::MakeExportDefinition;
using refhost::testing::TempDir;
using VeltoGis::Utility::CCoreProgressBar;

namespace {

class EntityWriters : public ::testing::TestWithParam<Writer> {
protected:
    // Exports the rows to out.txt through binds to the targets; returns the writer's result.
    int Export(const std::vector<std::string>& targets, const std::vector<Row>& rows, const Settings& settings = {})
    {
        CExportDefinition definition = MakeExportDefinition(
            GetParam().entityType, ConfigurationFor(dir.FilePath("out.txt"), settings), BindsTo(targets));
        return GetParam().run(engine, &definition, rows);
    }
    std::string Written() { return dir.ReadFile("out.txt"); }

    TempDir dir;
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
};

TEST_P(EntityWriters, DefaultConfigurationWritesHeaderAndTabbedAnsiLines)
{
    EXPECT_EQ(Export({"X", "Y"}, {{1, 2}}), 1);
    EXPECT_EQ(Written(), "#X\tY\r\n1\t2\r\n");
    EXPECT_TRUE(dialogs.askedPaths.empty()) << "a new file needs no question";
}

TEST_P(EntityWriters, AnyNonZeroFormatStartsWithMarkAndWritesLittleEndianUnits)
{
    for (const int format : {1, 2, -1}) {
        Settings utf16;
        utf16.format = format;
        EXPECT_EQ(Export({"X", "Y"}, {{1, 2}}, utf16), 1);
        EXPECT_EQ(Written(), "\xFF\xFE#\0X\0\t\0Y\0\r\0\n\0"
                             "1\0\t\0"
                             "2\0\r\0\n\0"s)
            << "format " << format;
        std::remove((dir.Path() + "/out.txt").c_str()); // a new file each time: no question
    }
}

TEST_P(EntityWriters, NullValuesLeaveTheirFieldEmptyBetweenMultiCharacterDelimiters)
{
    Settings settings;
    settings.comment = "//";
    settings.delimiter = " ;; ";
    const std::vector<Row> rows = {{Cell(), "b", "c"}, {"a", Cell(), "c"}, {"a", "b", Cell()}, {Cell(), Cell(), Cell()}};
    EXPECT_EQ(Export({"A", "B", "C"}, rows, settings), 1);
    EXPECT_EQ(Written(), "//A ;; B ;; C\r\n"
                         " ;; b ;; c\r\n"
                         "a ;;  ;; c\r\n"
                         "a ;; b ;; \r\n"
                         " ;;  ;; \r\n");
}

TEST_P(EntityWriters, ValuesAreWrittenUnquotedAndUnescaped)
{
    EXPECT_EQ(Export({"A", "B"}, {{"x\ty", "\"q\""}, {"two\nlines", -7}}), 1);
    EXPECT_EQ(Written(), "#A\tB\r\n"
                         "x\ty\t\"q\"\r\n"
                         "two\r\nlines\t-7\r\n");
}

TEST_P(EntityWriters, NoEntitiesWriteTheHeaderAlone)
{
    EXPECT_EQ(Export({"A", "B"}, {}), 1);
    EXPECT_EQ(Written(), "#A\tB\r\n");
}

TEST_P(EntityWriters, NoEntitiesAndNoHeaderEmptyAFileChosenForOverwrite)
{
    dir.WriteFile("out.txt", "old content\r\n");
    Settings settings;
    settings.header = 0;
    EXPECT_EQ(Export({"A"}, {}, settings), 1);
    EXPECT_EQ(Written(), "");
    ASSERT_EQ(dialogs.askedPaths.size(), 1u);
    EXPECT_EQ(dialogs.askedPaths[0], dir.FilePath("out.txt"));
}

TEST_P(EntityWriters, AppendToNonEmptyFileWritesHeaderAgainWithoutSecondMark)
{
    const std::string before = "\xFF\xFE" "a\0\r\0\n\0"s;
    dir.WriteFile("out.txt", before);
    dialogs.fileChoice = FileChoiceAppend;
    Settings utf16;
    utf16.format = 1;
    EXPECT_EQ(Export({"X"}, {{5}}, utf16), 1);
    EXPECT_EQ(Written(), before + "#\0X\0\r\0\n\0" "5\0\r\0\n\0"s);
}

TEST_P(EntityWriters, AppendToEmptyFileStartsWithTheMark)
{
    dir.WriteFile("out.txt", "");
    dialogs.fileChoice = FileChoiceAppend;
    Settings utf16;
    utf16.format = 1;
    EXPECT_EQ(Export({"X"}, {{5}}, utf16), 1);
    EXPECT_EQ(Written(), "\xFF\xFE#\0X\0\r\0\n\0" "5\0\r\0\n\0"s);
}

TEST_P(EntityWriters, OtherEntityTypeUsesTheNodeConfigurationAndBinds)
{
    CExportDefinition definition = MakeExportDefinition(VeltoGis::EntityTypeNodeXY,
                                                        ConfigurationFor(dir.FilePath("main.txt")), BindsTo({"Main"}));
    Settings settings;
    settings.delimiter = "|";
    definition.SetExporterConfigurationNode(ConfigurationFor(dir.FilePath("node.txt"), settings).c_str());
    definition.SetDBCollectionNode(refhost::testing::MakeBinds(BindsTo({"N0", "N1"})));
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
    binds[0]->SetExportTransform([&calls](CDataBox& value) {
        ++calls;
        value.SetValue((static_cast<WString>(value) + W("!")).c_str());
    });
    binds[1]->SetExportTransform([](CDataBox& value) { value.SetNull(); });
    EXPECT_EQ(GetParam().run(engine, &definition, {{"a", "b", 3}, {Cell(), "b", 4}}), 1);
    EXPECT_EQ(Written(), "#A\tB\tC\r\na!\t\t3\r\n\t\t4\r\n");
    EXPECT_EQ(calls, 1) << "a null value is not transformed";
}

TEST_P(EntityWriters, ProgressBarCountsEntitiesAndIsGivenBack)
{
    CCoreProgressBar& bar = *CCoreProgressBar::Instance();
    bar.StartRecording();
    EXPECT_EQ(Export({"A"}, {{"1"}, {"2"}, {"3"}}), 1);
    bar.StopRecording();
    using Kind = CCoreProgressBar::CallKind;
    const auto& calls = bar.RecordedCalls();
    ASSERT_EQ(calls.size(), 7u);
    EXPECT_EQ(calls[0].kind, Kind::SaveState);
    EXPECT_EQ(calls[1].kind, Kind::Show);
    EXPECT_EQ(calls[1].text, VeltoGis::CModuleConfiguration::Instance()->GetMsg(4048));
    EXPECT_EQ(calls[1].value, 0);
    EXPECT_EQ(calls[1].upper, 3);
    for (int entity = 0; entity < 3; ++entity) {
        EXPECT_EQ(calls[2 + entity].kind, Kind::SetPosition);
        EXPECT_EQ(calls[2 + entity].value, entity);
    }
    EXPECT_EQ(calls[5].kind, Kind::RestoreState);
    EXPECT_EQ(calls[6].kind, Kind::Hide);
}

TEST_P(EntityWriters, WithoutDefinitionNothingHappens)
{
    CCoreProgressBar& bar = *CCoreProgressBar::Instance();
    bar.StartRecording();
    EXPECT_EQ(GetParam().run(engine, nullptr, {{"1"}}), 0);
    bar.StopRecording();
    EXPECT_TRUE(bar.RecordedCalls().empty());
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

TEST_F(SingleWriter, PointsWithFewerValuesThanBindsGetEmptyFields)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePoint, {"A", "B", "C"});
    ImpexEntityList entities = EntityList({{"a"}, {}, {"a", "b", "c", "d"}}, false);
    entities.push_back(nullptr);
    EXPECT_EQ(engine.ExportPoints(&definition, entities), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\tB\tC\r\na\t\t\r\n\t\t\r\na\tb\tc\r\n\t\t\r\n");
}

TEST_F(SingleWriter, PointsDoNotNeedSourceDefinitionsAndEmptyBindsKeepTheirColumn)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePoint, {"A", "B", "C"});
    auto& binds = definition.GetDBCollection()->GetDataBindCollection();
    binds[0]->SetSourceDataDefinition(nullptr);
    binds[1].reset();
    ImpexEntityList entities = EntityList({{"a", "b", "c"}}, false);
    EXPECT_EQ(engine.ExportPoints(&definition, entities), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\t\tC\r\na\tb\tc\r\n");
}

TEST_F(SingleWriter, PolygonsWithFewerValuesThanBindsThrowAfterTheLinesBefore)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePolygon, {"A", "B"});
    ImpexEntityList entities = EntityList({{"a", "b"}, {"c"}, {"d", "e"}}, true);
    CCoreProgressBar& bar = *CCoreProgressBar::Instance();
    bar.StartRecording();
    try {
        engine.ExportPolygons(&definition, entities);
        ADD_FAILURE() << "no exception";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
    bar.StopRecording();
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\tB\r\na\tb\r\n") << "the file is closed with what was written";
    ASSERT_GE(bar.RecordedCalls().size(), 2u);
    EXPECT_EQ(bar.RecordedCalls().back().kind, CCoreProgressBar::CallKind::Hide);
    EXPECT_FALSE(bar.IsShown());
}

TEST_F(SingleWriter, LinesReadFieldsFromTheDrawingAndLeaveUnknownFieldsEmpty)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypeLine, {"A", "B"});
    auto container = DrawingEntities({{"a", 1}, {Cell(), 2}});
    container->GetEntities().push_back(nullptr);
    auto& binds = definition.GetDBCollection()->GetDataBindCollection();
    auto unknown = boost::make_shared<VeltoGis::Data::CDataDefinition>();
    unknown->SetDataID(W("nowhere").c_str());
    binds[1]->SetSourceDataDefinition(unknown);
    EXPECT_EQ(engine.ExportLines(&definition, container), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\tB\r\na\t\r\n\t\r\n\t\r\n");
}

TEST_F(SingleWriter, LinesWithoutContainerWriteTheHeaderAlone)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypeLine, {"A"});
    EXPECT_EQ(engine.ExportLines(&definition, nullptr), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\r\n");
}

// The framework hands the writers entities built for this export and expects each value to
// be transformed where it stands.
TEST_F(SingleWriter, ExportTransformWorksOnTheEntitysValueInPlace)
{
    CExportDefinition definition = Job(VeltoGis::EntityTypePoint, {"A"});
    definition.GetDBCollection()->GetDataBindCollection()[0]->SetExportTransform(
        [](CDataBox& value) { value.SetValue(42); });
    ImpexEntityList entities = EntityList({{"a"}}, false);
    EXPECT_EQ(engine.ExportPoints(&definition, entities), 1);
    EXPECT_EQ(dir.ReadFile("out.txt"), "#A\r\n42\r\n");
    EXPECT_EQ(static_cast<WString>(*(*entities[0]->GetData())[0]), W("42"));
}

} // namespace
