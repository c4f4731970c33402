// Writing through TextFile: the bytes each encoding puts on disk, line ends, lazy marks,
// appending, and the UTF-8 writer's kept quirks.

#include "TextFileTesting.h"

#include "platform/Platform.h"
#include "refhost/Environment.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>

using namespace std::string_literals;
using namespace textfile_testing;

namespace {

// One write: a string, or a character when text is empty.
struct Write {
    WString text;
    std::uint32_t character = 0;
};

struct WriteCase {
    const char* name;
    std::uint32_t flags;
    std::vector<Write> writes;
    std::string bytes;
};

void PrintTo(const WriteCase& c, std::ostream* os) { *os << c.name; }

Write Text(const WString& text) { return {text, 0}; }
Write Char(std::uint32_t character) { return {WString(), character}; }

const WriteCase kWriteCases[] = {
    {"Utf8MarkAndCrLf", 4, {Text(WTEXT("a\nb"))}, "\xEF\xBB\xBF" "a\r\nb"},
    {"Utf8RawLineFeeds", 4 | 0x100, {Text(WTEXT("a\nb"))}, "\xEF\xBB\xBF" "a\nb"},
    {"AnsiNoMark", 1, {Text(WTEXT("a\nb"))}, "a\r\nb"},
    {"EncodingZeroWritesAnsi", 0, {Text(WTEXT("caf\u00E9\n"))}, "caf\xE9\r\n"},
    {"Utf16LeMarkAndUnits", 2, {Text(WTEXT("a\nb"))}, "\xFF\xFE" "a\0\r\0\n\0b\0"s},
    {"Utf16BeMarkAndUnits", 3, {Text(WTEXT("a\nb"))}, "\xFE\xFF\0a\0\r\0\n\0b"s},
    {"LineFeedsOnly", 1, {Text(WTEXT("\n\n"))}, "\r\n\r\n"},
    {"LeadingLineFeed", 1, {Text(WTEXT("\nx"))}, "\r\nx"},
    {"ExistingCrKeptBeforeAddedCr", 1, {Text(WTEXT("a\r\n"))}, "a\r\r\n"},
    {"CharLineFeedBecomesCrLf", 1, {Text(WTEXT("a")), Char('\n'), Text(WTEXT("b"))}, "a\r\nb"},
    {"CharLineFeedRaw", 1 | 0x100, {Text(WTEXT("a")), Char('\n')}, "a\n"},
    {"EmptyStringWritesOnlyTheMark", 4, {Text(WTEXT(""))}, "\xEF\xBB\xBF"},
    {"NothingWrittenNoUtf8Mark", 4, {}, ""},
    {"NothingWrittenNoUtf16Mark", 3, {}, ""},
    {"StringStopsAtNul", 1, {Text(WString(WTEXT("ab\0cd"), 5))}, "ab"},
    {"AnsiCodePageMapping", 1, {Text(WTEXT("\u20AC\u0160\u0081"))}, "\x80\x8A\x81"},
    {"AnsiUnmappableBecomesQuestionMark", 1, {Text(WTEXT("\u0100\U0001F600x"))}, "??x"},
    {"AnsiCharTakesLow16Bits", 1, {Char(0x100E9)}, "\xE9"},
    {"Utf8Char7F", 4, {Char(0x7F)}, "\xEF\xBB\xBF\x7F"},
    {"Utf8Char80", 4, {Char(0x80)}, "\xEF\xBB\xBF\xC2\x80"},
    {"Utf8Char7FF", 4, {Char(0x7FF)}, "\xEF\xBB\xBF\xDF\xBF"},
    {"Utf8Char800", 4, {Char(0x800)}, "\xEF\xBB\xBF\xE0\xA0\x80"},
    {"Utf8CharFFFE", 4, {Char(0xFFFE)}, "\xEF\xBB\xBF\xEF\xBF\xBE"},
    {"Utf8CharFFFFTakesFourBytes", 4, {Char(0xFFFF)}, "\xEF\xBB\xBF\xF0\x8F\xBF\xBF"},
    {"Utf8Char10000", 4, {Char(0x10000)}, "\xEF\xBB\xBF\xF0\x90\x80\x80"},
    {"Utf8Char10FFFF", 4, {Char(0x10FFFF)}, "\xEF\xBB\xBF\xF4\x8F\xBF\xBF"},
    {"Utf8StringFFFFTakesFourBytes", 4, {Text(WTEXT("\uFFFF"))}, "\xEF\xBB\xBF\xF0\x8F\xBF\xBF"},
    {"Utf8SurrogatePairCombined", 4, {Text(WTEXT("\U0001F600"))}, "\xEF\xBB\xBF\xF0\x9F\x98\x80"},
    {"Utf8LastSurrogatePair", 4, {Text(WTEXT("\U0010FFFF"))}, "\xEF\xBB\xBF\xF4\x8F\xBF\xBF"},
    {"Utf8HighSurrogateAtEndIsReplacement", 4, {Text(WTEXT("a\xD83D"))}, "\xEF\xBB\xBF" "a\xEF\xBF\xBD"},
    {"Utf8HighSurrogateSwallowsNextUnit", 4, {Text(WTEXT("\xD83Dxy"))}, "\xEF\xBB\xBF\xEF\xBF\xBDy"},
    {"Utf8TwoHighSurrogates", 4, {Text(WTEXT("\xD83D\xD83D\xDE00"))}, "\xEF\xBB\xBF\xEF\xBF\xBD\xED\xB8\x80"},
    {"Utf8LoneLowSurrogateThreeBytes", 4, {Text(WTEXT("\xDC00"))}, "\xEF\xBB\xBF\xED\xB0\x80"},
    {"Utf8HighSurrogateBeforeLineFeed", 4, {Text(WTEXT("\xD83D\nx"))}, "\xEF\xBB\xBF\xEF\xBF\xBD\r\nx"},
    {"Utf8HighSurrogateSwallowsRawLineFeed", 4 | 0x100, {Text(WTEXT("\xD83D\nx"))}, "\xEF\xBB\xBF\xEF\xBF\xBDx"},
    {"Utf16LeCharLow16Bits", 2, {Char(0x1F600)}, "\xFF\xFE\x00\xF6"s},
    {"Utf16BeCharHighByteFirst", 3, {Char(0x20AC)}, "\xFE\xFF\x20\xAC"},
    {"Utf16LeSurrogatesAsTheyAre", 2, {Text(WTEXT("\U0001F600"))}, "\xFF\xFE\x3D\xD8\x00\xDE"s},
    {"Utf16BeSurrogatesSwapped", 3, {Text(WTEXT("\U0001F600"))}, "\xFE\xFF\xD8\x3D\xDE\x00"s},
};

std::string WriteFile(const ScratchFolder& folder, const WriteCase& c, int bufferSize)
{
    // Writing replaces what the file held.
    const WString path = folder.Write("w.txt", "old content");
    TextFile file;
    file.SetCodePage(1252);
    EXPECT_EQ(file.Open(path, TextFileMode::Write, c.flags, bufferSize), 0);
    for (const Write& w : c.writes) {
        if (w.text.empty() && w.character != 0)
            EXPECT_EQ(file.WriteChar(nullptr, w.character), 0);
        else
            EXPECT_EQ(file.WriteString(nullptr, w.text), 0);
    }
    EXPECT_EQ(file.Close(), 0);
    return ReadBytes(folder.Path("w.txt"));
}

class WriteCaseTest : public testing::TestWithParam<WriteCase> {};

TEST_P(WriteCaseTest, WritesTheBytes)
{
    ScratchFolder folder;
    for (int bufferSize : {0, 1, 2, 3, 7})
        EXPECT_EQ(WriteFile(folder, GetParam(), bufferSize), GetParam().bytes) << "buffer size " << bufferSize;
}

INSTANTIATE_TEST_SUITE_P(Writer, WriteCaseTest, testing::ValuesIn(kWriteCases),
                         [](const testing::TestParamInfo<WriteCase>& info) { return info.param.name; });

struct AppendCase {
    const char* name;
    bool exists;
    std::string before;
    std::uint32_t flags;
    std::string after;
};

void PrintTo(const AppendCase& c, std::ostream* os) { *os << c.name; }

const AppendCase kAppendCases[] = {
    {"NonEmptyUtf16LeGetsNoSecondMark", true, "\xFF\xFE" "a\0"s, 2, "\xFF\xFE" "a\0b\0"s},
    {"EmptyUtf16LeGetsMark", true, "", 2, "\xFF\xFE" "b\0"s},
    {"MissingFileIsCreatedWithMark", false, "", 4, "\xEF\xBB\xBF" "b"},
    {"NonEmptyUtf8GetsNoMark", true, "x", 4, "xb"},
    {"AnsiAppendsAtEnd", true, "a\r\n", 1, "a\r\nb"},
};

class AppendCaseTest : public testing::TestWithParam<AppendCase> {};

TEST_P(AppendCaseTest, AppendsBehindTheContent)
{
    const AppendCase& c = GetParam();
    ScratchFolder folder;
    const WString path = c.exists ? folder.Write("a.txt", c.before) : folder.WidePath("a.txt");
    for (int mode : {3, 0, 7}) {
        if (c.exists)
            WriteBytes(folder.Path("a.txt"), c.before);
        else
            ::remove(folder.Path("a.txt").c_str());
        TextFile file;
        ASSERT_EQ(file.Open(path, mode, c.flags), 0);
        EXPECT_EQ(file.Mode(), 3);
        EXPECT_EQ(file.WriteString(nullptr, WTEXT("b")), 0);
        EXPECT_EQ(file.Close(), 0);
        EXPECT_EQ(ReadBytes(folder.Path("a.txt")), c.after) << "mode " << mode;
    }
}

INSTANTIATE_TEST_SUITE_P(Writer, AppendCaseTest, testing::ValuesIn(kAppendCases),
                         [](const testing::TestParamInfo<AppendCase>& info) { return info.param.name; });

TEST(Writer, UsedDefaultReportsReplacedCharacters)
{
    ScratchFolder folder;
    TextFile file;
    file.SetCodePage(1252);
    ASSERT_EQ(file.Open(folder.WidePath("d.txt"), TextFileMode::Write, 1), 0);
    bool usedDefault = false;
    EXPECT_EQ(file.WriteString(&usedDefault, WTEXT("\u0100\n")), 0);
    EXPECT_TRUE(usedDefault);
    EXPECT_EQ(file.WriteString(&usedDefault, WTEXT("plain\n")), 0);
    EXPECT_FALSE(usedDefault);
    file.SetDefaultChar("#");
    EXPECT_EQ(file.WriteChar(&usedDefault, 0x3042), 0);
    EXPECT_TRUE(usedDefault);
    file.SetDefaultChar(nullptr);
    EXPECT_EQ(file.WriteChar(&usedDefault, 0x3042), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(ReadBytes(folder.Path("d.txt")), "?\r\nplain\r\n#?");
}

TEST(Writer, AnsiWriterFollowsTheCodePage)
{
    ScratchFolder folder;
    TextFile file;
    file.SetCodePage(1250);
    ASSERT_EQ(file.Open(folder.WidePath("c.txt"), TextFileMode::Write, 1), 0);
    file.WriteString(nullptr, WTEXT("\u0160\u010D\u0159"));
    file.SetCodePage(65001);
    file.WriteString(nullptr, WTEXT("\u3042"));
    file.Close();
    EXPECT_EQ(ReadBytes(folder.Path("c.txt")), "\x8A\xE8\xF8\xE3\x81\x82");
}

// A long run is converted in pieces: a surrogate pair that straddles a piece boundary is
// still one character, and so one replacement byte.
TEST(Writer, AnsiLongRunKeepsSurrogatePairsWholeAcrossPieces)
{
    // Pieces end where the 4096-byte buffer is full.
    for (std::size_t pairAt : {1022u, 1023u, 1024u, 2047u, 4094u, 4095u, 4096u, 8190u, 8191u}) {
        SCOPED_TRACE(pairAt);
        WString text(9000, WTEXT('a'));
        text[pairAt] = 0xD83D;
        text[pairAt + 1] = 0xDE00;
        ScratchFolder folder;
        TextFile file;
        file.SetCodePage(1252);
        ASSERT_EQ(file.Open(folder.WidePath("long.txt"), TextFileMode::Write, 1), 0);
        bool usedDefault = false;
        EXPECT_EQ(file.WriteString(&usedDefault, text), 0);
        EXPECT_TRUE(usedDefault);
        EXPECT_EQ(file.Close(), 0);
        std::string expected(8999, 'a');
        expected[pairAt] = '?';
        EXPECT_EQ(ReadBytes(folder.Path("long.txt")), expected);
    }
}

// The ANSI writer's fast path for plain ASCII must give what the system's own conversion
// gives, wherever the other characters, line feeds and buffer ends fall.
TEST(Writer, AnsiTextMatchesTheSystemConversion)
{
    const WChar alphabet[] = {WTEXT('a'),    WTEXT('7'),      WTEXT(' '), WTEXT('\x7F'), WTEXT('\x80'), WTEXT('\xE9'),
                              WTEXT('\x20AC'), WTEXT('\x4E00'), WTEXT('\n'), 0xD83D,       0xDE00};
    // Wine writes two default characters for a surrogate pair, Windows and Linux one.
    const std::size_t letters = std::size(alphabet) - (refhost::RunsUnderWine() ? 2 : 0);
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        WString text;
        const std::size_t length = random() % 5000;
        for (std::size_t i = 0; i < length; ++i) {
            // Mostly ASCII, as real files are, so that long plain runs meet the odd character.
            const std::size_t pick = random() % 40;
            text += pick < letters ? alphabet[pick] : WChar(WTEXT('a') + pick % 26);
        }
        WString withCrLf;
        for (WChar unit : text)
            withCrLf += unit == WTEXT('\n') ? WString(WTEXT("\r\n")) : WString(1, unit);
        std::string expected(2 * withCrLf.size() + 1, '\0');
        expected.resize(static_cast<std::size_t>(Platform::WideToMultiByte(
            1252, withCrLf.c_str(), static_cast<int>(withCrLf.size()), &expected[0],
            static_cast<int>(expected.size()), nullptr, nullptr)));

        ScratchFolder folder;
        TextFile file;
        file.SetCodePage(1252);
        ASSERT_EQ(file.Open(folder.WidePath("mix.txt"), TextFileMode::Write, 1), 0);
        file.WriteString(nullptr, text);
        file.Close();
        ASSERT_EQ(ReadBytes(folder.Path("mix.txt")), expected) << "round " << round;
    }
}

// A formatted text is cut at kMaxFormattedLength; this build has no string table.
TEST(Writer, WriteFormatFormatsAndWrites)
{
    ScratchFolder folder;
    TextFile file;
    ASSERT_EQ(file.Open(folder.WidePath("f.txt"), TextFileMode::Write, 2), 0);
    EXPECT_EQ(file.WriteFormat(nullptr, WTEXT("%s;%d%%\n"), WString(WTEXT("P1")), -12), 0);
    EXPECT_EQ(file.WriteFormat(nullptr, WTEXT("%s"), WString(10000, WTEXT('x'))), 0);
    bool usedDefault = true;
    EXPECT_EQ(file.WriteFormat(&usedDefault, TextFile::StringId{101}, {1, 2}), -2);
    EXPECT_FALSE(usedDefault);
    EXPECT_EQ(file.Close(), 0);
    std::string x;
    for (std::size_t i = 0; i < TextFile::kMaxFormattedLength; ++i)
        x += "x\0"s;
    EXPECT_EQ(ReadBytes(folder.Path("f.txt")), "\xFF\xFEP\0" "1\0;\0-\0" "1\0" "2\0%\0\r\0\n\0"s + x);
}

// Writes need a writer: none when closed, reading, or the encoding has none (the file is
// still opened). A reading call on a writer delivers nothing; destruction closes and flushes.
TEST(Writer, WritesFailWithoutWriterAndDestructionFlushes)
{
    ScratchFolder folder;
    TextFile closed;
    EXPECT_EQ(closed.WriteString(nullptr, WTEXT("x")), -2);
    EXPECT_EQ(closed.WriteChar(nullptr, 'x'), -2);
    EXPECT_EQ(closed.Close(), 0);
    TextFile reading;
    ASSERT_EQ(reading.Open(folder.Write("r.txt", "r"), TextFileMode::Read, 0), 0);
    EXPECT_EQ(reading.WriteString(nullptr, WTEXT("x")), -2);
    reading.Close();
    EXPECT_EQ(ReadBytes(folder.Path("r.txt")), "r");
    TextFile unknown;
    ASSERT_EQ(unknown.Open(folder.WidePath("u.txt"), TextFileMode::Write, 9), 0);
    EXPECT_EQ(unknown.Encoding(), 9);
    EXPECT_EQ(unknown.WriteString(nullptr, WTEXT("x")), -2);
    EXPECT_EQ(unknown.Close(), 0);
    EXPECT_EQ(ReadBytes(folder.Path("u.txt")), "");
    {
        TextFile file;
        ASSERT_EQ(file.Open(folder.WidePath("w.txt"), TextFileMode::Write, 4), 0);
        file.WriteString(nullptr, WTEXT("kept"));
        WString line;
        EXPECT_EQ(file.ReadLine(nullptr, line), -1);
    }
    EXPECT_EQ(ReadBytes(folder.Path("w.txt")), "\xEF\xBB\xBF" "kept");
}

// Whatever the writers put on disk, the readers give back: every encoding, through the
// detection of the mark, with a non-ASCII alphabet.
TEST(Writer, ReadersReadBackWhatWritersWrote)
{
    ScratchFolder folder;
    const std::vector<WString> lines = {WTEXT("P1 456789.123 5123456.789"), WTEXT(""), WTEXT("\u017Dlu\u0165ou\u010Dk\u00FD k\u016F\u0148"),
                                        WTEXT("tab\there"), WTEXT("x\ry")};
    for (std::uint32_t encoding : {1u, 2u, 3u, 4u}) {
        TextFile file;
        file.SetCodePage(1250);
        ASSERT_EQ(file.Open(folder.WidePath("rt.txt"), TextFileMode::Write, encoding), 0);
        for (const WString& line : lines) {
            file.WriteString(nullptr, line);
            file.WriteChar(nullptr, '\n');
        }
        ASSERT_EQ(file.Close(), 0);
        const ReadResult result = ReadAll(folder.WidePath("rt.txt"), 0, 0, 1250);
        EXPECT_EQ(result.encoding, static_cast<int>(encoding));
        EXPECT_EQ(result.lines, lines) << "encoding " << encoding;
    }
}

} // namespace
