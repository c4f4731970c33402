#include "ui/win32/ToolTips.h"

#include "tests/ui/win32/TestWindow.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

// The tool's text as the tooltip control holds it, found by id among its tools; null when it
// has no such tool.
std::optional<WString> ToolText(HWND tips, UINT_PTR id)
{
    const int count = static_cast<int>(::SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        TOOLINFOW tool{};
        tool.cbSize = sizeof tool;
        if (!::SendMessageW(tips, TTM_ENUMTOOLSW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&tool)) ||
            tool.uId != id)
            continue;
        wchar_t text[256] = {};
        tool.lpszText = text;
        ::SendMessageW(tips, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&tool));
        return WString(text);
    }
    return std::nullopt;
}

TEST(ToolTips, ControlTipsAreAddedReplacedAndRemovedAfterTheInitialDelay)
{
    TestWindow window;
    SKIP_WITHOUT_WINDOW(window);
    HWND button = window.AddChild(222, L"Button", WS_VISIBLE, {10, 10, 40, 40});
    ToolTips tips(window.Handle());
    ASSERT_NE(tips.Handle(), nullptr);
    EXPECT_EQ(::SendMessageW(tips.Handle(), TTM_GETDELAYTIME, TTDT_INITIAL, 0), 500);

    const UINT_PTR id = reinterpret_cast<UINT_PTR>(button);
    tips.SetTip(button, L"Remove all breaks");
    EXPECT_EQ(ToolText(tips.Handle(), id), WString(L"Remove all breaks"));
    tips.SetTip(button, L"A character is missing\nfrom the code page");
    EXPECT_EQ(ToolText(tips.Handle(), id), WString(L"A character is missing\nfrom the code page"));
    tips.SetTip(button, L"");
    EXPECT_EQ(ToolText(tips.Handle(), id), std::nullopt);
}

TEST(ToolTips, FollowingTipShowsItsTextBesideThePointAndHidesWhenEmpty)
{
    TestWindow window;
    SKIP_WITHOUT_WINDOW(window);
    ToolTips tips(window.Handle());
    tips.Follow({300, 200}, L"12");
    PumpMessages();
    EXPECT_TRUE(::IsWindowVisible(tips.Handle()));
    wchar_t shownText[16] = {};
    ::GetWindowTextW(tips.Handle(), shownText, 16); // the tip being shown
    EXPECT_EQ(WString(shownText), L"12");
    RECT shown;
    ::GetWindowRect(tips.Handle(), &shown);
    EXPECT_GT(shown.left, 300);
    EXPECT_GT(shown.top, 200);

    tips.Follow({300, 200}, L"");
    PumpMessages();
    EXPECT_FALSE(::IsWindowVisible(tips.Handle()));
    EXPECT_EQ(tips.Following(), L"");
}

} // namespace
