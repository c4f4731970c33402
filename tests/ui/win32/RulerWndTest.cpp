#include "ui/win32/RulerWnd.h"

#include "tests/ui/win32/TestWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

constexpr int kRulerId = 221;
constexpr RECT kRulerPlace{10, 40, 610, 72};
constexpr int kCellWidth = 5;
constexpr RulerColour kBackground = 0xFFC8C8;
constexpr RulerColour kBreakColour = 0x00DCFF;

// The ruler made in its placeholder between two other controls, as in the wizard.
struct RulerInWindow : ::testing::Test {
    TestWindow window;
    RulerModel model;
    HWND before = nullptr;
    HWND after = nullptr;
    std::unique_ptr<CRulerWnd> ruler;
    std::optional<RulerNotification> notified;

    void SetUp() override
    {
        SKIP_WITHOUT_WINDOW(window);
        model.SetCellWidth(kCellWidth);
        model.SetBackgroundColour(kBackground);
        model.SetLargestPosition(100);
        before = window.AddChild(10, L"Button", WS_VISIBLE | WS_TABSTOP, {10, 10, 100, 30});
        window.AddChild(kRulerId, L"Static", 0, kRulerPlace);
        after = window.AddChild(11, L"Button", WS_VISIBLE | WS_TABSTOP, {10, 80, 100, 100});
        ruler = std::make_unique<CRulerWnd>(window.Handle(), kRulerId, model);
        window.OnNotify([this](const NMHDR& header, LRESULT&) {
            if (header.code == CRulerWnd::kNotifyCode)
                notified = reinterpret_cast<const RulerNotification&>(header);
            return false;
        });
    }

    // A pixel along the ruler at the position, for a model whose origin and scroll are 0.
    int PixelAt(int position) const { return model.PixelOf(position); }
};

TEST_F(RulerInWindow, TakesThePlaceholdersIdRectangleAndTabPosition)
{
    ASSERT_NE(ruler->Handle(), nullptr);
    EXPECT_EQ(::GetDlgItem(window.Handle(), kRulerId), ruler->Handle());
    RECT place;
    ::GetWindowRect(ruler->Handle(), &place);
    ::MapWindowPoints(nullptr, window.Handle(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_EQ(place.left, kRulerPlace.left);
    EXPECT_EQ(place.top, kRulerPlace.top);
    EXPECT_EQ(place.right, kRulerPlace.right);
    EXPECT_EQ(place.bottom, kRulerPlace.bottom);
    EXPECT_EQ(::GetNextDlgTabItem(window.Handle(), before, FALSE), ruler->Handle());
    EXPECT_EQ(::GetNextDlgTabItem(window.Handle(), ruler->Handle(), FALSE), after);
    // Placeholders are hidden; the ruler shows with its window.
    EXPECT_TRUE(::GetWindowLongPtrW(ruler->Handle(), GWL_STYLE) & WS_VISIBLE);
}

TEST_F(RulerInWindow, ClickTakesFocusAndNotifiesParentWithPositionAndState)
{
    RulerBreak record;
    record.position = 3;
    model.AddBreak(record);
    const int x = 7 + 12 * kCellWidth;
    Click(ruler->Handle(), x, 9);

    EXPECT_EQ(::GetFocus(), ruler->Handle());
    ASSERT_TRUE(notified.has_value());
    EXPECT_EQ(notified->header.code, 4370u);
    EXPECT_EQ(notified->header.idFrom, static_cast<UINT_PTR>(kRulerId));
    EXPECT_EQ(notified->header.hwndFrom, ruler->Handle());
    EXPECT_EQ(notified->argument, 12);
    EXPECT_EQ(notified->style, model.Style());
    EXPECT_EQ(notified->values, (std::array<int, 5>{x, 9, 1, -1, 0}));
}

TEST_F(RulerInWindow, NotifiesItsTargetWhileTheTargetLives)
{
    TestWindow target;
    std::optional<int> targetArgument;
    target.OnNotify([&](const NMHDR& header, LRESULT&) {
        targetArgument = reinterpret_cast<const RulerNotification&>(header).argument;
        return true;
    });
    EXPECT_EQ(ruler->SetNotifyTarget(target.Handle()), 1);
    ruler->Notify(4, {});
    EXPECT_EQ(targetArgument, 4);
    EXPECT_FALSE(notified.has_value());

    ::DestroyWindow(target.Handle());
    ruler->Notify(5, {});
    ASSERT_TRUE(notified.has_value());
    EXPECT_EQ(notified->argument, 5);
}

TEST_F(RulerInWindow, KeysMoveTheCursorAlongTheScale)
{
    struct Step {
        WPARAM key;
        int cursor;
    };
    // From no cursor: the first move starts at 0; the ends hold.
    const Step steps[] = {{VK_RIGHT, 0}, {VK_RIGHT, 1}, {VK_DOWN, 2}, {VK_LEFT, 1}, {VK_UP, 0}, {VK_LEFT, 0},
                          {VK_NEXT, 10}, {VK_PRIOR, 0}, {VK_END, 100}, {VK_RIGHT, 100}, {VK_HOME, 0}};
    for (const Step& step : steps) {
        PressKey(ruler->Handle(), step.key);
        EXPECT_EQ(model.Cursor(), step.cursor) << "after key " << step.key;
    }
}

TEST_F(RulerInWindow, ArrowsStayWithTheRulerInDialogNavigation)
{
    ::SetFocus(ruler->Handle());
    PressKeyInDialog(window.Handle(), ruler->Handle(), VK_RIGHT);
    PressKeyInDialog(window.Handle(), ruler->Handle(), VK_RIGHT);
    EXPECT_EQ(::GetFocus(), ruler->Handle());
    EXPECT_EQ(model.Cursor(), 1);
}

TEST_F(RulerInWindow, DrawsBackgroundTicksAndBreaksInTheirColours)
{
    RulerBreak record;
    record.position = 33;
    record.colour = kBreakColour;
    model.AddBreak(record);
    RECT client;
    ::GetClientRect(ruler->Handle(), &client);
    const int bottom = client.bottom - 1;

    // A short tick stands on the bottom edge at every position; between them the background.
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(21), bottom), model.TickColour());
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(21) + 2, bottom), kBackground);
    // Only a long tick reaches half-way up.
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(20), client.bottom / 2 + 1), model.TickColour());
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(21), client.bottom / 2 + 1), kBackground);
    // The break: a wide line in its colour beside a thin one in the tick colour.
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(33) + 1, bottom - 2), kBreakColour);
    EXPECT_EQ(PrintedPixel(ruler->Handle(), PixelAt(33), bottom - 2), model.TickColour());
}

TEST_F(RulerInWindow, CursorShowsOnlyWhileFocused)
{
    model.SetThirdColour(0x0000FF);
    model.MoveCursor(40);
    const int x = PixelAt(40);
    ::SetFocus(before);
    EXPECT_EQ(PrintedPixel(ruler->Handle(), x, 0), kBackground);
    ::SetFocus(ruler->Handle());
    EXPECT_EQ(PrintedPixel(ruler->Handle(), x, 0), 0x0000FFu);
}

} // namespace
