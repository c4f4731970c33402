#include "host/CadPlatform.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

using refhost::testing::TempDir;
using refhost::testing::W;

namespace {

class CadShimTest : public ::testing::Test {
protected:
    void SetUp() override { CadShim::ClearRecordings(); }
    void TearDown() override
    {
        CadShim::ClearRecordings();
        CadShim::SetSupportPath({});
    }
};

// Asks with the keywords as the module's file question does.
int AskKeyword(WString& answer, int resultLength = 32)
{
    acedInitGet(0, WTEXT("Overwrite Append Cancel"));
    WChar result[32] = {};
    const int status = acedGetKword(WTEXT("Overwrite? "), result, resultLength);
    answer = result;
    return status;
}

} // namespace

TEST_F(CadShimTest, KeywordPromptsTakeQueuedAnswers)
{
    CadShim::QueueKeywordAnswers({WTEXT("overwrite"), WTEXT(" ap "), WTEXT(""), WTEXT("maybe")});
    WString answer;
    EXPECT_EQ(AskKeyword(answer), RTNORM);
    EXPECT_EQ(answer, WTEXT("Overwrite"));
    EXPECT_EQ(AskKeyword(answer), RTNORM);
    EXPECT_EQ(answer, WTEXT("Append"));
    EXPECT_EQ(AskKeyword(answer), RTNONE);
    EXPECT_EQ(AskKeyword(answer), RTCAN); // not a keyword, and nobody else to ask
    EXPECT_EQ(AskKeyword(answer), RTCAN); // no answers left
    ASSERT_EQ(CadShim::RecordedPrompts().size(), 5u);
    EXPECT_EQ(CadShim::RecordedPrompts()[0], WTEXT("Overwrite? "));
}

TEST_F(CadShimTest, KeywordAnswerThatDoesNotFitIsAnError)
{
    CadShim::QueueKeywordAnswers({WTEXT("Overwrite")});
    WString answer;
    EXPECT_EQ(AskKeyword(answer, 9), RTERROR);
    EXPECT_EQ(answer, WTEXT(""));
}

TEST_F(CadShimTest, FindFileSearchesTheSupportPath)
{
    TempDir folder;
    folder.WriteFile("support.txt", "x");
    WChar result[4096] = {};
    EXPECT_EQ(acedFindFile(WTEXT("support.txt"), result, 4096), RTERROR);
    CadShim::SetSupportPath({"/nonexistent", folder.Path()});
    ASSERT_EQ(acedFindFile(WTEXT("support.txt"), result, 4096), RTNORM);
    EXPECT_EQ(WString(result), folder.FilePath("support.txt"));
    EXPECT_EQ(acedFindFile(WTEXT("support.txt"), result, 4), RTERROR);
    EXPECT_EQ(acedFindFile(WTEXT("missing.txt"), result, 4096), RTERROR);
}
