#include "xml/XmlDocument.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlDocument, SetTextReportsTheShapeOfTheDocument)
{
    const struct {
        const char16_t* text;
        bool wellFormed;
        const char16_t* error;
    } cases[] = {
        {u"", false, u"Empty document"},
        {u"<!-- x -->", false, u"No root element"},
        {u"just text", false, u"No root element"},
        {u"<cfg/><cfg/>", false, u"Root element has sibling"},
        {u"<cfg><col></cfg>", false, u"End tag 'cfg' at offset 10 does not match start tag 'col' at offset 5"},
        {u"<cfg>", false, u"Element 'cfg' at offset 0 not ended"},
        {u"<a></b></a>", false, u"No start tag for end tag 'b' at offset 3"},
        {u"<a><1/></a>", false, u"Incorrect tag name character at offset 3"},
        {u"<a></b></c></a>", false, u"No start tag for end tag 'b' at offset 3"}, // the first message only
        {u"<a><b><c></a>", false, u"End tag 'a' at offset 9 does not match start tag 'c' at offset 6"},
        {u"<a><b></b><c>", false, u"Root element has sibling"}, // the unended a hands b and c to the top
        {u"<a><!-- x", false, u"Comment at offset 3 unterminated"},
        {u"<a></b></a><c/>", false, u"Root element has sibling"}, // replaces the earlier message
        {u"<a/>", true, u""},
        {u"<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"x\"></cfg>", true, u""},
        {u"<!DOCTYPE cfg><!-- c --> <cfg><![CDATA[<x>]]><?pi?>t</cfg>\r\n", true, u""},
    };
    for (const auto& c : cases) {
        XmlDocument document;
        EXPECT_EQ(document.SetText(c.text), c.wellFormed) << ::testing::PrintToString(WString(c.text));
        EXPECT_EQ(document.GetError(), WString(c.error)) << ::testing::PrintToString(WString(c.text));
    }
}

TEST(XmlDocument, NullTextEmptiesTheDocument)
{
    XmlDocument document;
    ASSERT_TRUE(document.SetText(u"<cfg/>"));
    EXPECT_FALSE(document.SetText(static_cast<const WChar*>(nullptr)));
    EXPECT_EQ(document.GetError(), u"Empty document");
    EXPECT_FALSE(document.FindElement(u"cfg"));
}

TEST(XmlDocument, FindElementWalksTheSiblingsAfterTheCurrentOne)
{
    XmlDocument document;
    document.SetText(u"<cfg n='1'/><cfg n='2'/>");
    ASSERT_TRUE(document.FindElement(u"cfg"));
    EXPECT_EQ(document.GetAttribute(u"n"), u"1");
    ASSERT_TRUE(document.FindElement(u"cfg"));
    EXPECT_EQ(document.GetAttribute(u"n"), u"2");
    EXPECT_FALSE(document.FindElement(u"cfg"));
    EXPECT_EQ(document.GetAttribute(u"n"), u"2"); // a failed search does not move
}

TEST(XmlDocument, EnterElementStepsIntoTheCurrentElementOnly)
{
    XmlDocument document;
    document.SetText(u"<cfg><col no='0'><sub/></col><x/><col no='1'/></cfg>");
    EXPECT_FALSE(document.EnterElement());
    ASSERT_TRUE(document.FindElement(u"cfg"));
    EXPECT_FALSE(document.FindElement(u"cfg"));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_EQ(document.GetAttribute(u"no"), u"");
    ASSERT_TRUE(document.FindElement(u"col"));
    EXPECT_EQ(document.GetAttribute(u"no"), u"0");
    ASSERT_TRUE(document.FindElement(u"col"));
    EXPECT_EQ(document.GetAttribute(u"no"), u"1");
    EXPECT_FALSE(document.FindElement(u"sub"));
}

TEST(XmlDocument, EmptyOrNullNameFindsAnyElement)
{
    XmlDocument document;
    document.SetText(u"<r><a/><b/></r>");
    ASSERT_TRUE(document.FindElement(nullptr));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_TRUE(document.FindElement(u""));
    EXPECT_TRUE(document.FindElement(nullptr));
    EXPECT_FALSE(document.FindElement(nullptr));
}

TEST(XmlDocument, NamesMatchByPrefixFollowedByAContinuationCharacter)
{
    const struct {
        const char16_t* wanted;
        bool found;
    } cases[] = {
        {u"col", true},  {u"col[2]", true}, {u"col/x", true}, {u"col x", true}, {u"col=1", true},
        {u"co", false},  {u"cols", false},  {u"Col", false},  {u"col.", false},
    };
    for (const auto& c : cases) {
        XmlDocument document;
        document.SetText(u"<col/>");
        EXPECT_EQ(document.FindElement(c.wanted), c.found) << ::testing::PrintToString(WString(c.wanted));
    }
}

TEST(XmlDocument, BrokenDocumentsStillYieldTheirElements)
{
    XmlDocument document;
    document.SetText(u"<cfg>");
    EXPECT_TRUE(document.FindElement(u"cfg"));

    document.SetText(u"<cfg><col></cfg>");
    ASSERT_TRUE(document.FindElement(u"cfg"));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_TRUE(document.FindElement(u"col"));

    // An element left open hands its children to its parent.
    document.SetText(u"<cfg a='1'><col/><col/>");
    ASSERT_TRUE(document.FindElement(u"cfg"));
    EXPECT_TRUE(document.FindElement(u"col"));
    EXPECT_TRUE(document.FindElement(u"col"));
}

TEST(XmlDocument, GetAttributeReadsTheFirstAttributeNamed)
{
    const struct {
        const char16_t* tag;
        const char16_t* name;
        const char16_t* value;
    } cases[] = {
        {u"<a v=1/>", u"v", u"1/"},
        {u"<a v='1'/>", u"v", u"1"},
        {u"<cfg delimiter=\"x\"/>", u"delim", u""},
        {u"<cfg delimiter=\"x\"/>", u"delimiter", u"x"},
        {u"<cfg delimiter=\"x\"/>", u"delimiter[0]", u"x"},
        {u"<a b=\"&lt;&amp;&#65;\"/>", u"b", u"<&A"},
        {u"<a b=\"&amp;lt;\"/>", u"b", u"&lt;"},
        {u"<a  b = \"x y\" />", u"b", u"x y"},
        {u"<a\tb\n=\r'\"'/>", u"b", u"\""},
        {u"<a b=\"'\"/>", u"b", u"'"},
        {u"<a x=\"1\" x=\"2\"/>", u"x", u"1"},
        {u"<a bx=\"1\" b=\"2\"/>", u"b", u"2"},
        {u"<a flag b=\"2\"/>", u"b", u"2"},
        {u"<a flag b=\"2\"/>", u"flag", u""},
        {u"<a b=>", u"b", u""},
        {u"<a b=1 c=2>", u"c", u"2"},
        {u"<a c=\"/>\" b=\"1\"/>", u"b", u"1"},
        {u"<a/b=\"1\">", u"b", u""},
        {u"<a ?b=\"1\">", u"b", u""},
        {u"<a \"q\"=\"1\" b=\"2\">", u"b", u"2"},
        {u"<a =\"1\" b=\"2\">", u"b", u"2"},
        {u"<a b=\"1\"><c b=\"2\"/></a>", u"c", u""},
    };
    for (const auto& c : cases) {
        XmlDocument document;
        document.SetText(c.tag);
        ASSERT_TRUE(document.FindElement(nullptr)) << ::testing::PrintToString(WString(c.tag));
        EXPECT_EQ(document.GetAttribute(c.name), WString(c.value)) << ::testing::PrintToString(WString(c.tag));
    }
}

TEST(XmlDocument, GetAttributeWithoutACurrentElementIsEmpty)
{
    XmlDocument document;
    document.SetText(u"<a b=\"1\"/>");
    EXPECT_EQ(document.GetAttribute(u"b"), u"");
    ASSERT_TRUE(document.FindElement(u"a"));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_EQ(document.GetAttribute(u"b"), u"");
}

TEST(XmlDocument, AQuotedValueRunningToTheEndOfTheTextIsReadToTheEnd)
{
    // The start tag is unterminated, so this is no element; a closed tag before it is.
    XmlDocument document;
    document.SetText(u"<a b=\"1\"><c d=\"open");
    ASSERT_TRUE(document.FindElement(u"a"));
    EXPECT_EQ(document.GetAttribute(u"b"), u"1");
    ASSERT_TRUE(document.EnterElement());
    EXPECT_FALSE(document.FindElement(u"c"));
}

TEST(XmlDocument, ManyColumnsAndLargeDocumentsParse)
{
    WString text = u"<cfg>";
    const int columns = 100000;
    for (int i = 0; i < columns; ++i)
        text += u"<col no=\"" + WString(1, static_cast<WChar>(u'0' + i % 10)) + u"\" name=\"c\"/>";
    text += u"</cfg>";
    XmlDocument document;
    ASSERT_TRUE(document.SetText(text));
    ASSERT_TRUE(document.FindElement(u"cfg"));
    ASSERT_TRUE(document.EnterElement());
    int found = 0;
    while (document.FindElement(u"col"))
        ++found;
    EXPECT_EQ(found, columns);
}

} // namespace
