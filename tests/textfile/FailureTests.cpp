// Failures: files that cannot be opened, and open, read and write failures injected through
// the platform layer, each with the result code the callers rely on.

#include "TextFileTesting.h"

#include "refhost/Environment.h"
#include "refhost/FilePath.h"
#include "textfile/UTF8_TextFileReader.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

class Failures : public testing::Test {
protected:
    void TearDown() override { Platform::Faults::ClearFaults(); }
    ScratchFolder folder_;
};

TEST_F(Failures, FilesThatCannotBeOpenedLeaveTheObjectClosed)
{
    using namespace system_error;
    std::filesystem::create_directory(refhost::PathFromUtf8(folder_.Path("dir")));
    folder_.Write("secret.txt", "x");
    std::filesystem::permissions(refhost::PathFromUtf8(folder_.Path("secret.txt")), std::filesystem::perms::none);
    const struct {
        const char* name;
        int mode;
        int error;
        bool denied;
    } cases[] = {{"missing.txt", 1, kMissingFile, false}, {"no/such.txt", 2, kMissingFolder, false},
                 {"dir", 1, kFolderAsFile, false},        {"dir", 2, kFolderAsFile, false},
                 {"dir", 3, kFolderAsFile, false},        {"secret.txt", 1, kAccessDenied, true}};
    for (const auto& c : cases) {
        if (c.denied && refhost::ReadsEveryFile())
            continue; // the injected failures below cover this path
        TextFile file;
        EXPECT_EQ(file.Open(folder_.WidePath(c.name), c.mode, 1), -2) << c.name << ", mode " << c.mode;
        EXPECT_EQ(Platform::LastError(), c.error) << c.name << ", mode " << c.mode;
        EXPECT_FALSE(file.IsOpen());
        WString line;
        EXPECT_EQ(file.ReadLine(nullptr, line), -1);
        EXPECT_EQ(file.Close(), 0);
    }
    TextFile file;
    EXPECT_EQ(file.Open(WTEXT(""), TextFileMode::Read, 0), -2);
    EXPECT_EQ(file.Open(static_cast<const WChar*>(nullptr), TextFileMode::Write, 0), -2);
}

TEST_F(Failures, InjectedOpenFailure)
{
    const WString path = folder_.Write("a.txt", "a");
    Platform::Faults::FailOpens(2, 1);
    TextFile file;
    EXPECT_EQ(file.Open(path, TextFileMode::Read, 0), 0);
    EXPECT_EQ(file.Open(path, TextFileMode::Read, 0), -2);
    EXPECT_EQ(Platform::LastError(), system_error::kInjectedIoError);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Open(folder_.WidePath("new.txt"), TextFileMode::Write, 0), -2);
    EXPECT_EQ(file.Open(path, TextFileMode::Read, 0), 0);
}

// A read failure while the encoding is detected fails the open, and the object stays closed.
TEST_F(Failures, ReadFailureDuringDetection)
{
    struct Case {
        std::string bytes;
        std::uint32_t flags;
        int goodReads;
    };
    const Case cases[] = {
        {"abc", 0, 0},                 // first byte
        {"\xFF\xFE" "a\0"s, 0, 1},     // second byte of a mark
        {"\xEF\xBB\xBF" "a", 0, 2},    // third byte of a mark
        {"\xEF\xBB\xBF" "a", 4, 1},    // the named encoding's mark
        {"\xFE\xFF\0a"s, 3, 0},
    };
    for (const Case& c : cases) {
        const WString path = folder_.Write("d.txt", c.bytes);
        Platform::Faults::FailReads(1, c.goodReads);
        TextFile file;
        EXPECT_EQ(file.Open(path, TextFileMode::Read, c.flags), -2) << c.goodReads;
        EXPECT_FALSE(file.IsOpen());
        Platform::Faults::ClearFaults();
    }
}

// Reading lines, a failed fill with nothing gathered ends the file (-1); text gathered
// before the failure is delivered as a line.
TEST_F(Failures, ReadFailureWhileReadingLines)
{
    for (std::uint32_t encoding : {1u, 2u, 4u}) {
        const std::string bytes = encoding == 2 ? "a\0b\0\n\0c\0d\0"s : "ab\ncd"s;
        const WString path = folder_.Write("r.txt", bytes);
        TextFile file;
        const int bufferSize = encoding == 2 ? 2 : 1;
        ASSERT_EQ(file.Open(path, TextFileMode::Read, encoding | TextFileFlags::NoMarkCheck, bufferSize), 0);
        WString line;
        Platform::Faults::FailReads(1, 1);
        EXPECT_EQ(file.ReadLine(nullptr, line), 0) << "encoding " << encoding;
        EXPECT_EQ(line, WTEXT("a"));
        EXPECT_TRUE(file.ReadFailed());
        Platform::Faults::FailReads(1);
        EXPECT_EQ(file.ReadLine(nullptr, line), -1);
        EXPECT_EQ(line, WTEXT(""));
        // The failure is not sticky: the next read goes on where the file stands.
        EXPECT_EQ(file.ReadLine(nullptr, line), 0);
        EXPECT_EQ(line, WTEXT("b"));
    }
}

TEST_F(Failures, ReadFailureWhileCountingLines)
{
    const WString path = folder_.Write("c.txt", "a\nb\nc\nd\n");
    TextFile file;
    ASSERT_EQ(file.Open(path, TextFileMode::Read, 1, 4), 0);
    Platform::Faults::FailReads(1, 1);
    std::uint64_t lines = 0;
    EXPECT_EQ(file.CountLines(&lines), -2);
    EXPECT_EQ(lines, 2u);
    EXPECT_TRUE(file.ReadFailed());
}

TEST_F(Failures, ReadFailureReadingCharacters)
{
    const WString path = folder_.Write("c.txt", "ab");
    const Platform::FileHandle handle =
        Platform::OpenFile(path.c_str(), Platform::FileAccess::Read, Platform::FileCreation::OpenExisting);
    ASSERT_NE(handle, Platform::kInvalidFile);
    UTF8_TextFileReader reader(&path, handle, 1);
    Platform::Faults::FailReads(1, 1);
    EXPECT_EQ(reader.ReadChar(), 'a');
    EXPECT_EQ(reader.ReadChar(), -2);
    EXPECT_EQ(Platform::LastError(), system_error::kInjectedIoError);
    EXPECT_EQ(reader.ReadChar(), 'b');
    EXPECT_EQ(reader.ReadChar(), -1);
    Platform::CloseFile(handle);
}

// A full disk: the write that crosses the limit fails, and Close reports it too.
TEST_F(Failures, WriteFailureIsReportedByTheWriteAndByClose)
{
    TextFile file;
    ASSERT_EQ(file.Open(folder_.WidePath("w.txt"), TextFileMode::Write, 4, 4), 0);
    Platform::Faults::FailWritesAfter(10);
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("0123")), 0);
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("456789abcdef")), -2);
    EXPECT_EQ(Platform::LastError(), system_error::kDiskFull);
    EXPECT_EQ(file.Close(), -2);
    EXPECT_EQ(ReadBytes(folder_.Path("w.txt")), "\xEF\xBB\xBF" "0123456");
}

TEST_F(Failures, WriteFailureAtCloseOnly)
{
    TextFile file;
    ASSERT_EQ(file.Open(folder_.WidePath("w.txt"), TextFileMode::Write, 1), 0);
    Platform::Faults::FailWritesAfter(2);
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("abc")), 0);
    EXPECT_EQ(file.Close(), -2);
    EXPECT_EQ(ReadBytes(folder_.Path("w.txt")), "ab");
}

TEST_F(Failures, MarkThatCannotBeWrittenIsTriedAgain)
{
    TextFile file;
    ASSERT_EQ(file.Open(folder_.WidePath("w.txt"), TextFileMode::Write, 2, 1), 0);
    Platform::Faults::FailWritesAfter(0);
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("a")), -2);
    Platform::Faults::ClearFaults();
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("a")), 0);
    EXPECT_EQ(file.Close(), -2); // the earlier failure is not forgotten
    EXPECT_EQ(ReadBytes(folder_.Path("w.txt")), "\xFF\xFE" "a\0"s);
}

TEST_F(Failures, WriteCharFailure)
{
    TextFile file;
    ASSERT_EQ(file.Open(folder_.WidePath("w.txt"), TextFileMode::Write, 1, 1), 0);
    Platform::Faults::FailWritesAfter(1);
    EXPECT_EQ(file.WriteChar(nullptr, 'a'), 0);
    EXPECT_EQ(file.WriteChar(nullptr, 'b'), -2);
    EXPECT_EQ(file.WriteChar(nullptr, '\n'), -2);
}

} // namespace
