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
    const WChar* text;
    std::vector<NodeShape> nodes;
};

TEST(XmlTokenizer, ReportsEveryNodeTypeWithItsExtent)
{
    const NodeCase cases[] = {
        {WTEXT("abc"), {{kNodeText, 0, 3}}},
        {WTEXT(" \t\r\n"), {{kNodeWhitespace, 0, 4}}},
        {WTEXT("  x <a>"), {{kNodeText, 0, 4}, {kNodeStartTag, 4, 3}}},
        {WTEXT("<a>\n</a >"), {{kNodeStartTag, 0, 3}, {kNodeWhitespace, 3, 1}, {kNodeEndTag, 4, 5}}},
        {WTEXT("<?xml version=\"1.0\"?>"), {{kNodeProcessingInstruction, 0, 21}}},
        {WTEXT("<?\?>"), {{kNodeProcessingInstruction, 0, 4}}},
        {WTEXT("<!-- c -->"), {{kNodeComment, 0, 10}}},
        {WTEXT("<!---->"), {{kNodeComment, 0, 7}}},
        {WTEXT("<![CDATA[a<b>]]>"), {{kNodeCData, 0, 16}}},
        {WTEXT("<!DOCTYPE d [<!ELEMENT d ANY><!-- > ' --><!ATTLIST d a CDATA '>'>]>x"),
         {{kNodeDeclaration, 0, 67}, {kNodeText, 67, 1}}},
        {WTEXT("<!DOCTYPE d SYSTEM \"a>b\">"), {{kNodeDeclaration, 0, 25}}},
        {WTEXT("<!ENTITY e \"a>b\">"), {{kNodeDeclaration, 0, 17}}},
        {WTEXT("<!ATTLIST a b CDATA '>'>"), {{kNodeDeclaration, 0, 24}}},
        {WTEXT("<!NOTATION n SYSTEM 'x'>"), {{kNodeDeclaration, 0, 24}}},
        {WTEXT("<a b='>'>"), {{kNodeStartTag, 0, 9}}},
        {WTEXT("<a b=\"'>\" c='\"'>"), {{kNodeStartTag, 0, 16}}},
        {WTEXT("<a <b>"), {{kNodeStartTag, 0, 6}}},
        {WTEXT("<\u00e9/><_/><:/><Z/>"), {{kNodeStartTag, 0, 4}, {kNodeStartTag, 4, 4}, {kNodeStartTag, 8, 4}, {kNodeStartTag, 12, 4}}},
    };
    for (const NodeCase& c : cases)
        EXPECT_EQ(ReadAll(c.text), c.nodes) << "text: " << ::testing::PrintToString(WString(c.text));
}

TEST(XmlTokenizer, TagNamesEndAtWhitespaceSlashOrGreaterThan)
{
    const XmlNode start = FirstNode(WTEXT("<col\tno=\"1\"/>"));
    EXPECT_EQ(start.nameStart, 1);
    EXPECT_EQ(start.nameLength, 3);
    const XmlNode end = FirstNode(WTEXT("</cfg >"));
    EXPECT_EQ(end.nameStart, 2);
    EXPECT_EQ(end.nameLength, 3);
    EXPECT_EQ(FirstNode(WTEXT("<a=b>")).nameLength, 3);
}

TEST(XmlTokenizer, SlashMakesAnEmptyElementOnlyAfterWhitespaceQuoteOrTheName)
{
    const struct {
        const WChar* text;
        bool empty;
    } cases[] = {
        {WTEXT("<x/>"), true},      {WTEXT("<a v='1'/>"), true}, {WTEXT("<a v=\"1\"/>"), true}, {WTEXT("<a />"), true},
        {WTEXT("<a\t/>"), true},    {WTEXT("<a v=1/>"), false},  {WTEXT("<a b/>"), false},     {WTEXT("<a/ >"), false},
        {WTEXT("<a>"), false},
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
        const WChar* text;
        const WChar* message;
    } cases[] = {
        {WTEXT("<1>"), WTEXT("Incorrect tag name character at offset 0")},
        {WTEXT("ab< a>"), WTEXT("Incorrect tag name character at offset 2")},
        {WTEXT("<!x>"), WTEXT("Incorrect ! tag at offset 0")},
        {WTEXT("<!-x>"), WTEXT("Incorrect comment tag at offset 0")},
        {WTEXT("<![x>"), WTEXT("Incorrect tag at offset 0")},
        {WTEXT("<"), WTEXT("tag at offset 0 unterminated")},
        {WTEXT("<!"), WTEXT("tag at offset 0 unterminated")},
        {WTEXT("<!-"), WTEXT("tag at offset 0 unterminated")},
        {WTEXT("<!["), WTEXT("tag at offset 0 unterminated")},
        {WTEXT("<a"), WTEXT("Element tag at offset 0 unterminated")},
        {WTEXT("<a b='>"), WTEXT("Element tag at offset 0 unterminated")},
        {WTEXT("</a"), WTEXT("Element end tag at offset 0 unterminated")},
        {WTEXT("<![CDATA[x]>"), WTEXT("CDATA Section at offset 0 unterminated")},
        {WTEXT("<?pi ?"), WTEXT("Processing instruction at offset 0 unterminated")},
        {WTEXT("<?>"), WTEXT("Processing instruction at offset 0 unterminated")},
        {WTEXT("<!-- x --"), WTEXT("Comment at offset 0 unterminated")},
        {WTEXT("<!-->"), WTEXT("Comment at offset 0 unterminated")},
        {WTEXT("<!DOCTYPE d [<!ELEMENT d ANY>"), WTEXT("Doctype at offset 0 unterminated")},
        {WTEXT("<!DOCTYPE d [<!-- ]> "), WTEXT("Doctype at offset 0 unterminated")},
        {WTEXT("<!ELEMENT x"), WTEXT("Doctype at offset 0 unterminated")},
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
    EXPECT_EQ(ReadAll(WTEXT("<<a>")), (std::vector<NodeShape>{{kNodeBad, 0, 1}, {kNodeStartTag, 1, 3}}));
    EXPECT_EQ(ReadAll(WTEXT("x<a")), (std::vector<NodeShape>{{kNodeText, 0, 1}, {kNodeBad, 1, 2}}));
}

} // namespace
