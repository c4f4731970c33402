#include "host/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace {

WString Units(std::initializer_list<char32_t> units)
{
    WString text;
    for (const char32_t unit : units)
        text.push_back(static_cast<WChar>(unit));
    return text;
}

// Text and its UTF-8 form, both ways: the edges of every sequence length and the planes.
const struct {
    const char* name;
    WString text;
    std::string bytes;
} kValid[] = {
    {"Empty", WString(), ""},
    {"Ascii", WTEXT("P1 456789.123"), "P1 456789.123"},
    {"Nul", WString(1, 0) + WTEXT("b"), std::string("\0b", 2)},
    {"LastOneByte", Units({0x7F}), "\x7F"},
    {"FirstTwoBytes", Units({0x80}), "\xC2\x80"},
    {"AsciiThenLatin", WTEXT("Gr\x00FC\x00DF") WTEXT("e \x00A4"), "Gr\xC3\xBC\xC3\x9F" "e \xC2\xA4"},
    {"LastTwoBytes", Units({0x7FF}), "\xDF\xBF"},
    {"FirstThreeBytes", Units({0x800}), "\xE0\xA0\x80"},
    {"BeforeSurrogates", Units({0xD7FF}), "\xED\x9F\xBF"},
    {"AfterSurrogates", Units({0xE000}), "\xEE\x80\x80"},
    {"LastThreeBytes", Units({0xFFFF}), "\xEF\xBF\xBF"},
    {"FirstFourBytes", Units({0xD800, 0xDC00}), "\xF0\x90\x80\x80"},
    {"Clef", Units({0xD834, 0xDD1E}) + WTEXT(" clef"), "\xF0\x9D\x84\x9E clef"},
    {"LastScalar", Units({0xDBFF, 0xDFFF}), "\xF4\x8F\xBF\xBF"},
};

TEST(Utf8, ConvertsBothWaysAtEverySequenceEdge)
{
    for (const auto& c : kValid) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ToUtf8(c.text), c.bytes);
        EXPECT_EQ(Utf8Length(c.text.data(), c.text.size()), c.bytes.size());
        EXPECT_EQ(FromUtf8(c.bytes), c.text);
    }
}

TEST(Utf8, EveryByteThatBeginsNoValidSequenceReadsAsOneReplacementCharacter)
{
    const struct {
        const char* name;
        std::string bytes;
        WString text;
    } cases[] = {
        {"LeadFF", "\xFF" "a", WTEXT("\xFFFD") WTEXT("a")},
        {"LoneContinuation", "\x80", WTEXT("\xFFFD")},
        {"CutAtTheEnd", "a\xC3", WTEXT("a\xFFFD")},
        {"CutBeforeAscii", "\xE2\x82" "a", WTEXT("\xFFFD\xFFFD") WTEXT("a")},
        {"OverlongTwoBytes", "\xC0\xAF", WTEXT("\xFFFD\xFFFD")},
        {"OverlongThreeBytes", "\xE0\x80\xAF", WTEXT("\xFFFD\xFFFD\xFFFD")},
        {"OverlongFourBytes", "\xF0\x8F\xBF\xBF", WTEXT("\xFFFD\xFFFD\xFFFD\xFFFD")},
        {"EncodedSurrogate", "\xED\xA0\x80", WTEXT("\xFFFD\xFFFD\xFFFD")},
        {"BeyondLastScalar", "\xF4\x90\x80\x80", WTEXT("\xFFFD\xFFFD\xFFFD\xFFFD")},
        {"FiveByteForm", "\xF8\x88\x80\x80\x80", WTEXT("\xFFFD\xFFFD\xFFFD\xFFFD\xFFFD")},
        {"ValidAfterInvalid", "\xFE\xC3\xA9", WTEXT("\xFFFD\x00E9")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FromUtf8(c.bytes), c.text) << c.name;
}

TEST(Utf8, UnpairedSurrogatesAreWrittenAsReplacementCharacters)
{
    const struct {
        const char* name;
        WString text;
        std::string bytes;
    } cases[] = {
        {"HighAtTheEnd", Units({'a', 0xD800}), "a\xEF\xBF\xBD"},
        {"LowAlone", Units({0xDC00, 'b'}), "\xEF\xBF\xBD" "b"},
        {"HighBeforeHigh", Units({0xD800, 0xD834, 0xDD1E}), "\xEF\xBF\xBD\xF0\x9D\x84\x9E"},
        {"ReversedPair", Units({0xDC00, 0xD800}), "\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(ToUtf8(c.text), c.bytes);
        EXPECT_EQ(Utf8Length(c.text.data(), c.text.size()), c.bytes.size());
    }
    EXPECT_EQ(ToUtf8(static_cast<const WChar*>(nullptr)), "");
}

TEST(Utf8, AppendKeepsWhatIsThere)
{
    std::string out = "x=";
    const WString text = Units({'1', 0x00E9, 0xDBFF, 0xDFFF});
    AppendUtf8(out, text.data(), text.size());
    EXPECT_EQ(out, "x=1\xC3\xA9\xF4\x8F\xBF\xBF");
}

TEST(Utf8, EveryUnitOfTheBasicPlaneRoundTrips)
{
    WString all;
    for (char32_t unit = 1; unit <= 0xFFFF; ++unit)
        if (unit < 0xD800 || unit > 0xDFFF)
            all.push_back(static_cast<WChar>(unit));
    const std::string bytes = ToUtf8(all);
    EXPECT_EQ(bytes.size(), Utf8Length(all.data(), all.size()));
    EXPECT_EQ(FromUtf8(bytes), all);
}

} // namespace
