#include "xml/XmlDocument.h"

#include <gtest/gtest.h>

namespace {

TEST(XmlDocument, SetTextReportsTheShapeOfTheDocument)
{
    const struct {
        const WChar* text;
        bool wellFormed;
        const WChar* error;
    } cases[] = {
        {WTEXT(""), false, WTEXT("Empty document")},
        {WTEXT("<!-- x -->"), false, WTEXT("No root element")},
        {WTEXT("just text"), false, WTEXT("No root element")},
        {WTEXT("<cfg/><cfg/>"), false, WTEXT("Root element has sibling")},
        {WTEXT("<cfg><col></cfg>"), false, WTEXT("End tag 'cfg' at offset 10 does not match start tag 'col' at offset 5")},
        {WTEXT("<cfg>"), false, WTEXT("Element 'cfg' at offset 0 not ended")},
        {WTEXT("<a></b></a>"), false, WTEXT("No start tag for end tag 'b' at offset 3")},
        {WTEXT("<a><1/></a>"), false, WTEXT("Incorrect tag name character at offset 3")},
        {WTEXT("<a></b></c></a>"), false, WTEXT("No start tag for end tag 'b' at offset 3")}, // the first message only
        {WTEXT("<a><b><c></a>"), false, WTEXT("End tag 'a' at offset 9 does not match start tag 'c' at offset 6")},
        {WTEXT("<a><b></b><c>"), false, WTEXT("Root element has sibling")}, // the unended a hands b and c to the top
        {WTEXT("<a><!-- x"), false, WTEXT("Comment at offset 3 unterminated")},
        {WTEXT("<a></b></a><c/>"), false, WTEXT("Root element has sibling")}, // replaces the earlier message
        {WTEXT("<a/>"), true, WTEXT("")},
        {WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"x\"></cfg>"), true, WTEXT("")},
        {WTEXT("<!DOCTYPE cfg><!-- c --> <cfg><![CDATA[<x>]]><?pi?>t</cfg>\r\n"), true, WTEXT("")},
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
    ASSERT_TRUE(document.SetText(WTEXT("<cfg/>")));
    EXPECT_FALSE(document.SetText(static_cast<const WChar*>(nullptr)));
    EXPECT_EQ(document.GetError(), WTEXT("Empty document"));
    EXPECT_FALSE(document.FindElement(WTEXT("cfg")));
}

TEST(XmlDocument, FindElementWalksTheSiblingsAfterTheCurrentOne)
{
    XmlDocument document;
    document.SetText(WTEXT("<cfg n='1'/><cfg n='2'/>"));
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    EXPECT_EQ(document.GetAttribute(WTEXT("n")), WTEXT("1"));
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    EXPECT_EQ(document.GetAttribute(WTEXT("n")), WTEXT("2"));
    EXPECT_FALSE(document.FindElement(WTEXT("cfg")));
    EXPECT_EQ(document.GetAttribute(WTEXT("n")), WTEXT("2")); // a failed search does not move
}

TEST(XmlDocument, EnterElementStepsIntoTheCurrentElementOnly)
{
    XmlDocument document;
    document.SetText(WTEXT("<cfg><col no='0'><sub/></col><x/><col no='1'/></cfg>"));
    EXPECT_FALSE(document.EnterElement());
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    EXPECT_FALSE(document.FindElement(WTEXT("cfg")));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_EQ(document.GetAttribute(WTEXT("no")), WTEXT(""));
    ASSERT_TRUE(document.FindElement(WTEXT("col")));
    EXPECT_EQ(document.GetAttribute(WTEXT("no")), WTEXT("0"));
    ASSERT_TRUE(document.FindElement(WTEXT("col")));
    EXPECT_EQ(document.GetAttribute(WTEXT("no")), WTEXT("1"));
    EXPECT_FALSE(document.FindElement(WTEXT("sub")));
}

TEST(XmlDocument, EmptyOrNullNameFindsAnyElement)
{
    XmlDocument document;
    document.SetText(WTEXT("<r><a/><b/></r>"));
    ASSERT_TRUE(document.FindElement(nullptr));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_TRUE(document.FindElement(WTEXT("")));
    EXPECT_TRUE(document.FindElement(nullptr));
    EXPECT_FALSE(document.FindElement(nullptr));
}

TEST(XmlDocument, NamesMatchByPrefixFollowedByAContinuationCharacter)
{
    const struct {
        const WChar* wanted;
        bool found;
    } cases[] = {
        {WTEXT("col"), true},  {WTEXT("col[2]"), true}, {WTEXT("col/x"), true}, {WTEXT("col x"), true}, {WTEXT("col=1"), true},
        {WTEXT("co"), false},  {WTEXT("cols"), false},  {WTEXT("Col"), false},  {WTEXT("col."), false},
    };
    for (const auto& c : cases) {
        XmlDocument document;
        document.SetText(WTEXT("<col/>"));
        EXPECT_EQ(document.FindElement(c.wanted), c.found) << ::testing::PrintToString(WString(c.wanted));
    }
}

TEST(XmlDocument, BrokenDocumentsStillYieldTheirElements)
{
    XmlDocument document;
    document.SetText(WTEXT("<cfg>"));
    EXPECT_TRUE(document.FindElement(WTEXT("cfg")));

    document.SetText(WTEXT("<cfg><col></cfg>"));
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_TRUE(document.FindElement(WTEXT("col")));

    // An element left open hands its children to its parent.
    document.SetText(WTEXT("<cfg a='1'><col/><col/>"));
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    EXPECT_TRUE(document.FindElement(WTEXT("col")));
    EXPECT_TRUE(document.FindElement(WTEXT("col")));
}

TEST(XmlDocument, GetAttributeReadsTheFirstAttributeNamed)
{
    const struct {
        const WChar* tag;
        const WChar* name;
        const WChar* value;
    } cases[] = {
        {WTEXT("<a v=1/>"), WTEXT("v"), WTEXT("1/")},
        {WTEXT("<a v='1'/>"), WTEXT("v"), WTEXT("1")},
        {WTEXT("<cfg delimiter=\"x\"/>"), WTEXT("delim"), WTEXT("")},
        {WTEXT("<cfg delimiter=\"x\"/>"), WTEXT("delimiter"), WTEXT("x")},
        {WTEXT("<cfg delimiter=\"x\"/>"), WTEXT("delimiter[0]"), WTEXT("x")},
        {WTEXT("<a b=\"&lt;&amp;&#65;\"/>"), WTEXT("b"), WTEXT("<&A")},
        {WTEXT("<a b=\"&amp;lt;\"/>"), WTEXT("b"), WTEXT("&lt;")},
        {WTEXT("<a  b = \"x y\" />"), WTEXT("b"), WTEXT("x y")},
        {WTEXT("<a\tb\n=\r'\"'/>"), WTEXT("b"), WTEXT("\"")},
        {WTEXT("<a b=\"'\"/>"), WTEXT("b"), WTEXT("'")},
        {WTEXT("<a x=\"1\" x=\"2\"/>"), WTEXT("x"), WTEXT("1")},
        {WTEXT("<a bx=\"1\" b=\"2\"/>"), WTEXT("b"), WTEXT("2")},
        {WTEXT("<a flag b=\"2\"/>"), WTEXT("b"), WTEXT("2")},
        {WTEXT("<a flag b=\"2\"/>"), WTEXT("flag"), WTEXT("")},
        {WTEXT("<a b=>"), WTEXT("b"), WTEXT("")},
        {WTEXT("<a b=1 c=2>"), WTEXT("c"), WTEXT("2")},
        {WTEXT("<a c=\"/>\" b=\"1\"/>"), WTEXT("b"), WTEXT("1")},
        {WTEXT("<a/b=\"1\">"), WTEXT("b"), WTEXT("")},
        {WTEXT("<a ?b=\"1\">"), WTEXT("b"), WTEXT("")},
        {WTEXT("<a \"q\"=\"1\" b=\"2\">"), WTEXT("b"), WTEXT("2")},
        {WTEXT("<a =\"1\" b=\"2\">"), WTEXT("b"), WTEXT("2")},
        {WTEXT("<a b=\"1\"><c b=\"2\"/></a>"), WTEXT("c"), WTEXT("")},
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
    document.SetText(WTEXT("<a b=\"1\"/>"));
    EXPECT_EQ(document.GetAttribute(WTEXT("b")), WTEXT(""));
    ASSERT_TRUE(document.FindElement(WTEXT("a")));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_EQ(document.GetAttribute(WTEXT("b")), WTEXT(""));
}

TEST(XmlDocument, AQuotedValueRunningToTheEndOfTheTextIsReadToTheEnd)
{
    // The start tag is unterminated, so this is no element; a closed tag before it is.
    XmlDocument document;
    document.SetText(WTEXT("<a b=\"1\"><c d=\"open"));
    ASSERT_TRUE(document.FindElement(WTEXT("a")));
    EXPECT_EQ(document.GetAttribute(WTEXT("b")), WTEXT("1"));
    ASSERT_TRUE(document.EnterElement());
    EXPECT_FALSE(document.FindElement(WTEXT("c")));
}

TEST(XmlDocument, ManyColumnsAndLargeDocumentsParse)
{
    WString text = WTEXT("<cfg>");
    const int columns = 100000;
    for (int i = 0; i < columns; ++i)
        text += WTEXT("<col no=\"") + WString(1, static_cast<WChar>(WTEXT('0') + i % 10)) + WTEXT("\" name=\"c\"/>");
    text += WTEXT("</cfg>");
    XmlDocument document;
    ASSERT_TRUE(document.SetText(text));
    ASSERT_TRUE(document.FindElement(WTEXT("cfg")));
    ASSERT_TRUE(document.EnterElement());
    int found = 0;
    while (document.FindElement(WTEXT("col")))
        ++found;
    EXPECT_EQ(found, columns);
}

} // namespace
