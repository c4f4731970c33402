// Input nobody should write but somebody will: huge lines, binary garbage, malformed UTF-8,
// and the external corpora. The layer keeps to its result codes and never reads or writes
// out of bounds (the sanitizer build runs these too).

#include "TextFileTesting.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <random>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

constexpr std::size_t kHugeLine = 100u * 1024 * 1024;

// Reads the one huge line of path (then maybe a short "end" line): all of it, nothing else.
void ExpectHugeLine(const WString& path, std::size_t length, WChar unit, bool endLine)
{
    TextFile file;
    ASSERT_EQ(file.Open(path, TextFileMode::Read, 0), 0);
    WString line;
    ASSERT_EQ(file.ReadLine(nullptr, line), 0);
    EXPECT_EQ(line.size(), length);
    EXPECT_EQ(line.find_first_not_of(unit), WString::npos);
    if (endLine) {
        ASSERT_EQ(file.ReadLine(nullptr, line), 0);
        EXPECT_EQ(line, u"end");
    }
    EXPECT_EQ(file.ReadLine(nullptr, line), -1);
}

// A line longer than any buffer is assembled piece by piece in linear time (a quadratic
// assembly would not finish here).
TEST(BadInput, HundredMegabyteAnsiLine)
{
    ScratchFolder folder;
    std::string bytes(kHugeLine, 'x');
    bytes += "\r\nend";
    const WString path = folder.Write("huge.txt", bytes);
    bytes = std::string();
    ExpectHugeLine(path, kHugeLine, u'x', true);
}

TEST(BadInput, HundredMegabyteUtf16Line)
{
    ScratchFolder folder;
    std::string bytes(kHugeLine + 2, '\0');
    bytes[0] = '\xFF';
    bytes[1] = '\xFE';
    for (std::size_t i = 2; i < bytes.size(); i += 2)
        bytes[i] = 'y';
    const WString path = folder.Write("huge16.txt", bytes);
    bytes = std::string();
    ExpectHugeLine(path, kHugeLine / 2, u'y', false);
}

TEST(BadInput, BinaryGarbageInEveryEncoding)
{
    std::mt19937 random(4242);
    std::string bytes(256 * 1024, '\0');
    for (char& b : bytes)
        b = static_cast<char>(random());
    ScratchFolder folder;
    const WString path = folder.Write("garbage.bin", bytes);
    for (std::uint32_t flags : {0u, 1u, 2u, 3u, 4u}) {
        for (int bufferSize : {1, 61, 0}) {
            const ReadResult result = ReadAll(path, flags, bufferSize);
            ASSERT_EQ(result.openResult, 0);
            EXPECT_EQ(result.endResult, -1);
            EXPECT_EQ(result.counted, result.lines.size()) << "flags " << flags << ", buffer size " << bufferSize;
            EXPECT_GT(result.lines.size(), 0u);
        }
    }
}

TEST(BadInput, KuhnUtf8StressTestReadsEveryLine)
{
    REQUIRE_TESTDATA();
    const std::string path = TestDataFolder() + "/kuhn-utf8/UTF-8-test.txt";
    const std::string bytes = ReadBytes(path);
    ASSERT_FALSE(bytes.empty());
    const auto lineFeeds = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
    for (int bufferSize : {1, 7, 0}) {
        const ReadResult result = ReadAll(FromUtf8(path), TextEncoding::Utf8, bufferSize);
        EXPECT_EQ(result.lines.size(), lineFeeds + (bytes.back() == '\n' ? 0 : 1));
        EXPECT_EQ(result.counted, result.lines.size());
        EXPECT_EQ(result.lines[0], u"UTF-8 decoder capability and stress test");
    }
}

TEST(BadInput, KuhnUtf8DemoDecodesLikeAStrictDecoder)
{
    REQUIRE_TESTDATA();
    const std::string path = TestDataFolder() + "/kuhn-utf8/UTF-8-demo.txt";
    const std::string bytes = ReadBytes(path);
    std::vector<WString> expected;
    std::size_t start = 0;
    for (std::size_t end; (end = bytes.find('\n', start)) != std::string::npos; start = end + 1)
        expected.push_back(FromUtf8(bytes.substr(start, end - start)));
    if (start < bytes.size())
        expected.push_back(FromUtf8(bytes.substr(start)));
    const ReadResult result = ReadAll(FromUtf8(path), TextEncoding::Utf8);
    EXPECT_EQ(result.lines, expected);
}

TEST(BadInput, MarkedCorpusFilesAreDetected)
{
    REQUIRE_TESTDATA();
    const std::string base = TestDataFolder() + "/uchardet/";
    const ReadResult be = ReadAll(FromUtf8(base + "fr/utf-16.be"));
    EXPECT_EQ(be.encoding, 3);
    ASSERT_FALSE(be.lines.empty());
    EXPECT_EQ(be.lines[0].substr(0, 6), u"UTF-16");
    const ReadResult le = ReadAll(FromUtf8(base + "ko/utf-16.le"));
    EXPECT_EQ(le.encoding, 2);
    ASSERT_FALSE(le.lines.empty());
    EXPECT_EQ(le.lines[0].substr(0, 6), u"UTF-16");
    // A UTF-32LE mark begins with the UTF-16LE one; its zero units end every line's text.
    const ReadResult utf32 = ReadAll(FromUtf8(base + "fr/utf-32.le"));
    EXPECT_EQ(utf32.encoding, 2);
    EXPECT_EQ(utf32.counted, utf32.lines.size());
}

TEST(BadInput, UnmarkedUtf16IsAnsiUnlessNamed)
{
    REQUIRE_TESTDATA();
    const std::string base = TestDataFolder() + "/uchardet/ja/";
    EXPECT_EQ(ReadAll(FromUtf8(base + "utf-16le.txt")).encoding, 1);
    const ReadResult le = ReadAll(FromUtf8(base + "utf-16le.txt"), TextEncoding::Utf16LE);
    const ReadResult be = ReadAll(FromUtf8(base + "utf-16be.txt"), TextEncoding::Utf16BE);
    ASSERT_FALSE(le.lines.empty());
    EXPECT_EQ(le.lines, be.lines);
}

void CollectFiles(const std::string& folder, std::vector<std::string>& files)
{
    DIR* dir = ::opendir(folder.c_str());
    if (!dir)
        return;
    while (const dirent* entry = ::readdir(dir)) {
        const std::string name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const std::string path = folder + "/" + name;
        struct stat info;
        if (::stat(path.c_str(), &info) != 0)
            continue;
        if (S_ISDIR(info.st_mode))
            CollectFiles(path, files);
        else if (S_ISREG(info.st_mode))
            files.push_back(path);
    }
    ::closedir(dir);
}

// Every corpus file (texts, XML, CSV, a zip) in every encoding: reading and counting agree.
TEST(BadInput, EveryCorpusFileInEveryEncoding)
{
    REQUIRE_TESTDATA();
    std::vector<std::string> files;
    CollectFiles(TestDataFolder(), files);
    ASSERT_GT(files.size(), 100u);
    for (const std::string& file : files) {
        const WString path = FromUtf8(file);
        for (std::uint32_t flags : {0u, 1u, 2u, 3u, 4u}) {
            const ReadResult result = ReadAll(path, flags, 61);
            ASSERT_EQ(result.openResult, 0) << file;
            ASSERT_EQ(result.counted, result.lines.size()) << file << ", flags " << flags;
        }
    }
}

} // namespace
