// The Win32 dialogs in real windows. They need a display: without one the program skips,
// saying so (exit code 77). Under Wine the display is the X server named by DISPLAY.

#include "DrivenDialog.h"

#include "refhost/CadShimDialogs.h"
#include "ui/win32/Win32.h"

#include <gtest/gtest.h>

#include <objbase.h>

#include <cstdio>

namespace {

// A check that failed cancels every dialog still open, so that the failure shows at once and
// the run goes on, rather than waiting for ctest's time limit.
class CancelDialogsOnFailure : public ::testing::EmptyTestEventListener {
    void OnTestPartResult(const ::testing::TestPartResult& result) override
    {
        if (result.failed())
            CancelEveryOpenDialog();
    }
};

bool UnderWineWithoutDisplay()
{
    const bool underWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return underWine && GetEnvironmentVariableW(L"DISPLAY", nullptr, 0) <= 1;
}

// As the CAD application is: every window at the DPI of its monitor, in physical pixels.
void BecomeDpiAware()
{
    using SetAwareness = BOOL(WINAPI*)(HANDLE);
    const auto set = reinterpret_cast<SetAwareness>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "SetProcessDpiAwarenessContext")));
    if (set)
        set(reinterpret_cast<HANDLE>(-4)); // DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    BecomeDpiAware();
    CadShim::AllowDialogs(true);
    if (UnderWineWithoutDisplay() || !CadShim::StartDialogs()) {
        std::fprintf(stderr, "GUI tests skipped: no display\n");
        return 77;
    }
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    SetDialogThread();
    ::testing::UnitTest::GetInstance()->listeners().Append(new CancelDialogsOnFailure);
    return RUN_ALL_TESTS();
}
