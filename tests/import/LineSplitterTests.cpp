// The line splitter that the import run and the dialog's preview share.

#include "import/LineSplitter.h"

#include <gtest/gtest.h>

namespace {

ImportTxtConfiguration FixedWidth(PositionList positions)
{
    ImportTxtConfiguration configuration;
    configuration.SetMode(1);
    configuration.SetComments(WTEXT("#;"));
    configuration.GetPositions() = std::move(positions);
    return configuration;
}

} // namespace

TEST(LineSplitter, CommentsDelimitedAndFixedWidthLinesFollowTheConfiguration)
{
    ImportTxtConfiguration delimited;
    delimited.SetDelimiters({WTEXT(" ")});
    delimited.SetComments(WTEXT("#"));
    LineSplitter splitter(delimited);
    EXPECT_TRUE(splitter.IsComment(WTEXT("# header")));
    EXPECT_FALSE(splitter.IsComment(WTEXT(" # not at the start")));
    WString line = WTEXT("P1   10.5 20.25\r\n");
    FieldList fields;
    ASSERT_EQ(splitter.Split(line, fields), 3u);
    EXPECT_EQ(fields[1], WTEXT("10.5"));
    EXPECT_EQ(fields[2], WTEXT("20.25"));

    splitter.ReadFieldsUpTo(0);
    line = WTEXT("P2 1 2");
    EXPECT_EQ(splitter.Split(line, fields), 0u);
}

TEST(LineSplitter, EachSplitterGrowsItsOwnPositionsFromTheConfiguration)
{
    const ImportTxtConfiguration configuration = FixedWidth({2, 5});
    LineSplitter first(configuration), second(configuration);
    FieldList fields;
    WString line = WTEXT("AABBBCC");
    ASSERT_EQ(first.Split(line, fields), 3u);
    EXPECT_EQ(fields[2], WTEXT("CC"));
    // The first line's length now ends the last column of this splitter only.
    line = WTEXT("XXYYYZZZZ");
    ASSERT_EQ(first.Split(line, fields), 4u);
    EXPECT_EQ(fields[2], WTEXT("ZZ"));
    EXPECT_EQ(fields[3], WTEXT("ZZ"));
    ASSERT_EQ(second.Split(line, fields), 3u);
    EXPECT_EQ(fields[2], WTEXT("ZZZZ"));
    EXPECT_EQ(configuration.GetPositions(), (PositionList{2, 5}));
}
