#include "xml/XmlEscape.h"

#include <gtest/gtest.h>

namespace {

struct EscapeCase {
    const char16_t* input;
    const char16_t* output;
};

TEST(XmlUnescape, ReplacesReferencesAndKeepsEverythingElse)
{
    const EscapeCase cases[] = {
        {u"a&lt;b", u"a<b"},
        {u"&amp;&gt;&apos;&quot;", u"&>'\""},
        {u"&#65;&#x41;&#x6a;&#x6A;", u"AAjj"},
        {u"&#1234567;", u"&#1234567;"},   // seven digits, above U+10FFFF
        {u"&#12345678;", u"&#12345678;"}, // eight characters is too many
        {u"&#x10FFFF;", u"\U0010FFFF"},
        {u"&#x1F600;", u"\U0001F600"},
        {u"&#0;&#x0;&#;&#x;", u"&#0;&#x0;&#;&#x;"},
        {u"&#X41;&#4a;&#x4g;", u"&#X41;&#4a;&#x4g;"},
        {u"&#65", u"&#65"},
        {u"& b", u"& b"},
        {u"&lt", u"&lt"},
        {u"&", u"&"},
        {u"x&", u"x&"},
        {u"&amp;lt;", u"&lt;"},
        {u"&unknown;", u"&unknown;"},
        {u"&LT;", u"&LT;"},
        {u"&&amp;", u"&&"},
    };
    for (const EscapeCase& c : cases)
        EXPECT_EQ(XmlUnescape(WString(c.input)), WString(c.output)) << ::testing::PrintToString(WString(c.input));
}

TEST(XmlEscape, ReplacesTheFiveCharactersButKeepsWellFormedReferences)
{
    const EscapeCase cases[] = {
        {u"a<b>c", u"a&lt;b&gt;c"},
        {u"'\"", u"&apos;&quot;"},
        {u"a & b", u"a &amp; b"},
        {u"&lt;", u"&lt;"},
        {u"&#65;&#x41;", u"&#65;&#x41;"},
        {u"&_x;&:x;&\u00e9;&x-y.z9;", u"&_x;&:x;&\u00e9;&x-y.z9;"},
        {u"&x y;", u"&amp;x y;"},
        {u"&;", u"&amp;;"},
        {u"&1;", u"&amp;1;"},
        {u"&abc", u"&amp;abc"},
        {u"&&lt;", u"&amp;&lt;"},
        {u"C:\\Data\\x.txt", u"C:\\Data\\x.txt"},
        {u"", u""},
    };
    for (const EscapeCase& c : cases)
        EXPECT_EQ(XmlEscape(WString(c.input)), WString(c.output)) << ::testing::PrintToString(WString(c.input));
}

TEST(XmlEscape, UnescapeRestoresTextWithoutAmpersands)
{
    WString all;
    for (WChar c = 1; c < 0x300; ++c)
        if (c != u'&')
            all += c;
    const WString escaped = XmlEscape(all);
    EXPECT_EQ(escaped.find(u'<'), WString::npos);
    EXPECT_EQ(escaped.find(u'"'), WString::npos);
    EXPECT_EQ(XmlUnescape(escaped), all);
}

TEST(XmlEscape, GrowsForTextMadeOnlyOfSpecialCharacters)
{
    const WString quotes(10000, u'"');
    const WString escaped = XmlEscape(quotes);
    EXPECT_EQ(escaped.size(), 60000u);
    EXPECT_EQ(XmlUnescape(escaped), quotes);
}

} // namespace
