#include "ui/win32/RunBesideMessageLoop.h"

#include "tests/ui/win32/TestWindow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <stdexcept>

namespace {

constexpr int kButtonId = 12;
constexpr int kPostedCommand = 77;

bool Contains(const std::vector<int>& commands, int command)
{
    return std::find(commands.begin(), commands.end(), command) != commands.end();
}

// The work waits until the window has handled a message posted while it ran: it can end only
// if the calling thread keeps dispatching.
TEST(RunBesideMessageLoop, WindowsKeepHandlingMessagesButGetNoInputWhileWorkRuns)
{
    TestWindow window;
    SKIP_WITHOUT_WINDOW(window);
    ::ShowWindow(window.Handle(), SW_SHOWNA); // the windows on screen are the ones disabled
    HWND button = window.AddChild(kButtonId, L"Button", WS_VISIBLE, {10, 10, 100, 30});
    std::promise<void> release;
    std::future<void> released = release.get_future();
    bool releasedOnce = false;
    bool enabledWhileWorking = true;
    int polls = 0;

    RunBesideMessageLoop([&] { released.wait(); },
                         [&] {
                             if (++polls == 1) {
                                 enabledWhileWorking = ::IsWindowEnabled(window.Handle()) != FALSE;
                                 ::PostMessageW(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                                 ::PostMessageW(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
                                 ::PostMessageW(window.Handle(), WM_COMMAND, kPostedCommand, 0);
                             } else if (!releasedOnce && Contains(window.Commands(), kPostedCommand)) {
                                 releasedOnce = true;
                                 release.set_value();
                             }
                         });

    EXPECT_FALSE(enabledWhileWorking);
    EXPECT_TRUE(::IsWindowEnabled(window.Handle()));
    EXPECT_TRUE(Contains(window.Commands(), kPostedCommand));
    EXPECT_FALSE(Contains(window.Commands(), kButtonId)) << "a click reached a window while the work ran";
}

TEST(RunBesideMessageLoop, PollsOnceTheWorkHasEndedAndRethrowsWhatItThrew)
{
    std::atomic<bool> workDone{false};
    bool polledAfterWork = false;
    RunBesideMessageLoop([&] { workDone = true; }, [&] { polledAfterWork = workDone.load(); });
    EXPECT_TRUE(polledAfterWork);
    EXPECT_THROW(RunBesideMessageLoop([] { throw std::runtime_error("work failed"); }, [] {}), std::runtime_error);
}

} // namespace
