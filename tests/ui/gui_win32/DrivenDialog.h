#pragma once
// Driving the module's dialogs in real windows under the CAD shim's own modal run. The steps
// run on a thread of their own and reach the dialog as a person's input would: posted key
// messages and button clicks, which the dialog's thread takes from its queue through the
// modal loop (PreTranslateMessage, the dialog navigation, dispatch). A window the dialog opens
// over itself (a message box, the system's file chooser) can be driven the same way while the
// dialog's thread waits in it.

#include "host/CadDialogs.h"
#include "host/Text.h"

#include <functional>
#include <string>

class DrivenDialog {
public:
    explicit DrivenDialog(DialogWindow window) : window_(window) {}

    DialogWindow Window() const { return window_; }
    bool IsOpen() const;
    // The dialog's control; records a failure and returns null when it has none.
    DialogWindow Control(int id) const;

    // Runs work in the dialog's thread, between two of its messages, and waits for it.
    void InDialogThread(const std::function<void()>& work) const;
    // Waits until the dialog's thread has handled every message posted to the dialog so far;
    // false when the dialog closed first (or its thread stopped answering).
    bool Settle() const;

    // A click of the control: a button's BM_CLICK (as the mouse gives it), the mouse in the
    // middle of any other control (an edit then has the focus).
    void Click(int id) const;
    // A click of the left button at a client point of one of the dialog's windows (a list's
    // cell, a place on the ruler): the press and the release, as the mouse gives them.
    void ClickAt(DialogWindow window, int x, int y) const;
    // Focuses the control, selects what it holds and types text over it, one WM_CHAR a unit.
    void TypeText(int id, const WString& text) const;
    // Types text where the focus is (an editor the dialog opened in place), one WM_CHAR a unit.
    void Type(const WString& text) const;
    // A key pressed and released in the control that has the focus (VK_RETURN, VK_ESCAPE,
    // VK_TAB, ...).
    void PressKey(unsigned virtualKey) const;
    // Alt and a letter: the dialog's mnemonics.
    void PressAltAnd(char letter) const;
    // The window's close box.
    void ClickCloseBox() const;

    // The id of the control that has the focus; 0 when none of the dialog's has.
    int FocusedId() const;
    // The window that has the focus in the dialog's thread.
    DialogWindow Focused() const;
    WString Text(int id) const;
    bool IsChecked(int id) const;
    bool IsEnabled(int id) const;

    // The window the dialog's thread shows over the dialog (a message box, a file chooser),
    // once it is there; null when none comes.
    DialogWindow WaitForWindowAbove() const;

    // A PNG of the dialog as shown in the build's screenshots folder, named after name and
    // the window's DPI; returns its path ("" when it could not be written).
    std::string Screenshot(const std::string& name) const;

private:
    DialogWindow window_;
};

// Runs showDialog, which shows one dialog modally and returns what it returns, with steps
// driving that dialog from a thread of their own. Steps that end with the dialog still open
// fail the test, and the dialog is cancelled.
int RunDriven(const std::function<int()>& showDialog, const std::function<void(const DrivenDialog&)>& steps);

// Every dialog and message box of the test's dialog thread, cancelled (as Esc would): a check
// that failed shows at once instead of waiting for a dialog nobody will close.
void CancelEveryOpenDialog();
// The thread the dialogs run in; set once by the test program's main.
void SetDialogThread();
