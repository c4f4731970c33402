#pragma once
// What the tests of the dialog base on Windows share: a dialog on the test program's template
// that records what the base calls, and a fixture that skips where no dialog can be shown.

#include "host/CadDialogs.h" // before the Windows headers: their IDOK and IDCANCEL are macros
#include "refhost/CadShimDialogs.h"
#include "tests/refhost/windows/ShimTestDialogs.h"

#include <windows.h>
// The base's member, not the Windows headers' macro.
#undef SetWindowText

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace shimtest {

class TestDialog : public CAdUiBaseDialog {
public:
    explicit TestDialog(void* instance = nullptr) : CAdUiBaseDialog(SHIM_TEST_DIALOG, instance) {}

    HWND Handle() const { return Window(); }
    using CAdUiBaseDialog::SetWindowText;

    int initCalls = 0;
    std::function<bool(TestDialog&)> onInit;           // OnInitDialog's work and answer
    std::function<bool(MSG&)> onPreTranslate;           // PreTranslateMessage's answer
    std::vector<MSG> preTranslated;                     // every message PreTranslateMessage saw

    bool PreTranslateMessage(MSG* message) override
    {
        preTranslated.push_back(*message);
        return onPreTranslate && onPreTranslate(*message);
    }

protected:
    bool OnInitDialog() override
    {
        ++initCalls;
        return onInit ? onInit(*this) : true;
    }
};

// A dialog that keeps the focus while the user works in the drawing, as the module's do.
class KeepFocusDialog : public TestDialog {
public:
    using TestDialog::TestDialog;
    long OnAcadKeepFocus() override { return 1; }
};

class DialogsOnWindows : public ::testing::Test {
protected:
    void SetUp() override
    {
        CadShim::AllowDialogs(true);
        CadShim::ClearRecordedDialogs();
        if (!CadShim::StartDialogs())
            GTEST_SKIP() << "no desktop to show dialogs on (under Wine: DISPLAY names no X display)";
    }
    void TearDown() override
    {
        CadShim::AllowDialogs(false);
        CadShim::ClearRecordedDialogs();
    }
};

// Runs work once from inside the next modal loop that takes messages on this thread (a message
// box's, a dialog's): the message is posted now and dispatched by that loop.
void RunInsideNextModalLoop(std::function<void()> work);

// The top-level windows of this thread that are visible and owned by owner.
std::vector<HWND> OwnedWindows(HWND owner);

} // namespace shimtest
