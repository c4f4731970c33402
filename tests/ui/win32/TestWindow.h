#pragma once
// A top-level window for the controls under test, standing in for the dialog (hidden unless a
// test shows it: under Wine a shown window takes seconds to go away): it holds the
// placeholders the controls replace, hands the notifications its children send to whoever
// the test names, and records what reaches it. Tests skip when no window can be made (no
// display).

#include "ui/win32/Win32.h"

#include <commctrl.h>

#include <functional>
#include <vector>

class TestWindow {
public:
    using NotifyHandler = std::function<bool(const NMHDR& header, LRESULT& result)>;

    TestWindow();
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    HWND Handle() const { return window_; }
    // A child of the given class (a hidden static for a placeholder), in creation (tab) order.
    HWND AddChild(int id, const wchar_t* windowClass, DWORD style, RECT place);
    void OnNotify(NotifyHandler handler) { notify_ = std::move(handler); }
    // The commands (WM_COMMAND control ids) and notification codes that reached the window.
    const std::vector<int>& Commands() const { return commands_; }
    const std::vector<UINT>& NotificationCodes() const { return codes_; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    NotifyHandler notify_;
    std::vector<int> commands_;
    std::vector<UINT> codes_;
};

// Handles what is queued for this thread's windows.
void PumpMessages();
// A click at the client point: the press, with the release already queued, as a user's.
void Click(HWND window, int x, int y);
void PressKey(HWND window, WPARAM key);
// Keys as the modal loop of a dialog delivers them: the dialog navigation first.
void PressKeyInDialog(HWND dialog, HWND window, WPARAM key);
void TypeText(HWND window, const wchar_t* text);
// The colour of a client pixel of the window as it draws itself (WM_PRINTCLIENT).
COLORREF PrintedPixel(HWND window, int x, int y);

#define SKIP_WITHOUT_WINDOW(window) \
    if (!(window).Handle())         \
    GTEST_SKIP() << "no display: no window can be made"
