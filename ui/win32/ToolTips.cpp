#include "ui/win32/ToolTips.h"

#include "platform/Platform.h"

namespace {

// The following tip's id: far below any window handle, which the other tools go by.
constexpr UINT_PTR kFollowingTool = 1;
// Beside the pointer rather than under it, where the tip would hide what it names.
constexpr int kFollowingOffset = 16;
constexpr int kMaxTipWidth = 480;

} // namespace

ToolTips::ToolTips(HWND owner) : owner_(owner)
{
    tips_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                              CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                              static_cast<HINSTANCE>(Platform::ModuleInstance()), nullptr);
    if (!tips_)
        return;
    ::SendMessageW(tips_, TTM_SETDELAYTIME, TTDT_INITIAL, MAKELPARAM(kInitialDelay, 0));
    ::SendMessageW(tips_, TTM_SETMAXTIPWIDTH, 0, kMaxTipWidth);
    TOOLINFOW following = FollowingTool(WString());
    ::SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&following));
}

ToolTips::~ToolTips()
{
    if (tips_)
        ::DestroyWindow(tips_);
}

TOOLINFOW ToolTips::Tool(HWND control, const WString& text) const
{
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = owner_;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = const_cast<WChar*>(text.c_str());
    return tool;
}

TOOLINFOW ToolTips::FollowingTool(const WString& text) const
{
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
    tool.hwnd = owner_;
    tool.uId = kFollowingTool;
    tool.lpszText = const_cast<WChar*>(text.c_str());
    return tool;
}

void ToolTips::SetTip(HWND control, const WString& text)
{
    if (!tips_ || !control)
        return;
    TOOLINFOW tool = Tool(control, text);
    ::SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty())
        ::SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void ToolTips::Follow(POINT screenPoint, const WString& text)
{
    if (!tips_)
        return;
    TOOLINFOW tool = FollowingTool(text);
    if (text.empty()) {
        ::SendMessageW(tips_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
        following_.clear();
        return;
    }
    // Set only when it changes, so that the tip follows the pointer without flicker.
    if (text != following_) {
        following_ = text;
        ::SendMessageW(tips_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
    }
    ::SendMessageW(tips_, TTM_TRACKPOSITION, 0,
                   MAKELPARAM(screenPoint.x + kFollowingOffset, screenPoint.y + kFollowingOffset));
    ::SendMessageW(tips_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
}
