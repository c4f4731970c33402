#include "host/GisUtility.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

using VeltoGis::CStringArray;
using VeltoGis::Utility::CUtility;
using refhost::testing::TempDir;
using refhost::testing::W;

TEST(FileExists, IsTrueForFilesOnly)
{
    TempDir folder;
    const WString file = folder.WriteFile("Müller.txt", "x");
    EXPECT_NE(CUtility::FileExists(file.c_str(), 0), 0);
    EXPECT_EQ(CUtility::FileExists(W(folder.Path()).c_str(), 0), 0);
    EXPECT_EQ(CUtility::FileExists(folder.FilePath("missing.txt").c_str(), 0), 0);
    EXPECT_EQ(CUtility::FileExists(WTEXT(""), 0), 0);
    EXPECT_EQ(CUtility::FileExists(nullptr, 0), 0);
}

TEST(GetStringIndex, FindsTheFirstExactMatch)
{
    CStringArray strings{WTEXT("Text"), WTEXT("Integer"), WTEXT("Real"), WTEXT("Integer")};
    EXPECT_EQ(CUtility::GetStringIndex(strings, WTEXT("Text")), 0);
    EXPECT_EQ(CUtility::GetStringIndex(strings, WTEXT("Integer")), 1);
    EXPECT_EQ(CUtility::GetStringIndex(strings, WTEXT("real")), -1);
    EXPECT_EQ(CUtility::GetStringIndex(strings, WTEXT("")), -1);
    EXPECT_EQ(CUtility::GetStringIndex(strings, nullptr), -1);
}
