#include "xml/XmlEscape.h"

#include <gtest/gtest.h>

namespace {

struct EscapeCase {
    const WChar* input;
    const WChar* output;
};

TEST(XmlUnescape, ReplacesReferencesAndKeepsEverythingElse)
{
    const EscapeCase cases[] = {
        {WTEXT("a&lt;b"), WTEXT("a<b")},
        {WTEXT("&amp;&gt;&apos;&quot;"), WTEXT("&>'\"")},
        {WTEXT("&#65;&#x41;&#x6a;&#x6A;"), WTEXT("AAjj")},
        {WTEXT("&#1234567;"), WTEXT("&#1234567;")},   // seven digits, above U+10FFFF
        {WTEXT("&#12345678;"), WTEXT("&#12345678;")}, // eight characters is too many
        {WTEXT("&#x10FFFF;"), WTEXT("\U0010FFFF")},
        {WTEXT("&#x1F600;"), WTEXT("\U0001F600")},
        {WTEXT("&#0;&#x0;&#;&#x;"), WTEXT("&#0;&#x0;&#;&#x;")},
        {WTEXT("&#X41;&#4a;&#x4g;"), WTEXT("&#X41;&#4a;&#x4g;")},
        {WTEXT("&#65"), WTEXT("&#65")},
        {WTEXT("& b"), WTEXT("& b")},
        {WTEXT("&lt"), WTEXT("&lt")},
        {WTEXT("&"), WTEXT("&")},
        {WTEXT("x&"), WTEXT("x&")},
        {WTEXT("&amp;lt;"), WTEXT("&lt;")},
        {WTEXT("&unknown;"), WTEXT("&unknown;")},
        {WTEXT("&LT;"), WTEXT("&LT;")},
        {WTEXT("&&amp;"), WTEXT("&&")},
    };
    for (const EscapeCase& c : cases)
        EXPECT_EQ(XmlUnescape(WString(c.input)), WString(c.output)) << ::testing::PrintToString(WString(c.input));
}

TEST(XmlEscape, ReplacesTheFiveCharactersButKeepsWellFormedReferences)
{
    const EscapeCase cases[] = {
        {WTEXT("a<b>c"), WTEXT("a&lt;b&gt;c")},
        {WTEXT("'\""), WTEXT("&apos;&quot;")},
        {WTEXT("a & b"), WTEXT("a &amp; b")},
        {WTEXT("&lt;"), WTEXT("&lt;")},
        {WTEXT("&#65;&#x41;"), WTEXT("&#65;&#x41;")},
        {WTEXT("&_x;&:x;&\u00e9;&x-y.z9;"), WTEXT("&_x;&:x;&\u00e9;&x-y.z9;")},
        {WTEXT("&x y;"), WTEXT("&amp;x y;")},
        {WTEXT("&;"), WTEXT("&amp;;")},
        {WTEXT("&1;"), WTEXT("&amp;1;")},
        {WTEXT("&abc"), WTEXT("&amp;abc")},
        {WTEXT("&&lt;"), WTEXT("&amp;&lt;")},
        {WTEXT("C:\\Data\\x.txt"), WTEXT("C:\\Data\\x.txt")},
        {WTEXT(""), WTEXT("")},
    };
    for (const EscapeCase& c : cases)
        EXPECT_EQ(XmlEscape(WString(c.input)), WString(c.output)) << ::testing::PrintToString(WString(c.input));
}

TEST(XmlEscape, UnescapeRestoresTextWithoutAmpersands)
{
    WString all;
    for (WChar c = 1; c < 0x300; ++c)
        if (c != WTEXT('&'))
            all += c;
    const WString escaped = XmlEscape(all);
    EXPECT_EQ(escaped.find(WTEXT('<')), WString::npos);
    EXPECT_EQ(escaped.find(WTEXT('"')), WString::npos);
    EXPECT_EQ(XmlUnescape(escaped), all);
}

TEST(XmlEscape, GrowsForTextMadeOnlyOfSpecialCharacters)
{
    const WString quotes(10000, WTEXT('"'));
    const WString escaped = XmlEscape(quotes);
    EXPECT_EQ(escaped.size(), 60000u);
    EXPECT_EQ(XmlUnescape(escaped), quotes);
}

} // namespace
