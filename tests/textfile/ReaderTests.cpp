// Reading through TextFile: encoding detection, line splitting and the carriage-return rule,
// for every encoding, with the files built here from bytes.

#include "TextFileTesting.h"

#include "textfile/ANSI_TextFileReader.h"
#include "textfile/UTF16BE_TextFileReader.h"
#include "textfile/UTF16LE_TextFileReader.h"
#include "textfile/UTF8_TextFileReader.h"

#include <gtest/gtest.h>

#include <memory>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

struct ReadCase {
    const char* name;
    std::string bytes;
    std::uint32_t flags;
    int bufferSize;
    int encoding; // as detected or named
    std::vector<WString> lines;
};

void PrintTo(const ReadCase& c, std::ostream* os) { *os << c.name; }

const ReadCase kReadCases[] = {
    {"CrLfAndLf", "a\r\nb\n", 0, 0, 1, {WTEXT("a"), WTEXT("b")}},
    {"NoFinalLineFeed", "a\nb", 0, 0, 1, {WTEXT("a"), WTEXT("b")}},
    {"LoneLineFeed", "\n", 0, 0, 1, {WTEXT("")}},
    {"EmptyFile", "", 0, 0, 0, {}},
    {"OneLineWithoutLineFeed", "abc", 0, 0, 1, {WTEXT("abc")}},
    {"LoneCrInsideLineStays", "a\rb\n", 0, 0, 1, {WTEXT("a\rb")}},
    {"CrAsLastByteOfFileIsLost", "abc\r", 0, 0, 1, {WTEXT("abc")}},
    {"OnlyACarriageReturnIsOneEmptyLine", "\r", 0, 0, 1, {WTEXT("")}},
    {"OnlyOneOfTwoCrsIsDropped", "a\r\r\n", 0, 0, 1, {WTEXT("a\r")}},
    {"CrAtEndOfBufferFillIsLost", "abc\rdef\n", 0, 4, 1, {WTEXT("abcdef")}},
    {"CrNotAtEndOfBufferFillStays", "abc\rdef\n", 0, 5, 1, {WTEXT("abc\rdef")}},
    {"CrLfSplitBetweenFillsIsOneLineEnd", "abc\r\ndef", 0, 4, 1, {WTEXT("abc"), WTEXT("def")}},
    {"EmptyLinesKept", "\n\r\n\nx", 0, 0, 1, {WTEXT(""), WTEXT(""), WTEXT(""), WTEXT("x")}},
    {"NulEndsAnsiText", "ab\0cd\nef"s, 0, 0, 1, {WTEXT("ab"), WTEXT("ef")}},
    {"NulFirstGivesEmptyLine", "\0x\ny"s, 0, 0, 1, {WTEXT(""), WTEXT("y")}},
    {"AnsiCodePage1252", "caf\xE9 \x80\x81\n", 0, 0, 1, {WTEXT("caf\u00E9 \u20AC\u0081")}},
    {"Utf16BeWithMark", "\xFE\xFF\0x\0\r\0\n\0y"s, 0, 0, 3, {WTEXT("x"), WTEXT("y")}},
    {"Utf16LeWithMark", "\xFF\xFEx\0\r\0\n\0y\0"s, 0, 0, 2, {WTEXT("x"), WTEXT("y")}},
    {"Utf16LeNonAscii", "\xFF\xFE\xAC\x20\n\0\x3D\xD8\x00\xDE"s, 0, 0, 2, {WTEXT("\u20AC"), WTEXT("\U0001F600")}},
    {"Utf16BeNonAscii", "\xFE\xFF\x20\xAC\0\n\xD8\x3D\xDE\x00"s, 0, 0, 3, {WTEXT("\u20AC"), WTEXT("\U0001F600")}},
    {"Utf16LeUnitWithByte0AIsNoLineFeed", "\xFF\xFE\x0A\x01\x0A\x0A\n\0"s, 0, 0, 2, {WTEXT("\u010A\u0A0A")}},
    {"Utf16BeUnitWithByte0AIsNoLineFeed", "\xFE\xFF\x01\x0A\x0A\x0A\0\n"s, 0, 0, 3, {WTEXT("\u010A\u0A0A")}},
    {"Utf16LeNulEndsText", "\xFF\xFE" "a\0\0\0b\0\n\0c\0"s, 0, 0, 2, {WTEXT("a"), WTEXT("c")}},
    {"Utf16BeNulEndsText", "\xFE\xFF\0a\0\0\0b\0\n\0c"s, 0, 0, 3, {WTEXT("a"), WTEXT("c")}},
    {"Utf16CrAtEndOfBufferFillIsLost", "\xFF\xFE" "a\0\r\0b\0\n\0"s, 0, 4, 2, {WTEXT("ab")}},
    {"Utf16CrLfSplitAcrossOddBuffer", "\xFF\xFE" "a\0\r\0\n\0b\0"s, 0, 3, 2, {WTEXT("a"), WTEXT("b")}},
    {"Utf16OddLengthEndsLastLineAtOddByte", "\xFF\xFE" "a\0\n\0b"s, 0, 0, 2, {WTEXT("a")}},
    {"Utf16OddLengthWithoutLineFeed", "\xFF\xFE" "a\0b"s, 0, 0, 2, {WTEXT("a")}},
    {"Utf16MarkAndOneByte", "\xFF\xFE" "a"s, 0, 0, 2, {}},
    {"Utf16BeOddLength", "\xFE\xFF\0a\0\n\0"s, 0, 0, 3, {WTEXT("a")}},
    {"Utf8MarkOnly", "\xEF\xBB\xBF", 0, 0, 4, {}},
    {"Utf16LeMarkOnly", "\xFF\xFE", 0, 0, 2, {}},
    {"Utf16BeMarkOnly", "\xFE\xFF", 0, 0, 3, {}},
    {"Utf8WithMark", "\xEF\xBB\xBF" "caf\xC3\xA9\r\n", 0, 0, 4, {WTEXT("caf\u00E9")}},
    {"Utf8EmptyLinesKept", "\xEF\xBB\xBF" "a\n\nb", 0, 0, 4, {WTEXT("a"), WTEXT(""), WTEXT("b")}},
    {"Utf8CutSequenceRepeatsNothingFromTheLineBefore", "\xEF\xBB\xBF" "a\n\xC3", 0, 0, 4, {WTEXT("a"), WTEXT("\uFFFD")}},
    {"FfThenOtherByteIsAnsiFromByteZero", "\xFF\x41", 0, 0, 1, {WTEXT("\u00FFA")}},
    {"SingleFfIsAnsi", "\xFF", 0, 0, 1, {WTEXT("\u00FF")}},
    {"IncompleteUtf8MarkIsAnsi", "\xEF\xBB", 0, 0, 1, {WTEXT("\u00EF\u00BB")}},
    {"BrokenUtf8MarkIsAnsi", "\xEF\xBB\x41\n", 0, 0, 1, {WTEXT("\u00EF\u00BBA")}},
    {"Utf8WithoutMarkIsReadAsAnsi", "caf\xC3\xA9", 0, 0, 1, {WTEXT("caf\u00C3\u00A9")}},
    {"Utf16WithoutMarkIsReadAsAnsi", "a\0\n\0"s, 0, 0, 1, {WTEXT("a"), WTEXT("")}},
    {"EncodingAbove4Detects", "\xFF\xFEx\0"s, 7, 0, 2, {WTEXT("x")}},
    {"NamedAnsiDeliversUtf8Mark", "\xEF\xBB\xBF" "a", 1, 0, 1, {WTEXT("\u00EF\u00BB\u00BFa")}},
    {"NamedUtf8SkipsItsMark", "\xEF\xBB\xBF" "a", 4, 0, 4, {WTEXT("a")}},
    {"NamedUtf8WithoutMarkFromByteZero", "a\nb", 4, 0, 4, {WTEXT("a"), WTEXT("b")}},
    {"NamedUtf8PartialMarkReadFromByteZero", "\xEF\xBB\x41", 4, 0, 4, {WTEXT("\uFEC1")}},
    {"NamedUtf8NoMarkCheckKeepsMark", "\xEF\xBB\xBF" "a", 4 | 0x200, 0, 4, {WTEXT("\uFEFFa")}},
    {"NamedUtf16LeWithoutMark", "a\0\n\0b\0"s, 2, 0, 2, {WTEXT("a"), WTEXT("b")}},
    {"NamedUtf16LeNoMarkCheckKeepsMark", "\xFF\xFE" "a\0"s, 2 | 0x200, 0, 2, {WTEXT("\uFEFFa")}},
    {"NamedUtf16LeOverOtherMark", "\xFE\xFF" "a\0"s, 2, 0, 2, {WTEXT("\uFFFEa")}},
    {"NamedUtf16BeSkipsItsMark", "\xFE\xFF\0a"s, 3, 0, 3, {WTEXT("a")}},
    {"NamedUtf16BeEmptyFile", "", 3, 0, 3, {}},
};

class ReadCaseTest : public testing::TestWithParam<ReadCase> {};

TEST_P(ReadCaseTest, DeliversTheLinesThenTheEnd)
{
    const ReadCase& c = GetParam();
    ScratchFolder folder;
    const ReadResult result = ReadAll(folder.Write("case.txt", c.bytes), c.flags, c.bufferSize, 1252);
    ASSERT_EQ(result.openResult, TextFileResult::Ok);
    EXPECT_EQ(result.encoding, c.encoding);
    EXPECT_EQ(result.lines, c.lines);
    EXPECT_EQ(result.endResult, TextFileResult::EndOfFile);
    EXPECT_EQ(result.countResult, TextFileResult::Ok);
    EXPECT_EQ(result.counted, c.lines.size());
}

INSTANTIATE_TEST_SUITE_P(Reader, ReadCaseTest, testing::ValuesIn(kReadCases),
                         [](const testing::TestParamInfo<ReadCase>& info) { return info.param.name; });

TEST(Reader, EndOfFileIsReportedAgainAndAgain)
{
    ScratchFolder folder;
    TextFile file;
    ASSERT_EQ(file.Open(folder.Write("a.txt", "a\n"), TextFileMode::Read, 0), 0);
    WString line = WTEXT("stale");
    bool usedDefault = true;
    EXPECT_EQ(file.ReadLine(&usedDefault, line), 0);
    EXPECT_FALSE(usedDefault);
    EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    EXPECT_EQ(line, WTEXT(""));
    EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    EXPECT_FALSE(file.ReadFailed());
}

TEST(Reader, RawDeliversBytesUnconverted)
{
    ScratchFolder folder;
    TextFile file;
    file.SetCodePage(1250);
    ASSERT_EQ(file.Open(folder.Write("a.txt", "\x80\x8A\xE9\n\x80"), TextFileMode::Read, 1), 0);
    WString line;
    file.SetRaw(true);
    EXPECT_EQ(file.ReadLine(nullptr, line), 0);
    EXPECT_EQ(line, WTEXT("\u0080\u008A\u00E9"));
    file.SetRaw(false);
    EXPECT_EQ(file.ReadLine(nullptr, line), 0);
    EXPECT_EQ(line, WTEXT("\u20AC"));
}

TEST(Reader, CodePageCanChangeBetweenLines)
{
    ScratchFolder folder;
    TextFile file;
    ASSERT_EQ(file.Open(folder.Write("a.txt", "\x8A\n\x8A\n\x8A\n"), TextFileMode::Read, 1), 0);
    WString line;
    file.SetCodePage(1252);
    file.ReadLine(nullptr, line);
    EXPECT_EQ(line, WTEXT("\u0160"));
    file.SetCodePage(1251);
    file.ReadLine(nullptr, line);
    EXPECT_EQ(line, WTEXT("\u0409"));
    file.SetCodePage(65001);
    file.ReadLine(nullptr, line);
    EXPECT_EQ(line, WTEXT("\uFFFD"));
}

TEST(Reader, ObjectCanBeOpenedAgainAfterClose)
{
    ScratchFolder folder;
    TextFile file;
    WString line;
    ASSERT_EQ(file.Open(folder.Write("a.txt", "a"), TextFileMode::Read, 0), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    ASSERT_EQ(file.Open(folder.Write("b.txt", "\xFF\xFE" "b\0"s), TextFileMode::Read, 0), 0);
    EXPECT_EQ(file.Encoding(), 2);
    EXPECT_EQ(file.FileName(), folder.WidePath("b.txt"));
    EXPECT_EQ(file.ReadLine(nullptr, line), 0);
    EXPECT_EQ(line, WTEXT("b"));
    // Opening an open object closes it first.
    ASSERT_EQ(file.Open(folder.WidePath("a.txt"), TextFileMode::Read, 0), 0);
    EXPECT_EQ(file.ReadLine(nullptr, line), 0);
    EXPECT_EQ(line, WTEXT("a"));
}

TEST(Reader, CountLinesCountsWhatIsLeft)
{
    ScratchFolder folder;
    TextFile file;
    ASSERT_EQ(file.Open(folder.Write("a.txt", "a\nb\nc\nd"), TextFileMode::Read, 0, 3), 0);
    WString line;
    ASSERT_EQ(file.ReadLine(nullptr, line), 0);
    std::uint64_t lines = 99;
    EXPECT_EQ(file.CountLines(&lines), 0);
    EXPECT_EQ(lines, 3u);
    EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    TextFile closed;
    EXPECT_EQ(closed.CountLines(&lines), -1);
    EXPECT_EQ(lines, 0u);
}

// The readers' character operation, which TextFile itself does not use.
struct CharCase {
    const char* name;
    std::string bytes;
    int encoding;
    std::vector<int> results; // characters, then the closing negative result
};

void PrintTo(const CharCase& c, std::ostream* os) { *os << c.name; }

const CharCase kCharCases[] = {
    {"AnsiBytesUnconvertedCrSkipped", "a\r\n\xE9", 1, {'a', '\n', 0xE9, -1}},
    {"Utf8WholeCodePoints", "\xC3\xA9\r\xF0\x9F\x98\x80" "a", 4, {0xE9, 0x1F600, 'a', -1}},
    {"Utf8CrSkippedInsideSequence", "\xC3\r\xA9", 4, {0xE9, -1}},
    {"Utf8LeadFromF8IsReplacement", "\xF8\xFF" "a", 4, {0xFFFD, 0xFFFD, 'a', -1}},
    {"Utf8NoLimitAbove10FFFF", "\xF7\xBF\xBF\xBF", 4, {0x1FFFFF, -1}},
    {"Utf8CutSequenceReportsTheEnd", "a\xE2\x82", 4, {'a', -1}},
    {"Utf16LeUnitsCrSkipped", "a\0\r\0\x3D\xD8"s, 2, {'a', 0xD83D, -1}},
    {"Utf16BeUnitsSwappedCrSkipped", "\0a\0\r\xD8\x3D"s, 3, {'a', 0xD83D, -1}},
    {"Utf16OddByteIsNeverACharacter", "a\0b"s, 2, {'a', -1}},
};

class CharCaseTest : public testing::TestWithParam<CharCase> {};

std::unique_ptr<TextFileReader> MakeReader(int encoding, const WString* name, Platform::FileHandle file, int size)
{
    switch (encoding) {
    case 1: return std::make_unique<ANSI_TextFileReader>(nullptr, name, file, size);
    case 2: return std::make_unique<UTF16LE_TextFileReader>(name, file, size);
    case 3: return std::make_unique<UTF16BE_TextFileReader>(name, file, size);
    case 4: return std::make_unique<UTF8_TextFileReader>(name, file, size);
    default: return std::make_unique<TextFileReader>(name, file, size);
    }
}

TEST_P(CharCaseTest, ReadsCharactersThenTheEnd)
{
    const CharCase& c = GetParam();
    ScratchFolder folder;
    const WString path = folder.Write("chars.txt", c.bytes);
    for (int bufferSize : {1, 2, 3, 0}) {
        const Platform::FileHandle handle =
            Platform::OpenFile(path.c_str(), Platform::FileAccess::Read, Platform::FileCreation::OpenExisting);
        ASSERT_NE(handle, Platform::kInvalidFile);
        auto reader = MakeReader(c.encoding, &path, handle, bufferSize);
        std::vector<int> results;
        for (int r = 0; r >= 0;)
            results.push_back(r = reader->ReadChar());
        EXPECT_EQ(results, c.results) << "buffer size " << bufferSize;
        Platform::CloseFile(handle);
    }
}

INSTANTIATE_TEST_SUITE_P(Reader, CharCaseTest, testing::ValuesIn(kCharCases),
                         [](const testing::TestParamInfo<CharCase>& info) { return info.param.name; });

TEST(Reader, BareReaderReportsTheEndForEverything)
{
    const WString name = WTEXT("none");
    TextFileReader reader(&name, Platform::kInvalidFile, -1);
    WString line = WTEXT("x");
    std::uint64_t lines = 5;
    EXPECT_EQ(reader.ReadChar(), -1);
    EXPECT_EQ(reader.ReadLine(line, 0), -1);
    EXPECT_EQ(line, WTEXT(""));
    EXPECT_EQ(reader.CountLines(lines), 0);
    EXPECT_EQ(lines, 0u);
}

// Lines are converted in blocks where that is possible; a NUL or a byte from 0x80 may sit
// anywhere in a block, and pieces may end anywhere.
TEST(Reader, NulOrNonAsciiByteAnywhereInTheLine)
{
    ScratchFolder folder;
    const std::string text = "P1234567 456789.123 5123456.789 301.250 CODE";
    for (std::size_t at = 0; at <= text.size(); ++at) {
        std::string ansi = text;
        ansi.insert(at, 1, '\0');
        std::string utf16;
        for (char c : ansi)
            utf16 += std::string{c, '\0'};
        const std::pair<std::string, std::uint32_t> files[] = {
            {ansi + "\nnext", 1}, {"\xEF\xBB\xBF" + ansi + "\nnext", 0}, {"\xFF\xFE" + utf16 + "\n\0n\0"s, 0}};
        for (const auto& [bytes, flags] : files) {
            const WString path = folder.Write("zero.txt", bytes); // not "nul.txt": a device on Windows
            for (int bufferSize : {0, 5, 16}) {
                const ReadResult result = ReadAll(path, flags, bufferSize);
                ASSERT_EQ(result.lines.size(), 2u);
                EXPECT_EQ(result.lines[0], Latin1(text.substr(0, at))) << "NUL at " << at << ", buffer " << bufferSize;
            }
        }
        ansi = text;
        ansi.insert(at, "\xE9");
        std::string utf8 = text;
        utf8.insert(at, "\xC3\xA9");
        EXPECT_EQ(ReadAll(folder.Write("a.txt", ansi), 1, 0, 1252).lines, std::vector<WString>{Latin1(ansi)}) << at;
        EXPECT_EQ(ReadAll(folder.Write("u.txt", utf8), 4).lines, std::vector<WString>{Latin1(ansi)}) << at;
    }
}

} // namespace
