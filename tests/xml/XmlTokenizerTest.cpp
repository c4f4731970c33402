#include "xml/XmlTokenizer.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct NodeShape {
    int type;
    int start;
    int length;
};

bool operator==(const NodeShape& a, const NodeShape& b)
{
    return a.type == b.type && a.start == b.start && a.length == b.length;
}

void PrintTo(const NodeShape& n, std::ostream* os)
{
    *os << "{type " << n.type << ", start " << n.start << ", length " << n.length << "}";
}

std::vector<NodeShape> ReadAll(const WString& text)
{
    XmlTokenizer tokenizer(text.data(), static_cast<int>(text.size()));
    std::vector<NodeShape> nodes;
    for (int offset = 0;;) {
        const XmlNode node = tokenizer.ReadNode(offset);
        if (node.type == kNodeEndOfDocument)
            break;
        nodes.push_back({node.type, node.start, node.length});
        offset = node.start + node.length;
    }
    return nodes;
}

XmlNode FirstNode(const WString& text)
{
    return XmlTokenizer(text.data(), static_cast<int>(text.size())).ReadNode(0);
}

struct NodeCase {
    const char16_t* text;
    std::vector<NodeShape> nodes;
};

TEST(XmlTokenizer, ReportsEveryNodeTypeWithItsExtent)
{
    const NodeCase cases[] = {
        {u"abc", {{kNodeText, 0, 3}}},
        {u" \t\r\n", {{kNodeWhitespace, 0, 4}}},
        {u"  x <a>", {{kNodeText, 0, 4}, {kNodeStartTag, 4, 3}}},
        {u"<a>\n</a >", {{kNodeStartTag, 0, 3}, {kNodeWhitespace, 3, 1}, {kNodeEndTag, 4, 5}}},
        {u"<?xml version=\"1.0\"?>", {{kNodeProcessingInstruction, 0, 21}}},
        {u"<?\?>", {{kNodeProcessingInstruction, 0, 4}}},
        {u"<!-- c -->", {{kNodeComment, 0, 10}}},
        {u"<!---->", {{kNodeComment, 0, 7}}},
        {u"<![CDATA[a<b>]]>", {{kNodeCData, 0, 16}}},
        {u"<!DOCTYPE d [<!ELEMENT d ANY><!-- > ' --><!ATTLIST d a CDATA '>'>]>x",
         {{kNodeDeclaration, 0, 67}, {kNodeText, 67, 1}}},
        {u"<!DOCTYPE d SYSTEM \"a>b\">", {{kNodeDeclaration, 0, 25}}},
        {u"<!ENTITY e \"a>b\">", {{kNodeDeclaration, 0, 17}}},
        {u"<!ATTLIST a b CDATA '>'>", {{kNodeDeclaration, 0, 24}}},
        {u"<!NOTATION n SYSTEM 'x'>", {{kNodeDeclaration, 0, 24}}},
        {u"<a b='>'>", {{kNodeStartTag, 0, 9}}},
        {u"<a b=\"'>\" c='\"'>", {{kNodeStartTag, 0, 16}}},
        {u"<a <b>", {{kNodeStartTag, 0, 6}}},
        {u"<\u00e9/><_/><:/><Z/>", {{kNodeStartTag, 0, 4}, {kNodeStartTag, 4, 4}, {kNodeStartTag, 8, 4}, {kNodeStartTag, 12, 4}}},
    };
    for (const NodeCase& c : cases)
        EXPECT_EQ(ReadAll(c.text), c.nodes) << "text: " << ::testing::PrintToString(WString(c.text));
}

TEST(XmlTokenizer, TagNamesEndAtWhitespaceSlashOrGreaterThan)
{
    const XmlNode start = FirstNode(u"<col\tno=\"1\"/>");
    EXPECT_EQ(start.nameStart, 1);
    EXPECT_EQ(start.nameLength, 3);
    const XmlNode end = FirstNode(u"</cfg >");
    EXPECT_EQ(end.nameStart, 2);
    EXPECT_EQ(end.nameLength, 3);
    EXPECT_EQ(FirstNode(u"<a=b>").nameLength, 3);
}

TEST(XmlTokenizer, SlashMakesAnEmptyElementOnlyAfterWhitespaceQuoteOrTheName)
{
    const struct {
        const char16_t* text;
        bool empty;
    } cases[] = {
        {u"<x/>", true},      {u"<a v='1'/>", true}, {u"<a v=\"1\"/>", true}, {u"<a />", true},
        {u"<a\t/>", true},    {u"<a v=1/>", false},  {u"<a b/>", false},     {u"<a/ >", false},
        {u"<a>", false},
    };
    for (const auto& c : cases) {
        const XmlNode node = FirstNode(c.text);
        ASSERT_EQ(node.type, kNodeStartTag) << ::testing::PrintToString(WString(c.text));
        EXPECT_EQ(node.emptyElement, c.empty) << ::testing::PrintToString(WString(c.text));
    }
}

TEST(XmlTokenizer, BadNodesCarryTheirMessageAtTheNodeStart)
{
    const struct {
        const char16_t* text;
        const char16_t* message;
    } cases[] = {
        {u"<1>", u"Incorrect tag name character at offset 0"},
        {u"ab< a>", u"Incorrect tag name character at offset 2"},
        {u"<!x>", u"Incorrect ! tag at offset 0"},
        {u"<!-x>", u"Incorrect comment tag at offset 0"},
        {u"<![x>", u"Incorrect tag at offset 0"},
        {u"<", u"tag at offset 0 unterminated"},
        {u"<!", u"tag at offset 0 unterminated"},
        {u"<!-", u"tag at offset 0 unterminated"},
        {u"<![", u"tag at offset 0 unterminated"},
        {u"<a", u"Element tag at offset 0 unterminated"},
        {u"<a b='>", u"Element tag at offset 0 unterminated"},
        {u"</a", u"Element end tag at offset 0 unterminated"},
        {u"<![CDATA[x]>", u"CDATA Section at offset 0 unterminated"},
        {u"<?pi ?", u"Processing instruction at offset 0 unterminated"},
        {u"<?>", u"Processing instruction at offset 0 unterminated"},
        {u"<!-- x --", u"Comment at offset 0 unterminated"},
        {u"<!-->", u"Comment at offset 0 unterminated"},
        {u"<!DOCTYPE d [<!ELEMENT d ANY>", u"Doctype at offset 0 unterminated"},
        {u"<!DOCTYPE d [<!-- ]> ", u"Doctype at offset 0 unterminated"},
        {u"<!ELEMENT x", u"Doctype at offset 0 unterminated"},
    };
    for (const auto& c : cases) {
        const WString text(c.text);
        XmlTokenizer tokenizer(text.data(), static_cast<int>(text.size()));
        XmlNode node;
        for (int offset = 0; (node = tokenizer.ReadNode(offset)).type != kNodeBad; offset = node.start + node.length)
            ASSERT_NE(node.type, kNodeEndOfDocument) << ::testing::PrintToString(text);
        EXPECT_EQ(DescribeBadNode(node), WString(c.message)) << ::testing::PrintToString(text);
    }
}

TEST(XmlTokenizer, IncorrectTagCoversOnlyItsLessThanSoReadingGoesOn)
{
    EXPECT_EQ(ReadAll(u"<<a>"), (std::vector<NodeShape>{{kNodeBad, 0, 1}, {kNodeStartTag, 1, 3}}));
    EXPECT_EQ(ReadAll(u"x<a"), (std::vector<NodeShape>{{kNodeText, 0, 1}, {kNodeBad, 1, 2}}));
}

} // namespace
