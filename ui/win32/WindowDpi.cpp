#include "ui/win32/WindowDpi.h"

#include "ui/win32/Win32.h"

namespace {

constexpr unsigned kBaseDpi = 96;

// GetDpiForWindow exists from Windows 10 1607 on; looked up so that the module still loads on
// older systems, which get the screen's DPI.
using GetDpiForWindowCall = UINT(WINAPI*)(HWND);

GetDpiForWindowCall DpiForWindowCall()
{
    static const GetDpiForWindowCall call = [] {
        HMODULE user32 = GetModuleHandleW(L"user32.dll");
        return user32 ? reinterpret_cast<GetDpiForWindowCall>(
                            reinterpret_cast<void*>(GetProcAddress(user32, "GetDpiForWindow")))
                      : nullptr;
    }();
    return call;
}

unsigned ScreenDpi()
{
    HDC screen = GetDC(nullptr);
    const int dpi = screen ? GetDeviceCaps(screen, LOGPIXELSX) : 0;
    if (screen)
        ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<unsigned>(dpi) : kBaseDpi;
}

} // namespace

unsigned WindowDpi(DialogWindow window)
{
    if (const GetDpiForWindowCall call = DpiForWindowCall(); call && window) {
        if (const UINT dpi = call(window))
            return dpi;
    }
    return ScreenDpi();
}

int ScaledToWindow(DialogWindow window, int pixelsAt96)
{
    return MulDiv(pixelsAt96, static_cast<int>(WindowDpi(window)), static_cast<int>(kBaseDpi));
}
