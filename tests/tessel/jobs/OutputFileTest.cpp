// Output that replaces its target only when complete.

#include "refhost/Environment.h"
#include "refhost/FilePath.h"
#include "refhost/testing/TempDir.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/OutputFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessel {
namespace {

using refhost::testing::TempDir;

namespace fs = std::filesystem;

fs::perms PermissionsOf(const std::string& path) { return fs::status(refhost::PathFromUtf8(path)).permissions(); }

TEST(OutputFile, CommitReplacesTheTargetKeepingItsPermissions)
{
    TempDir folder;
    folder.WriteFile("out.jsonl", "old\n");
    const std::string target = folder.Path() + "/out.jsonl";
    const fs::perms readWriteRead = fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(refhost::PathFromUtf8(target), readWriteRead);
    {
        OutputFile output(target);
        output.Open();
        output.Text() = std::string(3 << 20, 'x'); // more than one block
        output.RecordDone();
        EXPECT_EQ(folder.ReadFile("out.jsonl"), "old\n");
        output.Text() += "end";
        output.Commit();
    }
    EXPECT_EQ(folder.ReadFile("out.jsonl"), std::string(3 << 20, 'x') + "end");
    if (refhost::KeepsPermissionBits()) {
        EXPECT_EQ(PermissionsOf(target), readWriteRead);
    }
}

TEST(OutputFile, WithoutCommitNothingIsLeftAndTheTargetStays)
{
    TempDir folder;
    folder.WriteFile("out.jsonl", "old\n");
    {
        OutputFile output(folder.Path() + "/out.jsonl");
        output.Open();
        output.Text() = std::string(2 << 20, 'x');
        output.RecordDone();
    }
    EXPECT_EQ(folder.ReadFile("out.jsonl"), "old\n");
    {
        OutputFile output(folder.Path() + "/new.jsonl");
        output.Open();
    }
    EXPECT_EQ(folder.ReadFile("new.jsonl"), "");
    EXPECT_FALSE(fs::exists(refhost::PathFromUtf8(folder.Path() + "/new.jsonl")));
}

TEST(OutputFile, DevicesAreWrittenInPlace)
{
    OutputFile output(refhost::NullDevice());
    output.Open();
    output.Text() = "anything";
    EXPECT_NO_THROW(output.Commit());
}

TEST(OutputFile, UnwritablePlacesAreNamed)
{
    TempDir folder;
    for (const std::string& path : {folder.Path() + "/missing/out.jsonl", folder.Path()}) {
        OutputFile output(path);
        try {
            output.Open();
            ADD_FAILURE() << path << " opened";
        } catch (const AppError& error) {
            EXPECT_EQ(error.Status(), ExitJobFailed);
            EXPECT_EQ(std::string(error.what()).rfind("cannot write '" + path + "': ", 0), 0u) << error.what();
        }
    }
}

} // namespace
} // namespace tessel
