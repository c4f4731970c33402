// The ruler's position under a point and its breaks, kept by identifier.

#include "ui/RulerModel.h"

#include <gtest/gtest.h>

namespace {

RulerBreak BreakAt(int position, int id)
{
    RulerBreak record;
    record.position = position;
    record.id = id;
    return record;
}

} // namespace

TEST(RulerModel, PositionUnderAPointRoundsHalfUpAndIsMinusOneOffTheScale)
{
    struct Case {
        int origin, scroll, x, expected;
    };
    // Cell width 4, largest position 100: position = (x - origin + scroll - 7) / 4.
    const Case cases[] = {
        {0, 0, 7, 0},   {0, 0, 8, 0},   {0, 0, 9, 1},    {0, 0, 5, 0},    {0, 0, 4, -1},
        {0, 0, 0, -1},  {0, 0, 407, 100}, {0, 0, 408, 100}, {0, 0, 409, -1}, {10, 0, 17, 0},
        {10, 0, 14, -1}, {0, 40, 7, 10}, {0, 40, 367, 100}, {0, 40, 369, -1},
    };
    for (const Case& c : cases) {
        RulerModel ruler;
        ruler.SetOrigin(c.origin);
        ruler.SetScrollOffset(c.scroll);
        EXPECT_EQ(ruler.PositionAt(c.x, 999), c.expected) << "origin " << c.origin << " scroll " << c.scroll
                                                          << " x " << c.x;
    }
    RulerModel vertical;
    vertical.SetStyle(RulerVertical | RulerTicksNear);
    EXPECT_EQ(vertical.PositionAt(999, 11), 1); // along y
    vertical.SetCellWidth(0);
    EXPECT_EQ(vertical.PositionAt(0, 11), -1);
}

TEST(RulerModel, BreakPositionsAreSortedAndEachListedOnce)
{
    RulerModel ruler;
    for (int position : {30, 10, 30, 20, 10})
        ruler.AddBreak(BreakAt(position, ruler.BreakCount()));
    EXPECT_EQ(ruler.BreakCount(), 5);
    EXPECT_EQ(ruler.BreakPositions(), (PositionList{10, 20, 30}));
    ruler.RemoveAllBreaks();
    EXPECT_EQ(ruler.BreakCount(), 0);
    EXPECT_TRUE(ruler.BreakPositions().empty());
}

TEST(RulerModel, RemovalByIdentifierClosesTheSlotsAndKeepsTheOtherIdentifiers)
{
    RulerModel ruler;
    EXPECT_EQ(ruler.AddBreak(BreakAt(5, 7)), 0);
    EXPECT_EQ(ruler.AddBreak(BreakAt(15, 3)), 1);
    EXPECT_EQ(ruler.AddBreak(BreakAt(25, 9)), 2);

    EXPECT_EQ(ruler.RemoveBreak(0), -1); // a slot number is not an identifier
    EXPECT_EQ(ruler.BreakCount(), 3);
    EXPECT_EQ(ruler.RemoveBreak(7), 0);
    EXPECT_EQ(ruler.BreakCount(), 2);
    EXPECT_EQ(ruler.BreakInSlot(0).id, 3);
    EXPECT_EQ(ruler.BreakInSlot(1).id, 9);
    ASSERT_NE(ruler.FindBreak(9), nullptr);
    EXPECT_EQ(ruler.FindBreak(9)->position, 25);
    EXPECT_EQ(ruler.FindBreak(7), nullptr);
    EXPECT_EQ(ruler.RemoveBreak(7), -1);
}

TEST(RulerModel, MarkersAreDrawnWithinTheClientAreaWidenedByTheHalfWidth)
{
    RulerModel ruler;
    ruler.SetOrigin(3);
    ruler.SetScrollOffset(8);
    EXPECT_EQ(ruler.PixelOf(10), 35);
    // Half-width 6: a marker is drawn from 6 pixels left of the client area to 6 right of it.
    EXPECT_TRUE(ruler.MarkerVisible(-6, 100));
    EXPECT_FALSE(ruler.MarkerVisible(-7, 100));
    EXPECT_TRUE(ruler.MarkerVisible(106, 100));
    EXPECT_FALSE(ruler.MarkerVisible(107, 100));
    ruler.MoveCursor(-3);
    EXPECT_EQ(ruler.Cursor(), 0);
    ruler.MoveCursor(500);
    EXPECT_EQ(ruler.Cursor(), 100);
}
