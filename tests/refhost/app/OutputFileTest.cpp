// Output that replaces its target only when complete.

#include "refhost/app/AppError.h"
#include "refhost/app/OutputFile.h"
#include "refhost/testing/TempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tessel {
namespace {

using refhost::testing::TempDir;

mode_t ModeOf(const std::string& path)
{
    struct stat status;
    stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

TEST(OutputFile, CommitReplacesTheTargetKeepingItsPermissions)
{
    TempDir folder;
    folder.WriteFile("out.jsonl", "old\n");
    const std::string target = folder.Path() + "/out.jsonl";
    chmod(target.c_str(), 0640);
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
    EXPECT_EQ(ModeOf(target), 0640u);
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
    struct stat status;
    EXPECT_NE(stat((folder.Path() + "/new.jsonl").c_str(), &status), 0);
}

TEST(OutputFile, DevicesAreWrittenInPlace)
{
    OutputFile output("/dev/null");
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
