#include "refhost/Utf8.h"

#include <gtest/gtest.h>

using refhost::FromUtf8;
using refhost::ToUtf8;

TEST(Utf8, RoundTripsEveryPlane)
{
    const std::string texts[] = {"", "P1 456789.123", "Grüße ¤ €", "日本語", "𝄞 clef", std::string("a\0b", 3)};
    for (const std::string& text : texts)
        EXPECT_EQ(ToUtf8(FromUtf8(text)), text);
    EXPECT_EQ(FromUtf8("𝄞"), WString(WTEXT("\xD834\xDD1E")));
    EXPECT_EQ(FromUtf8("¤"), WString(WTEXT("\x00A4")));
}

TEST(Utf8, EveryBadByteBecomesOneReplacementCharacter)
{
    const struct {
        std::string bytes;
        WString text;
    } cases[] = {
        {"\xFF" "a", WTEXT("\xFFFD") "a"},
        {"\xC3", WTEXT("\xFFFD")},                       // cut sequence
        {"\xC3" "a", WTEXT("\xFFFD") "a"},
        {"\xC0\xAF", WTEXT("\xFFFD\xFFFD")},             // overlong
        {"\xE0\x80\xAF", WTEXT("\xFFFD\xFFFD\xFFFD")},   // overlong
        {"\xED\xA0\x80", WTEXT("\xFFFD\xFFFD\xFFFD")},   // an encoded surrogate
        {"\xF4\x90\x80\x80", WTEXT("\xFFFD\xFFFD\xFFFD\xFFFD")}, // beyond U+10FFFF
        {"\x80", WTEXT("\xFFFD")},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FromUtf8(c.bytes), c.text) << c.bytes;
}

TEST(Utf8, UnpairedSurrogatesBecomeReplacementCharacters)
{
    EXPECT_EQ(ToUtf8(WString(WTEXT("a\xD800"))), "a\xEF\xBF\xBD");
    EXPECT_EQ(ToUtf8(WString(WTEXT("\xDC00") "b")), "\xEF\xBF\xBD" "b");
    EXPECT_EQ(ToUtf8(static_cast<const WChar*>(nullptr)), "");
}
