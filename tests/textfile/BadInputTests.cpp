// Input nobody should write but somebody will: huge lines, binary garbage, malformed UTF-8,
// and the external corpora. The layer keeps to its result codes and never reads or writes
// out of bounds (the sanitizer build runs these too).

#include "TextFileTesting.h"

#include "refhost/FilePath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

constexpr std::size_t kHugeLine = 100u * 1024 * 1024;

// A line longer than any buffer is assembled piece by piece in linear time (a quadratic
// assembly would not finish here), in ANSI and in UTF-16.
TEST(BadInput, HundredMegabyteLines)
{
    ScratchFolder folder;
    for (const bool utf16 : {false, true}) {
        std::string bytes(kHugeLine, utf16 ? '\0' : 'x');
        for (std::size_t i = 0; utf16 && i < bytes.size(); i += 2)
            bytes[i] = 'y';
        bytes = utf16 ? "\xFF\xFE" + bytes + "\n\0e\0"s : bytes + "\r\ne";
        const WString path = folder.Write("huge.txt", bytes);
        bytes = std::string();
        TextFile file;
        ASSERT_EQ(file.Open(path, TextFileMode::Read, 0), 0);
        WString line;
        ASSERT_EQ(file.ReadLine(nullptr, line), 0);
        EXPECT_EQ(line.size(), utf16 ? kHugeLine / 2 : kHugeLine);
        EXPECT_EQ(line.find_first_not_of(utf16 ? WTEXT('y') : WTEXT('x')), WString::npos);
        ASSERT_EQ(file.ReadLine(nullptr, line), 0);
        EXPECT_EQ(line, WTEXT("e"));
        EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    }
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
        EXPECT_EQ(result.lines[0], WTEXT("UTF-8 decoder capability and stress test"));
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

// Marks decide; a UTF-32LE mark begins with the UTF-16LE one, and its zero units end every
// line's text. Unmarked UTF-16 is ANSI unless named.
TEST(BadInput, CorpusFilesAreDetectedByTheirMarks)
{
    REQUIRE_TESTDATA();
    const std::string base = TestDataFolder() + "/uchardet/";
    const struct {
        const char* file;
        int encoding;
        bool titled; // the first line begins "UTF-16"
    } cases[] = {{"fr/utf-16.be", 3, true}, {"ko/utf-16.le", 2, true}, {"fr/utf-32.le", 2, false},
                 {"ja/utf-16le.txt", 1, false}};
    for (const auto& c : cases) {
        const ReadResult result = ReadAll(FromUtf8(base + c.file));
        EXPECT_EQ(result.encoding, c.encoding) << c.file;
        EXPECT_EQ(result.counted, result.lines.size()) << c.file;
        ASSERT_FALSE(result.lines.empty()) << c.file;
        if (c.titled) {
            EXPECT_EQ(result.lines[0].substr(0, 6), WTEXT("UTF-16")) << c.file;
        }
    }
    const ReadResult le = ReadAll(FromUtf8(base + "ja/utf-16le.txt"), TextEncoding::Utf16LE);
    ASSERT_FALSE(le.lines.empty());
    EXPECT_EQ(le.lines, ReadAll(FromUtf8(base + "ja/utf-16be.txt"), TextEncoding::Utf16BE).lines);
}

void CollectFiles(const std::string& folder, std::vector<std::string>& files)
{
    std::error_code error;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(refhost::PathFromUtf8(folder), error)) {
        if (entry.is_regular_file(error))
            files.push_back(refhost::PathToUtf8(entry.path()));
    }
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
