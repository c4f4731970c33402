// The CAD shim's dialog base on Windows where no dialog may or can be shown: nothing is made.

#include "tests/refhost/windows/DialogTesting.h"

using shimtest::TestDialog;

TEST(DialogsNotAllowed, DoModalShowsNothingAndDoesNotInitialise)
{
    CadShim::AllowDialogs(false);
    CadShim::ClearRecordedDialogs();
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(), kDialogNotShown);
    EXPECT_EQ(dialog.initCalls, 0);
    EXPECT_TRUE(CadShim::RecordedDialogs().empty());
}

TEST(DialogsWithoutDesktop, AllowedDialogsAreNotShown)
{
    CadShim::AllowDialogs(true);
    const bool started = CadShim::StartDialogs();
    if (started) {
        CadShim::AllowDialogs(false);
        GTEST_SKIP() << "there is a desktop";
    }
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(), kDialogNotShown);
    EXPECT_EQ(dialog.initCalls, 0);
    CadShim::AllowDialogs(false);
}
