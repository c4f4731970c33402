#pragma once
// A failed check in a test that drives a dialog ends every dialog still open, at once: a
// dialog waits for input that its driver, having stopped at the failure, no longer gives, and
// the failure would only show when the test program is killed. Each toolkit says how its open
// dialogs (and message boxes) are ended; the GUI test program appends the listener to gtest's.

#include <gtest/gtest.h>

#include <functional>
#include <utility>

class EndDialogsOnFailure final : public ::testing::EmptyTestEventListener {
public:
    explicit EndDialogsOnFailure(std::function<void()> endOpenDialogs) : endOpenDialogs_(std::move(endOpenDialogs)) {}

    void OnTestPartResult(const ::testing::TestPartResult& result) override
    {
        if (result.failed())
            endOpenDialogs_();
    }

private:
    std::function<void()> endOpenDialogs_;
};
