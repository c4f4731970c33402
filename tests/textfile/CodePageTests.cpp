// Code page conversion in the platform layer: the single-byte tables against the published
// Windows mappings, the ANSI code page setting, and the multi-byte path.

#include "TextFileTesting.h"

#include "host/WideText.h"
#include "refhost/Environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

using namespace textfile_testing;

namespace {

// Byte -> code point as Windows maps it, from the WHATWG index (pointer = byte - 0x80).
std::map<int, WChar> ReadWhatwgIndex(const std::string& path)
{
    std::map<int, WChar> table;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        std::istringstream fields(line);
        int pointer = 0;
        std::string code;
        if (fields >> pointer >> code)
            table[0x80 + pointer] = static_cast<WChar>(std::stoul(code, nullptr, 16));
    }
    return table;
}

// Byte -> code point from a libiconv test table ("0x80<TAB>0x20AC"); undefined bytes absent.
std::map<int, WChar> ReadIconvTable(const std::string& path)
{
    std::map<int, WChar> table;
    std::ifstream in(path);
    std::string byte;
    std::string code;
    while (in >> byte >> code)
        table[std::stoi(byte, nullptr, 16)] = static_cast<WChar>(std::stoul(code, nullptr, 16));
    return table;
}

WChar Decode(unsigned codePage, unsigned char byte)
{
    const char in[1] = {static_cast<char>(byte)};
    WChar out[2] = {0, 0};
    EXPECT_EQ(Platform::MultiByteToWide(codePage, in, 1, out, 2), 1);
    return out[0];
}

class CodePageTables : public testing::TestWithParam<unsigned> {};

// Byte by byte and through the ANSI reader's table alike.
TEST_P(CodePageTables, HighBytesMatchTheWindowsMapping)
{
    REQUIRE_TESTDATA();
    const unsigned codePage = GetParam();
    const auto windows =
        ReadWhatwgIndex(TestDataFolder() + "/whatwg-encoding/index-windows-" + std::to_string(codePage) + ".txt");
    ASSERT_EQ(windows.size(), 128u);
    std::string bytes;
    WString expected;
    for (const auto& [byte, unit] : windows) {
        EXPECT_EQ(Decode(codePage, static_cast<unsigned char>(byte)), unit) << "byte " << byte;
        bytes += static_cast<char>(byte);
        expected += unit;
    }
    ScratchFolder folder;
    EXPECT_EQ(ReadAll(folder.Write("cp.txt", bytes), 1, 0, codePage).lines, std::vector<WString>{expected});
}

TEST_P(CodePageTables, BytesIconvLeavesUndefinedConvertToTheSameValue)
{
    REQUIRE_TESTDATA();
    const unsigned codePage = GetParam();
    const auto iconvTable = ReadIconvTable(TestDataFolder() + "/libiconv/CP" + std::to_string(codePage) + ".TXT");
    ASSERT_GT(iconvTable.size(), 240u);
    int undefined = 0;
    for (int byte = 0; byte < 256; ++byte) {
        const auto found = iconvTable.find(byte);
        const WChar expected = found != iconvTable.end() ? found->second : static_cast<WChar>(byte);
        undefined += found == iconvTable.end();
        EXPECT_EQ(Decode(codePage, static_cast<unsigned char>(byte)), expected) << "byte " << byte;
    }
    EXPECT_EQ(undefined, 5);
}

TEST_P(CodePageTables, EveryByteRoundTrips)
{
    const unsigned codePage = GetParam();
    const SingleByteCodePage* table = Platform::FindSingleByteCodePage(codePage);
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->Number(), codePage);
    for (int byte = 0; byte < 256; ++byte) {
        const WChar unit = Decode(codePage, static_cast<unsigned char>(byte));
        char back[2] = {0, 0};
        bool usedDefault = false;
        EXPECT_EQ(Platform::WideToMultiByte(codePage, &unit, 1, back, 2, nullptr, &usedDefault), 1);
        EXPECT_EQ(static_cast<unsigned char>(back[0]), byte);
        EXPECT_FALSE(usedDefault);
    }
}

// The system's own conversion (WideCharToMultiByte on Windows) and the table agree on every
// character: what a code page lacks becomes the default character, never a look-alike.
TEST_P(CodePageTables, SystemConversionAgreesWithTheTableOnEveryCharacter)
{
    const unsigned codePage = GetParam();
    const SingleByteCodePage* table = Platform::FindSingleByteCodePage(codePage);
    ASSERT_NE(table, nullptr);
    int defaults = 0;
    for (unsigned code = 1; code <= 0xFFFF; ++code) {
        if (IsHighSurrogate(code) || IsLowSurrogate(code))
            continue;
        const WChar unit = static_cast<WChar>(code);
        char bySystem[4] = {};
        char byTable[4] = {};
        bool systemDefault = false;
        bool tableDefault = false;
        ASSERT_EQ(Platform::WideToMultiByte(codePage, &unit, 1, bySystem, 4, "*", &systemDefault), 1) << code;
        ASSERT_EQ(table->Encode(&unit, 1, byTable, '*', &tableDefault), 1u) << code;
        EXPECT_EQ(bySystem[0], byTable[0]) << "U+" << std::hex << code;
        EXPECT_EQ(systemDefault, tableDefault) << "U+" << std::hex << code;
        defaults += tableDefault;
    }
    EXPECT_EQ(defaults, 0xFFFF - 0x800 - 255);
}

INSTANTIATE_TEST_SUITE_P(Platform, CodePageTables, testing::Values(1250u, 1252u));

// ANSI files are byte for byte the same wherever the module runs: the expectations are the
// bytes Windows writes.
TEST(CodePages, AnsiFilesHoldTheSameBytesOnEverySystem)
{
    const struct {
        unsigned codePage;
        const WChar* text;
        std::string bytes;
    } cases[] = {
        {1250, WTEXT("Zażółć gęślą jaźń\n"), "Za\xBF\xF3\xB3\xE6 g\xEA\x9Cl\xB9 ja\x9F\xF1\r\n"},
        {1250, WTEXT("Příliš žluťoučký kůň"), "P\xF8\xEDli\x9A \x9Elu\x9Dou\xE8k\xFD k\xF9\xF2"},
        {1250, WTEXT("€ ÄÖÜß ‰ ∞ Ā"), "\x80 \xC4\xD6\xDC\xDF \x89 ? ?"},
        {1252, WTEXT("Größe à l'œuvre € ™"), "Gr\xF6\xDF" "e \xE0 l'\x9Cuvre \x80 \x99"},
        {1252, WTEXT("Łódź ∞ Ā ą"), "?\xF3" "d? ? ? ?"},
        {1252, WTEXT("\x81\x8D\x8F\x90\x9D"), "\x81\x8D\x8F\x90\x9D"},
    };
    ScratchFolder folder;
    for (const auto& c : cases) {
        TextFile file;
        file.SetCodePage(c.codePage);
        ASSERT_EQ(file.Open(folder.WidePath("ansi.txt"), TextFileMode::Write, 1), 0);
        bool usedDefault = false;
        EXPECT_EQ(file.WriteString(&usedDefault, c.text), 0);
        EXPECT_EQ(file.Close(), 0);
        EXPECT_EQ(ReadBytes(folder.Path("ansi.txt")), c.bytes) << c.codePage << ": " << ToUtf8(c.text);
        EXPECT_EQ(usedDefault, c.bytes.find('?') != std::string::npos) << ToUtf8(c.text);
    }
}

// Code page 0 is the system's ANSI code page. The run that sets TESSEL_SYSTEM_CODEPAGE has
// made the system's code page that one (a Polish locale under Wine, TESSEL_CODEPAGE on
// Linux); every other run skips.
TEST(SystemCodePage, CodePageZeroReadsAndWritesInIt)
{
    const char* expected = std::getenv("TESSEL_SYSTEM_CODEPAGE");
    if (!expected)
        GTEST_SKIP() << "run with TESSEL_SYSTEM_CODEPAGE set";
    Platform::SetAnsiCodePage(0);
    ASSERT_EQ(Platform::AnsiCodePage(), static_cast<unsigned>(std::atoi(expected)));
    ASSERT_EQ(Platform::AnsiCodePage(), 1250u) << "the cases below are 1250 text";
    ScratchFolder folder;
    TextFile file;
    ASSERT_EQ(file.Open(folder.WidePath("pl.txt"), TextFileMode::Write, 1), 0);
    EXPECT_EQ(file.WriteString(nullptr, WTEXT("Łódź\n")), 0);
    EXPECT_EQ(file.Close(), 0);
    EXPECT_EQ(ReadBytes(folder.Path("pl.txt")), "\xA3\xF3" "d\x9F\r\n");
    EXPECT_EQ(ReadAll(folder.Write("cz.txt", "\x8A\x8D\x8E\r\n")).lines, std::vector<WString>{WTEXT("ŠŤŽ")});
}

// Each language's text is stored in the code page and in UTF-8; both read the same.
TEST(CodePages, CorpusTextsReadAlikeInCodePageAndUtf8)
{
    REQUIRE_TESTDATA();
    const std::pair<const char*, unsigned> samples[] = {
        {"cs", 1250}, {"pl", 1250}, {"sk", 1250}, {"sl", 1250}, {"hr", 1250},
        {"da", 1252}, {"es", 1252}, {"sv", 1252}, {"et", 1252}, {"ga", 1252},
    };
    for (const auto& [language, codePage] : samples) {
        const std::string folder = TestDataFolder() + "/uchardet/" + language + "/";
        const std::string utf8 = ReadBytes(folder + "utf-8.txt");
        ASSERT_FALSE(utf8.empty()) << language;
        const ReadResult ansi =
            ReadAll(FromUtf8(folder + "windows-" + std::to_string(codePage) + ".txt"), 1, 0, codePage);
        const ReadResult unicode = ReadAll(FromUtf8(folder + "utf-8.txt"), 4);
        ASSERT_FALSE(ansi.lines.empty()) << language;
        EXPECT_EQ(ansi.lines, unicode.lines) << language;
    }
}

TEST(CodePages, AnsiCodePageComesFromTheEnvironment)
{
    const char* saved = std::getenv("TESSEL_CODEPAGE");
    const std::string savedValue = saved ? saved : "";
    const std::pair<const char*, unsigned> settings[] = {
        {"1250", 1250}, {"cp1250", 1250}, {"windows-1251", 1251}, {"CP1257", 1257},
        {"", 1252}, {"banana", 1252}, {"12x", 1252}, {"99999", 1252}, {"4711", 1252},
    };
    for (const auto& [value, expected] : settings) {
        refhost::SetEnvironment("TESSEL_CODEPAGE", value);
        Platform::SetAnsiCodePage(0);
        EXPECT_EQ(Platform::AnsiCodePage(), expected) << "TESSEL_CODEPAGE=" << value;
    }
    refhost::SetEnvironment("TESSEL_CODEPAGE", nullptr);
    Platform::SetAnsiCodePage(0);
    EXPECT_EQ(Platform::AnsiCodePage(), 1252u);


    if (saved)
        refhost::SetEnvironment("TESSEL_CODEPAGE", savedValue.c_str());
    else
        refhost::SetEnvironment("TESSEL_CODEPAGE", nullptr);
    Platform::SetAnsiCodePage(0);
}

// 0x8D is undefined in 1252 and a letter in 1250.
TEST(CodePages, AnsiReaderFollowsTheAnsiCodePageSetting)
{
    ScratchFolder folder;
    const WString path = folder.Write("a.txt", "\x8D\n");
    Platform::SetAnsiCodePage(1250);
    EXPECT_EQ(ReadAll(path).lines, std::vector<WString>{WTEXT("\u0164")});
    Platform::SetAnsiCodePage(1252);
    EXPECT_EQ(ReadAll(path).lines, std::vector<WString>{WTEXT("\u008D")});
    Platform::SetAnsiCodePage(0);
}

TEST(CodePages, WindowsCallConventions)
{
    WChar wide[8] = {};
    char narrow[8] = {};
    // -1: up to and including the NUL.
    EXPECT_EQ(Platform::MultiByteToWide(1252, "ab", -1, wide, 8), 3);
    EXPECT_EQ(WString(wide, 3), WString(WTEXT("ab\0"), 3));
    EXPECT_EQ(Platform::WideToMultiByte(1252, WTEXT("ab"), -1, narrow, 8, nullptr, nullptr), 3);
    EXPECT_EQ(std::string(narrow, 3), std::string("ab\0", 3));
    // Capacity 0 asks for the size; too small a capacity fails.
    EXPECT_EQ(Platform::MultiByteToWide(1252, "abc", 3, nullptr, 0), 3);
    EXPECT_EQ(Platform::MultiByteToWide(1252, "abc", 3, wide, 2), 0);
    EXPECT_EQ(Platform::WideToMultiByte(1252, WTEXT("abc"), 3, nullptr, 0, nullptr, nullptr), 3);
    EXPECT_EQ(Platform::WideToMultiByte(1252, WTEXT("abc"), 3, narrow, 2, nullptr, nullptr), 0);
    EXPECT_EQ(Platform::WideToMultiByte(65001, WTEXT("\u3042"), 1, nullptr, 0, nullptr, nullptr), 3);
    // Nothing to convert, and code pages the system does not know.
    EXPECT_EQ(Platform::MultiByteToWide(1252, "abc", 0, wide, 8), 0);
    EXPECT_EQ(Platform::MultiByteToWide(4711, "abc", 3, wide, 8), 0);
    EXPECT_EQ(Platform::WideToMultiByte(4711, WTEXT("abc"), 3, narrow, 8, nullptr, nullptr), 0);
    EXPECT_EQ(Platform::FindSingleByteCodePage(4711), nullptr);
    EXPECT_EQ(Platform::FindSingleByteCodePage(65001), nullptr);
    EXPECT_EQ(Platform::FindSingleByteCodePage(932), nullptr);
}

TEST(CodePages, SurrogatesAndUnmappableCharactersBecomeTheDefault)
{
    char narrow[16] = {};
    bool usedDefault = false;
    // Wine writes two default characters for a surrogate pair, Windows and Linux one.
    if (!refhost::RunsUnderWine()) {
        EXPECT_EQ(Platform::WideToMultiByte(1252, WTEXT("a\U0001F600\xD800") WTEXT("b\u0100"), 6, narrow, 16, "*",
                                            &usedDefault), 5);
        EXPECT_EQ(std::string(narrow, 5), "a**b*");
        EXPECT_TRUE(usedDefault);
    }
    // Ł becomes the default character, never its look-alike L.
    usedDefault = false;
    EXPECT_EQ(Platform::WideToMultiByte(1252, WTEXT("a\xD800") WTEXT("b\u0141"), 4, narrow, 16, "*", &usedDefault), 4);
    EXPECT_EQ(std::string(narrow, 4), "a*b*");
    EXPECT_TRUE(usedDefault);
    // UTF-8 has room for everything but a lone surrogate, which becomes U+FFFD.
    usedDefault = false;
    EXPECT_EQ(Platform::WideToMultiByte(65001, WTEXT("a\xD800") WTEXT("b\U0001F600"), 5, narrow, 16, nullptr, &usedDefault), 9);
    EXPECT_EQ(std::string(narrow, 9), "a\xEF\xBF\xBD" "b\xF0\x9F\x98\x80");
    EXPECT_FALSE(usedDefault);
}

TEST(CodePages, MultiByteCodePagesGoThroughTheSystem)
{
    WChar wide[16] = {};
    EXPECT_EQ(Platform::MultiByteToWide(932, "\x82\xA0" "a", 3, wide, 16), 2);
    EXPECT_EQ(WString(wide, 2), WTEXT("\u3042a"));
    // Malformed input becomes U+FFFD, also a sequence cut at the end.
    EXPECT_EQ(Platform::MultiByteToWide(65001, "a\xFF" "b\xE3\x81", 5, wide, 16), 4);
    EXPECT_EQ(WString(wide, 4), WTEXT("a\uFFFDb\uFFFD"));
    char narrow[16] = {};
    EXPECT_EQ(Platform::WideToMultiByte(932, WTEXT("\u3042a"), 2, narrow, 16, nullptr, nullptr), 3);
    EXPECT_EQ(std::string(narrow, 3), "\x82\xA0" "a");
}

TEST(CodePages, AnsiReaderWithMultiByteCodePage)
{
    ScratchFolder folder;
    const ReadResult result = ReadAll(folder.Write("sjis.txt", "\x82\xA0\x82\xA2\r\n\x82"), 1, 3, 932);
    // A cut sequence becomes the code page's default character, KATAKANA MIDDLE DOT.
    EXPECT_EQ(result.lines, (std::vector<WString>{WTEXT("\u3042\u3044"), WTEXT("\u30FB")}));
}

} // namespace
