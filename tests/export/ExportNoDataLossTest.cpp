// An export never damages a file that the user did not choose to replace, and a failing
// disk ends an export cleanly. Every case compares the file's bytes before and after.

#include "ExportTestSupport.h"

#include "host/GisUtility.h"
#include "platform/Platform.h"
#include "refhost/HostSide.h"

#include <gtest/gtest.h>

using namespace exporttest;
using namespace std::string_literals;
using refhost::testing::MakeExportDefinition;
using refhost::testing::TempDir;
using VeltoGis::Utility::CCoreProgressBar;

namespace {

const std::string kExisting = "\xFF\xFE" "o\0l\0d\0\r\0\n\0"s;

// One way an export can be refused or fail before it writes.
struct RefusedExport {
    const char* name;
    const char* writer;
    int fileChoice;
    std::function<void(CExportDefinition&, TempDir&)> prepare;
    bool asksTheUser;
};

class ExportLeavesFileAlone : public ::testing::TestWithParam<RefusedExport> {
protected:
    void TearDown() override { Platform::Faults::ClearFaults(); }
};

const Writer& WriterNamed(const std::string& name)
{
    static const std::vector<Writer> writers = AllWriters();
    for (const Writer& writer : writers) {
        if (name == writer.name)
            return writer;
    }
    throw std::invalid_argument(name);
}

TEST_P(ExportLeavesFileAlone, BytesAreUnchangedAndResultIsZero)
{
    const RefusedExport& refused = GetParam();
    const Writer& writer = WriterNamed(refused.writer);
    TempDir dir;
    const WString path = dir.WriteFile("out.txt", kExisting);
    CExportDefinition definition =
        MakeExportDefinition(writer.entityType, ConfigurationFor(path), BindsTo({"A", "B"}));
    refused.prepare(definition, dir);
    ScriptedDialogs dialogs;
    dialogs.fileChoice = refused.fileChoice;
    refhost::StartProgressRecording();
    CadShim::ClearRecordings();

    CExportEngine_Txt engine;
    EXPECT_EQ(writer.run(engine, &definition, {{"a", "b"}, {"c", "d"}}), 0);

    refhost::StopProgressRecording();
    EXPECT_EQ(dir.ReadFile("out.txt"), kExisting);
    if (refused.asksTheUser) {
        EXPECT_EQ(dialogs.askedPaths, std::vector<WString>{path});
        EXPECT_EQ(dialogs.documentCallsBefore, std::vector<std::size_t>{1}) << "asked while the document is locked";
        EXPECT_EQ(CadShim::DocumentManagerCalls().size(), 2u);
    } else {
        EXPECT_TRUE(dialogs.askedPaths.empty());
    }
    EXPECT_FALSE(refhost::ProgressBarShown());
    if (!refhost::RecordedProgressCalls().empty()) {
        EXPECT_EQ(refhost::RecordedProgressCalls().back().kind, refhost::ProgressCallKind::Hide);
    }
}

void NoChange(CExportDefinition&, TempDir&) {}
void EmptyPath(CExportDefinition& definition, TempDir&)
{
    definition.SetExporterConfiguration(ConfigurationFor(WString()).c_str());
}
void SecondBindWithoutSource(CExportDefinition& definition, TempDir&)
{
    refhost::SetSourceDataDefinition(*definition.GetDBCollection()->GetDataBindCollection()[1], nullptr);
}
void OpenFails(CExportDefinition&, TempDir&) { Platform::Faults::FailOpens(1); }

INSTANTIATE_TEST_SUITE_P(
    Cases, ExportLeavesFileAlone,
    ::testing::Values(RefusedExport{"CancelledChoicePoints", "ExportPoints", FileChoiceCancel, NoChange, true},
                      RefusedExport{"CancelledChoiceLines", "ExportLines", FileChoiceCancel, NoChange, true},
                      RefusedExport{"CancelledChoicePolygons", "ExportPolygons", FileChoiceCancel, NoChange, true},
                      RefusedExport{"UnexpectedChoice", "ExportPoints", 7, NoChange, true},
                      RefusedExport{"EmptyPath", "ExportPoints", FileChoiceOverwrite, EmptyPath, false},
                      RefusedExport{"MissingSourceLines", "ExportLines", FileChoiceOverwrite, SecondBindWithoutSource,
                                    true},
                      RefusedExport{"MissingSourcePolygons", "ExportPolygons", FileChoiceOverwrite,
                                    SecondBindWithoutSource, true},
                      RefusedExport{"FileCannotBeOpened", "ExportPoints", FileChoiceOverwrite, OpenFails, true},
                      RefusedExport{"FileCannotBeOpenedForAppend", "ExportLines", FileChoiceAppend, OpenFails, true}),
    [](const ::testing::TestParamInfo<RefusedExport>& info) { return std::string(info.param.name); });

// A disk that fills up: the export runs to its end, reports success as the host expects of
// a run that was not refused, and the file holds exactly what the disk took.
class ExportOnFullDisk : public ::testing::TestWithParam<std::uint64_t> {
protected:
    void TearDown() override { Platform::Faults::ClearFaults(); }
};

TEST_P(ExportOnFullDisk, FinishesWithWhatTheDiskTook)
{
    TempDir dir;
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
    std::vector<Row> rows;
    for (int entity = 0; entity < 3000; ++entity)
        rows.push_back({entity, "text of entity", entity * 7});
    const auto exportTo = [&](const std::string& name) {
        CExportDefinition definition = MakeExportDefinition(
            VeltoGis::EntityTypePoint, ConfigurationFor(dir.FilePath(name)), BindsTo({"A", "B", "C"}));
        ImpexEntityList entities = EntityList(rows, false);
        return engine.ExportPoints(&definition, entities);
    };
    ASSERT_EQ(exportTo("full.txt"), 1);
    const std::string complete = dir.ReadFile("full.txt");
    ASSERT_GT(complete.size(), GetParam());

    Platform::Faults::FailWritesAfter(GetParam());
    EXPECT_EQ(exportTo("short.txt"), 1);
    Platform::Faults::ClearFaults();
    EXPECT_EQ(dir.ReadFile("short.txt"), complete.substr(0, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Budgets, ExportOnFullDisk, ::testing::Values(0u, 1u, 4096u, 10000u));

} // namespace
