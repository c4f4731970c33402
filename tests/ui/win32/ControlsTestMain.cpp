// The wizard's Win32 controls in real windows. They need a display: without one the program
// skips, saying so (exit code 77). Under Wine the display is the X server named by DISPLAY.

#include "tests/ui/win32/TestWindow.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

bool UnderWineWithoutDisplay()
{
    const bool underWine = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    return underWine && ::GetEnvironmentVariableW(L"DISPLAY", nullptr, 0) <= 1;
}

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    if (UnderWineWithoutDisplay() || !TestWindow().Handle()) {
        std::fprintf(stderr, "GUI tests skipped: no display\n");
        return 77;
    }
    return RUN_ALL_TESTS();
}
