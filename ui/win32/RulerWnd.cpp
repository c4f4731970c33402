#include "ui/win32/RulerWnd.h"

#include "platform/Platform.h"
#include "ui/win32/PlaceholderControl.h"
#include "ui/win32/RulerDrawing.h"
#include "ui/win32/WindowDpi.h"

namespace {

constexpr wchar_t kRulerClass[] = L"VeltoXTesselRuler";

HINSTANCE ModuleInstance() { return static_cast<HINSTANCE>(Platform::ModuleInstance()); }

// The class lives while a ruler does: a module that is unloaded must not leave a class
// behind whose procedure pointed into it.
int& RulersAlive()
{
    static int count = 0;
    return count;
}

void RegisterRulerClass(WNDPROC procedure)
{
    if (RulersAlive()++ > 0)
        return;
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = ModuleInstance();
    windowClass.hCursor = ::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.lpszClassName = kRulerClass;
    ::RegisterClassExW(&windowClass);
}

void UnregisterRulerClass()
{
    if (--RulersAlive() == 0)
        ::UnregisterClassW(kRulerClass, ModuleInstance());
}

// Moves along the scale: the arrows by one, the page keys by ten, Home and End to the ends.
int CursorStep(WPARAM key, int largest)
{
    switch (key) {
    case VK_LEFT: case VK_UP: return -1;
    case VK_RIGHT: case VK_DOWN: return 1;
    case VK_PRIOR: return -10;
    case VK_NEXT: return 10;
    case VK_HOME: return -largest;
    case VK_END: return largest;
    default: return 0;
    }
}

} // namespace

CRulerWnd::CRulerWnd(HWND dialog, int id, RulerModel& model) : model_(model)
{
    RegisterRulerClass(&CRulerWnd::Procedure);
    window_ = ReplacePlaceholder(dialog, id, id, kRulerClass, WS_TABSTOP | WS_BORDER, 0, this);
}

CRulerWnd::~CRulerWnd()
{
    if (window_)
        ::DestroyWindow(window_);
    UnregisterRulerClass();
}

int CRulerWnd::SetNotifyTarget(HWND target)
{
    target_ = target;
    return 1;
}

void CRulerWnd::Notify(int argument, const std::array<int, 5>& values)
{
    HWND target = target_ && ::IsWindow(target_) ? target_ : ::GetParent(window_);
    if (!target)
        return;
    RulerNotification notification{};
    notification.header.hwndFrom = window_;
    notification.header.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(window_));
    notification.header.code = kNotifyCode;
    notification.argument = argument;
    notification.style = model_.Style();
    notification.values = values;
    ::SendMessageW(target, WM_NOTIFY, notification.header.idFrom, reinterpret_cast<LPARAM>(&notification));
}

void CRulerWnd::Redraw()
{
    if (window_)
        ::InvalidateRect(window_, nullptr, FALSE);
}

LRESULT CALLBACK CRulerWnd::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        auto* ruler = static_cast<CRulerWnd*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        ruler->window_ = window;
        ::SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(ruler));
    }
    auto* ruler = reinterpret_cast<CRulerWnd*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!ruler)
        return ::DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        ::SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        ruler->window_ = nullptr;
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
    return ruler->OnMessage(message, wParam, lParam);
}

LRESULT CRulerWnd::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: Paint(); return 0;
    case WM_PRINTCLIENT: { // PrintWindow and screenshots
        RECT client;
        ::GetClientRect(window_, &client);
        DrawRuler(reinterpret_cast<HDC>(wParam), model_, {client.right, client.bottom},
                  static_cast<int>(WindowDpi(window_)), ::GetFocus() == window_);
        return 0;
    }
    case WM_ERASEBKGND: return 1; // the paint covers every pixel
    case WM_GETDLGCODE: return DLGC_WANTARROWS;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE: Redraw(); return 0;
    case WM_LBUTTONDOWN: {
        ::SetFocus(window_);
        const int x = static_cast<short>(LOWORD(lParam));
        const int y = static_cast<short>(HIWORD(lParam));
        Notify(model_.PositionAt(x, y), {x, y, model_.BreakCount(), model_.Cursor(), 0});
        return 0;
    }
    case WM_KEYDOWN:
        if (MoveCursor(wParam))
            return 0;
        break;
    default: break;
    }
    return ::DefWindowProcW(window_, message, wParam, lParam);
}

bool CRulerWnd::MoveCursor(WPARAM key)
{
    const int step = CursorStep(key, model_.LargestPosition());
    if (step == 0)
        return false;
    model_.MoveCursor(::GetKeyState(VK_SHIFT) < 0 ? step * 10 : step);
    Redraw();
    return true;
}

void CRulerWnd::Paint()
{
    PAINTSTRUCT paint;
    HDC screen = ::BeginPaint(window_, &paint);
    RECT client;
    ::GetClientRect(window_, &client);
    const SIZE size{client.right, client.bottom};
    // Drawn off screen and copied in one step: no flicker while breaks come and go.
    HDC buffer = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, size.cx > 0 ? size.cx : 1, size.cy > 0 ? size.cy : 1);
    HGDIOBJ previous = ::SelectObject(buffer, bitmap);
    DrawRuler(buffer, model_, size, static_cast<int>(WindowDpi(window_)), ::GetFocus() == window_);
    ::BitBlt(screen, 0, 0, size.cx, size.cy, buffer, 0, 0, SRCCOPY);
    ::SelectObject(buffer, previous);
    ::DeleteObject(bitmap);
    ::DeleteDC(buffer);
    ::EndPaint(window_, &paint);
}
