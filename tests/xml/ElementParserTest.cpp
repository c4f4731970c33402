#include "xml/ElementParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Parsed {
    WString text;
    ElementTable table;
    WString error;
};

// The parser works on the caller's text, so the text lives beside the table.
std::unique_ptr<Parsed> Parse(const WString& text)
{
    auto parsed = std::make_unique<Parsed>();
    parsed->text = text;
    parsed->table.Reset(static_cast<std::int64_t>(text.size()));
    ElementParser(parsed->text.data(), static_cast<int>(parsed->text.size()), parsed->table, parsed->error).Parse(0);
    return parsed;
}

std::vector<int> Children(const ElementTable& table, int parent)
{
    std::vector<int> children;
    for (int child = table[parent].firstChild; child != 0; child = table[child].nextSibling)
        children.push_back(child);
    return children;
}

int Flags(const ElementTable& table, int element) { return table[element].flags & ~kElementLevelMask; }

TEST(ElementParser, LinksChildrenWithTheLastChildBehindTheFirst)
{
    const auto p = Parse(WTEXT("<r><a/><b x=\"1\"></b><c/></r>"));
    const ElementTable& t = p->table;
    EXPECT_TRUE(p->error.empty());
    EXPECT_EQ(Children(t, 0), std::vector<int>{1});
    EXPECT_EQ(Children(t, 1), (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(t[2].prevSibling, 4);
    EXPECT_EQ(t[3].prevSibling, 2);
    EXPECT_EQ(t[4].prevSibling, 3);
    EXPECT_EQ(t[1].prevSibling, 1);
    for (int element : {2, 3, 4})
        EXPECT_EQ(t[element].parent, 1);
    EXPECT_EQ(t[1].Level(), 0);
    EXPECT_EQ(t[3].Level(), 1);
    EXPECT_EQ(Flags(t, 1), kElementFirstChild);
    EXPECT_EQ(Flags(t, 2), kElementFirstChild | kElementEmpty);
    EXPECT_EQ(Flags(t, 3), 0);
}

TEST(ElementParser, RecordsOffsetsAndTagLengths)
{
    const auto p = Parse(WTEXT("<r><a/><b x=\"1\">t</b ></r>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(t[1].start, 0);
    EXPECT_EQ(t[1].length, 26);
    EXPECT_EQ(t[1].StartTagLength(), 3);
    EXPECT_EQ(t[1].EndTagLength(), 4);
    EXPECT_EQ(t[2].start, 3);
    EXPECT_EQ(t[2].length, 4);
    EXPECT_EQ(t[2].StartTagLength(), 4);
    EXPECT_EQ(t[2].EndTagLength(), 0);
    EXPECT_EQ(t[3].start, 7);
    EXPECT_EQ(t[3].length, 15);
    EXPECT_EQ(t[3].StartTagLength(), 9);
    EXPECT_EQ(t[3].EndTagLength(), 5);
}

TEST(ElementParser, EndTagDeeperInTheStackClosesTheOnesAboveAsNotEnded)
{
    const auto p = Parse(WTEXT("<cfg><col></cfg>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("End tag 'cfg' at offset 10 does not match start tag 'col' at offset 5"));
    EXPECT_EQ(Children(t, 1), std::vector<int>{2});
    EXPECT_EQ(Flags(t, 2), kElementFirstChild | kElementNotEnded);
    EXPECT_EQ(t[2].length, 5);
    EXPECT_EQ(t[2].EndTagLength(), 0);
    EXPECT_EQ(t[1].length, 16);
    EXPECT_EQ(Flags(t, 0) & kDocumentIllFormed, kDocumentIllFormed);
}

TEST(ElementParser, NotEndedElementHandsItsChildrenToItsParent)
{
    const auto p = Parse(WTEXT("<a><b></b><c><d/></c>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("Element 'a' at offset 0 not ended"));
    EXPECT_EQ(Children(t, 0), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(Children(t, 1), std::vector<int>{});
    EXPECT_EQ(Children(t, 3), std::vector<int>{4});
    for (int element : {1, 2, 3})
        EXPECT_EQ(t[element].parent, 0);
    EXPECT_EQ(t[1].prevSibling, 3);
    EXPECT_EQ(t[2].prevSibling, 1);
    EXPECT_EQ(Flags(t, 1), kElementFirstChild | kElementNotEnded);
    EXPECT_EQ(Flags(t, 2), 0);
    EXPECT_EQ(t[1].length, 3);
}

TEST(ElementParser, UnendedNestLiftsEveryLevelInDocumentOrder)
{
    const auto p = Parse(WTEXT("<a><x/><b><y/><c><z/>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("Element 'c' at offset 14 not ended"));
    // a x b y c z, all at the top level.
    EXPECT_EQ(Children(t, 0), (std::vector<int>{1, 2, 3, 4, 5, 6}));
    for (int element = 1; element <= 6; ++element) {
        EXPECT_EQ(t[element].parent, 0);
        EXPECT_EQ(t[element].firstChild, 0);
    }
    EXPECT_EQ(t[1].prevSibling, 6);
}

TEST(ElementParser, UnmatchedEndTagIsIgnoredAndFlagsItsParent)
{
    const auto p = Parse(WTEXT("<a></b><c/></a>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("No start tag for end tag 'b' at offset 3"));
    EXPECT_EQ(Children(t, 1), std::vector<int>{2});
    EXPECT_EQ(Flags(t, 1), kElementFirstChild | kElementIllFormed);
    EXPECT_EQ(t[1].length, 15);
    EXPECT_EQ(Flags(t, 0), kDocumentIllFormed);
}

TEST(ElementParser, IllFormedFlagMovesDownWithEachNotEndedClose)
{
    const auto p = Parse(WTEXT("<p><a><b></x></p>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("No start tag for end tag 'x' at offset 9"));
    EXPECT_EQ(Children(t, 1), (std::vector<int>{2, 3}));
    EXPECT_EQ(Flags(t, 1), kElementFirstChild | kElementIllFormed);
    EXPECT_EQ(Flags(t, 2), kElementFirstChild | kElementNotEnded);
    EXPECT_EQ(Flags(t, 3), kElementNotEnded);
}

TEST(ElementParser, BadNodeFlagsTheDocumentAndItsParent)
{
    const auto p = Parse(WTEXT("<a><b><1/></b></a>"));
    const ElementTable& t = p->table;
    EXPECT_EQ(p->error, WTEXT("Incorrect tag name character at offset 6"));
    EXPECT_EQ(Flags(t, 2), kElementFirstChild | kElementIllFormed);
    EXPECT_EQ(Flags(t, 1), kElementFirstChild);
    EXPECT_EQ(Flags(t, 0), kDocumentIllFormed);
}

TEST(ElementParser, EndTagNameMatchesByTheContinuationRule)
{
    EXPECT_TRUE(Parse(WTEXT("<col></col[2]>"))->error.empty());
    EXPECT_TRUE(Parse(WTEXT("<col></col=x>"))->error.empty());
    EXPECT_TRUE(Parse(WTEXT("<a=b></a=c>"))->error.empty());
    EXPECT_EQ(Parse(WTEXT("<col></co>"))->error, WTEXT("No start tag for end tag 'co' at offset 5"));
    EXPECT_EQ(Parse(WTEXT("<col></cols>"))->error, WTEXT("No start tag for end tag 'cols' at offset 5"));
    EXPECT_EQ(Parse(WTEXT("<A></a>"))->error, WTEXT("No start tag for end tag 'a' at offset 3"));
}

TEST(ElementParser, WritingTheEndTagLengthDropsBit20OfTheStartTagLength)
{
    const WString value(0x100000, WTEXT('v'));
    const auto closed = Parse(WTEXT("<a v=\"") + value + WTEXT("\"></a>"));
    EXPECT_EQ(closed->table[1].StartTagLength(), 0x100000 + 8 - 0x100000);
    EXPECT_EQ(closed->table[1].EndTagLength(), 4);
    const auto empty = Parse(WTEXT("<a v=\"") + value + WTEXT("\"/>"));
    EXPECT_EQ(empty->table[1].StartTagLength(), 0x100000 + 9);
}

TEST(ElementParser, EndTagLengthKeepsTenBits)
{
    const auto p = Parse(WTEXT("<a></a") + WString(1100, WTEXT(' ')) + WTEXT(">"));
    EXPECT_EQ(p->table[1].EndTagLength(), (4 + 1100) & 0x3FF);
}

TEST(ElementParser, DeepNestingParsesWithoutRecursion)
{
    const int depth = 100000;
    WString text;
    for (int i = 0; i < depth; ++i)
        text += WTEXT("<e>");
    for (int i = 0; i < depth; ++i)
        text += WTEXT("</e>");
    const auto p = Parse(text);
    EXPECT_TRUE(p->error.empty());
    EXPECT_EQ(p->table.Count(), depth + 1);
    EXPECT_EQ(p->table[depth].parent, depth - 1);
    EXPECT_EQ(p->table[depth].Level(), (depth - 1) & kElementLevelMask);
    EXPECT_EQ(p->table[1].length, static_cast<int>(text.size()));
}

TEST(ElementParser, DeepUnendedNestBecomesSiblings)
{
    const int depth = 100000;
    WString text;
    for (int i = 0; i < depth; ++i)
        text += WTEXT("<e>");
    for (int i = 0; i < depth; ++i)
        text += WTEXT("</x>");
    const auto p = Parse(text);
    EXPECT_EQ(p->error, WTEXT("No start tag for end tag 'x' at offset 300000"));
    EXPECT_EQ(Children(p->table, 0).size(), static_cast<std::size_t>(depth));
}

// Records are reached by address while the table grows, so growing never moves them.
TEST(ElementTable, RecordsStayInPlaceWhileTheTableGrows)
{
    ElementTable table;
    table.Reset(0);
    const int first = table.Allocate();
    ElementRecord* address = &table[first];
    address->start = 42;
    for (int i = 0; i < 3 * ElementTable::kBlockSize; ++i)
        table.Allocate();
    EXPECT_EQ(&table[first], address);
    EXPECT_EQ(table[first].start, 42);
}

} // namespace
