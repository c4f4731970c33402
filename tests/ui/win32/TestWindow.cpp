#include "tests/ui/win32/TestWindow.h"

namespace {

constexpr wchar_t kTestWindowClass[] = L"VeltoXTesselTestWindow";

} // namespace

TestWindow::TestWindow()
{
    static const bool initialised = [] {
        INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES | ICC_STANDARD_CLASSES};
        ::InitCommonControlsEx(&controls);
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof windowClass;
        windowClass.lpfnWndProc = &TestWindow::Procedure;
        windowClass.hInstance = ::GetModuleHandleW(nullptr);
        windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        windowClass.lpszClassName = kTestWindowClass;
        return ::RegisterClassExW(&windowClass) != 0;
    }();
    if (!initialised)
        return;
    window_ = ::CreateWindowExW(WS_EX_CONTROLPARENT, kTestWindowClass, L"", WS_OVERLAPPEDWINDOW, 0, 0,
                                800, 600, nullptr, nullptr, ::GetModuleHandleW(nullptr), this);
    PumpMessages();
}

TestWindow::~TestWindow()
{
    if (window_)
        ::DestroyWindow(window_);
}

HWND TestWindow::AddChild(int id, const wchar_t* windowClass, DWORD style, RECT place)
{
    HWND child = ::CreateWindowExW(0, windowClass, L"", WS_CHILD | style, place.left, place.top,
                                   place.right - place.left, place.bottom - place.top, window_,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ::GetModuleHandleW(nullptr),
                                   nullptr);
    ::SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(::GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return child;
}

LRESULT CALLBACK TestWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE)
        ::SetWindowLongPtrW(window, GWLP_USERDATA,
                            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    auto* self = reinterpret_cast<TestWindow*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self && message == WM_NOTIFY) {
        const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
        self->codes_.push_back(header.code);
        LRESULT result = 0;
        if (self->notify_ && self->notify_(header, result))
            return result;
    }
    if (self && message == WM_COMMAND)
        self->commands_.push_back(LOWORD(wParam));
    if (message == WM_NCDESTROY)
        ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    return ::DefWindowProcW(window, message, wParam, lParam);
}

void PumpMessages()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

void Click(HWND window, int x, int y)
{
    const LPARAM point = MAKELPARAM(x, y);
    ::PostMessageW(window, WM_LBUTTONUP, 0, point);
    ::SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PumpMessages();
}

void PressKey(HWND window, WPARAM key)
{
    ::SendMessageW(window, WM_KEYDOWN, key, 1);
    ::SendMessageW(window, WM_KEYUP, key, 0xC0000001);
    PumpMessages();
}

void PressKeyInDialog(HWND dialog, HWND window, WPARAM key)
{
    MSG message{window, WM_KEYDOWN, key, 1, 0, {}};
    if (!::IsDialogMessageW(dialog, &message)) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    PumpMessages();
}

void TypeText(HWND window, const wchar_t* text)
{
    for (const wchar_t* c = text; *c; ++c)
        ::SendMessageW(window, WM_CHAR, *c, 1);
}

COLORREF PrintedPixel(HWND window, int x, int y)
{
    RECT client;
    ::GetClientRect(window, &client);
    HDC screen = ::GetDC(window);
    HDC memory = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, client.right, client.bottom);
    HGDIOBJ previous = ::SelectObject(memory, bitmap);
    ::SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory), PRF_CLIENT | PRF_ERASEBKGND);
    const COLORREF pixel = ::GetPixel(memory, x, y);
    ::SelectObject(memory, previous);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(window, screen);
    return pixel;
}
