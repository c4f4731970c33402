#pragma once
// A dialog's tooltip control: tips that show when the pointer rests on a control (after
// 500 ms), and one tip that follows the pointer, for a control whose tip depends on where the
// pointer is (the ruler's character position).

#include "host/Text.h"
#include "ui/win32/Win32.h"

#include <commctrl.h>

class ToolTips final {
public:
    static constexpr int kInitialDelay = 500; // milliseconds

    explicit ToolTips(HWND owner);
    ~ToolTips();
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;

    HWND Handle() const { return tips_; }
    // The tip shown while the pointer rests on control; empty removes it. Lines break at '\n'.
    void SetTip(HWND control, const WString& text);
    // Shows the following tip beside the screen point with text; empty text hides it.
    void Follow(POINT screenPoint, const WString& text);
    // What the following tip shows, "" while hidden.
    const WString& Following() const { return following_; }

private:
    TOOLINFOW Tool(HWND control, const WString& text) const;
    TOOLINFOW FollowingTool(const WString& text) const;

    HWND owner_;
    HWND tips_ = nullptr;
    WString following_;
};
