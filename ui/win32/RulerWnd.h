#pragma once
// The character ruler as a window of its own class: draws a RulerModel double-buffered
// (background, ticks, a label every 10th position, the breaks in their colours, the keyboard
// cursor while it has the focus), moves the cursor with the arrow keys, takes the focus by
// click or Tab, and reports a click with WM_NOTIFY (code kNotifyCode, a RulerNotification)
// to its notification target, or to its parent when there is none. Where breaks go is its
// owner's decision.

#include "ui/RulerModel.h"
#include "ui/win32/Win32.h"

#include <array>
#include <cstdint>

// What WM_NOTIFY carries from the ruler.
struct RulerNotification {
    NMHDR header;             // code kNotifyCode, the ruler's id and window
    int argument;             // for a click: the ruler position under the pointer (-1 off the scale)
    std::uint32_t style;      // the ruler's RulerStyle flags
    std::array<int, 5> values; // for a click: x, y, the break count, the cursor, 0
};

class CRulerWnd final {
public:
    static constexpr UINT kNotifyCode = 4370;

    // Makes the ruler in place of the dialog's placeholder of the same id (its rectangle and
    // tab position). The ruler draws model, which its owner keeps for as long as the ruler
    // lives. Handle() is null when the dialog has no such placeholder.
    CRulerWnd(HWND dialog, int id, RulerModel& model);
    ~CRulerWnd();
    CRulerWnd(const CRulerWnd&) = delete;
    CRulerWnd& operator=(const CRulerWnd&) = delete;

    HWND Handle() const { return window_; }
    RulerModel& Model() { return model_; }
    // The window notifications go to; null (or a window since destroyed) means the parent.
    int SetNotifyTarget(HWND target);
    // Sends the notification to the target or the parent.
    void Notify(int argument, const std::array<int, 5>& values);
    // Draws the model again, after its owner changed it.
    void Redraw();

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint();
    bool MoveCursor(WPARAM key);

    RulerModel& model_;
    HWND window_ = nullptr;
    HWND target_ = nullptr;
};
