// An export never damages a file that the user did not choose to replace, and a failing
// disk ends an export cleanly. Every case compares the file's bytes before and after.

#include "ExportTestSupport.h"

#include "host/GisUtility.h"
#include "platform/Platform.h"
#include "refhost/HostSide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

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

// An export that fails after it began to write: a full disk at the first line, half-way or
// at the last bytes, a close that reports a late error, a replacement the system refuses.
// Each leaves the folder exactly as it was (an existing file byte for byte, a new one not
// there, nothing beside it), returns 0 and names the file in an alert.
enum class Start { NewFile, Overwrite, Append };
enum class Fault { FirstLine, Middle, LastBytes, Close, Replace };

struct FailingExport {
    const char* name;
    const char* writer;
    int format;
    Start start;
    Fault fault;
};

class ExportThatFails : public ::testing::TestWithParam<FailingExport> {
protected:
    void TearDown() override { Platform::Faults::ClearFaults(); }
};

std::vector<Row> ManyRows()
{
    std::vector<Row> rows;
    for (int entity = 0; entity < 20000; ++entity)
        rows.push_back({entity, "text of entity", entity * 7});
    return rows;
}

std::vector<std::string> FilesIn(TempDir& dir)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST_P(ExportThatFails, LeavesTheFolderAsItWas)
{
    const FailingExport& failing = GetParam();
    const Writer& writer = WriterNamed(failing.writer);
    const std::vector<Row> rows = ManyRows();
    ScriptedDialogs dialogs;
    dialogs.fileChoice = failing.start == Start::Append ? FileChoiceAppend : FileChoiceOverwrite;
    CExportEngine_Txt engine;
    const auto exportTo = [&](TempDir& dir) {
        CExportDefinition definition = MakeExportDefinition(
            writer.entityType, ConfigurationFor(dir.FilePath("out.txt"), Settings{"#", "\t", 1, failing.format}),
            BindsTo({"A", "B", "C"}));
        return writer.run(engine, &definition, rows);
    };
    const auto prepare = [&](TempDir& dir) {
        if (failing.start != Start::NewFile)
            dir.WriteFile("out.txt", kExisting);
    };

    // The same export without a fault tells how many bytes it writes.
    TempDir clean;
    prepare(clean);
    ASSERT_EQ(exportTo(clean), 1);
    const std::uint64_t written = clean.ReadFile("out.txt").size() - (failing.start == Start::Append ? kExisting.size() : 0);
    ASSERT_GT(written, 100000u);

    TempDir dir;
    prepare(dir);
    const std::vector<std::string> filesBefore = FilesIn(dir);
    switch (failing.fault) {
    case Fault::FirstLine: Platform::Faults::FailWritesAfter(10); break;
    case Fault::Middle: Platform::Faults::FailWritesAfter(written / 2); break;
    case Fault::LastBytes: Platform::Faults::FailWritesAfter(written - 3); break;
    case Fault::Close: Platform::Faults::FailCloses(1); break;
    case Fault::Replace: Platform::Faults::FailReplaces(1); break;
    }
    CadShim::ClearRecordings();
    EXPECT_EQ(exportTo(dir), 0);
    Platform::Faults::ClearFaults();

    EXPECT_EQ(FilesIn(dir), filesBefore);
    if (failing.start != Start::NewFile) {
        EXPECT_EQ(dir.ReadFile("out.txt"), kExisting);
    }
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 1u);
    const WString alert = CadShim::RecordedAlerts().front();
    EXPECT_NE(alert.find(dir.FilePath("out.txt")), WString::npos);
    EXPECT_EQ(alert.find(WTEXT("%s")), WString::npos) << "the system's reason is given";
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExportThatFails,
    ::testing::Values(
        FailingExport{"OverwriteAnsiFirstLine", "ExportPoints", 0, Start::Overwrite, Fault::FirstLine},
        FailingExport{"OverwriteAnsiMiddle", "ExportPoints", 0, Start::Overwrite, Fault::Middle},
        FailingExport{"OverwriteAnsiLastBytes", "ExportPoints", 0, Start::Overwrite, Fault::LastBytes},
        FailingExport{"OverwriteAnsiClose", "ExportPoints", 0, Start::Overwrite, Fault::Close},
        FailingExport{"OverwriteAnsiReplace", "ExportPoints", 0, Start::Overwrite, Fault::Replace},
        FailingExport{"OverwriteUtf16FirstLine", "ExportPoints", 1, Start::Overwrite, Fault::FirstLine},
        FailingExport{"OverwriteUtf16Middle", "ExportLines", 1, Start::Overwrite, Fault::Middle},
        FailingExport{"OverwriteUtf16LastBytes", "ExportPolygons", 1, Start::Overwrite, Fault::LastBytes},
        FailingExport{"OverwriteUtf16Close", "ExportPoints", 1, Start::Overwrite, Fault::Close},
        FailingExport{"AppendAnsiFirstLine", "ExportPoints", 0, Start::Append, Fault::FirstLine},
        FailingExport{"AppendAnsiMiddle", "ExportLines", 0, Start::Append, Fault::Middle},
        FailingExport{"AppendAnsiLastBytes", "ExportPoints", 0, Start::Append, Fault::LastBytes},
        FailingExport{"AppendAnsiClose", "ExportPolygons", 0, Start::Append, Fault::Close},
        FailingExport{"AppendUtf16FirstLine", "ExportPoints", 1, Start::Append, Fault::FirstLine},
        FailingExport{"AppendUtf16Middle", "ExportPoints", 1, Start::Append, Fault::Middle},
        FailingExport{"AppendUtf16LastBytes", "ExportLines", 1, Start::Append, Fault::LastBytes},
        FailingExport{"AppendUtf16Close", "ExportPoints", 1, Start::Append, Fault::Close},
        FailingExport{"NewFileMiddle", "ExportPoints", 0, Start::NewFile, Fault::Middle},
        FailingExport{"NewFileUtf16LastBytes", "ExportPolygons", 1, Start::NewFile, Fault::LastBytes},
        FailingExport{"NewFileReplace", "ExportLines", 0, Start::NewFile, Fault::Replace}),
    [](const ::testing::TestParamInfo<FailingExport>& info) { return std::string(info.param.name); });

// What a successful overwrite leaves: the new content under the old name, with the old
// file's permissions, a link still a link, and nothing beside it.
TEST(ExportReplacesTheFile, KeepsPermissionsAndLinksAndLeavesNothingBeside)
{
    namespace fs = std::filesystem;
    TempDir dir;
    dir.WriteFile("real.txt", kExisting);
    const fs::path real = fs::path(dir.Path()) / "real.txt";
    const fs::path link = fs::path(dir.Path()) / "link.txt";
    fs::permissions(real, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    std::error_code linkError;
    fs::create_symlink(real, link, linkError);
    const bool viaLink = !linkError;
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
    CExportDefinition definition = MakeExportDefinition(
        VeltoGis::EntityTypePoint, ConfigurationFor(dir.FilePath(viaLink ? "link.txt" : "real.txt")), BindsTo({"A"}));
    ImpexEntityList entities = EntityList({{"x"}}, false);

    ASSERT_EQ(engine.ExportPoints(&definition, entities), 1);

    EXPECT_EQ(dir.ReadFile("real.txt"), "#A\r\nx\r\n");
#ifndef _WIN32
    EXPECT_EQ(fs::status(real).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
#endif
    if (viaLink) {
        EXPECT_TRUE(fs::is_symlink(link));
    }
    const std::vector<std::string> expected =
        viaLink ? std::vector<std::string>{"link.txt", "real.txt"} : std::vector<std::string>{"real.txt"};
    EXPECT_EQ(FilesIn(dir), expected);
}

TEST(ExportReplacesTheFile, AFolderUnderTheTargetsNameIsNotTouched)
{
    TempDir dir;
    std::filesystem::create_directory(std::filesystem::path(dir.Path()) / "out.txt");
    ScriptedDialogs dialogs;
    CExportEngine_Txt engine;
    CExportDefinition definition =
        MakeExportDefinition(VeltoGis::EntityTypePoint, ConfigurationFor(dir.FilePath("out.txt")), BindsTo({"A"}));
    ImpexEntityList entities = EntityList({{"x"}}, false);

    EXPECT_EQ(engine.ExportPoints(&definition, entities), 0);
    EXPECT_EQ(FilesIn(dir), std::vector<std::string>{"out.txt"});
    EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::path(dir.Path()) / "out.txt"));
}

} // namespace
