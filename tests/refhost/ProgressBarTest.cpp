#include "host/GisUtility.h"

#include <gtest/gtest.h>

using VeltoGis::Utility::CCoreProgressBar;
using CallKind = CCoreProgressBar::CallKind;

namespace {

class ProgressBar : public ::testing::Test {
protected:
    void TearDown() override
    {
        bar->StopRecording();
        bar->Hide();
    }

    CCoreProgressBar* bar = CCoreProgressBar::Instance();
};

} // namespace

TEST_F(ProgressBar, RecordsARunInOrder)
{
    bar->StartRecording();
    bar->SaveState();
    bar->Show(WTEXT("Importing"), 0, 3);
    for (int position = 1; position <= 3; ++position)
        bar->SetPosition(position);
    bar->Hide();
    bar->RestoreState();

    const auto& calls = bar->RecordedCalls();
    ASSERT_EQ(calls.size(), 7u);
    EXPECT_EQ(calls[0].kind, CallKind::SaveState);
    EXPECT_EQ(calls[1].kind, CallKind::Show);
    EXPECT_EQ(calls[1].text, WTEXT("Importing"));
    EXPECT_EQ(calls[1].value, 0);
    EXPECT_EQ(calls[1].upper, 3);
    for (int i = 2; i <= 4; ++i) {
        EXPECT_EQ(calls[i].kind, CallKind::SetPosition);
        EXPECT_EQ(calls[i].value, i - 1);
    }
    EXPECT_EQ(calls[5].kind, CallKind::Hide);
    EXPECT_EQ(calls[6].kind, CallKind::RestoreState);
}

TEST_F(ProgressBar, KeepsNothingWhileNotRecording)
{
    bar->StartRecording();
    bar->StopRecording();
    bar->Show(WTEXT("Long run"), 0, 1000000);
    for (int position = 1; position <= 1000000; ++position)
        bar->SetPosition(position);
    EXPECT_TRUE(bar->RecordedCalls().empty());
    EXPECT_EQ(bar->Position(), 1000000);
}

TEST_F(ProgressBar, StartingARecordingForgetsTheLastOne)
{
    bar->StartRecording();
    bar->SetPosition(5);
    bar->StartRecording();
    EXPECT_TRUE(bar->RecordedCalls().empty());
}

TEST_F(ProgressBar, RestoreStateBringsBackTheSavedBar)
{
    bar->Show(WTEXT("Outer"), 0, 10);
    bar->SetPosition(4);
    bar->SaveState();
    bar->Show(WTEXT("Inner"), 0, 100);
    bar->SetPosition(99);
    bar->Hide();
    EXPECT_FALSE(bar->IsShown());
    bar->RestoreState();
    EXPECT_TRUE(bar->IsShown());
    EXPECT_EQ(bar->Position(), 4);

    bar->Hide();
    bar->SaveState();
    bar->Show(WTEXT("Alone"), 0, 5);
    bar->RestoreState();
    EXPECT_FALSE(bar->IsShown());
}
