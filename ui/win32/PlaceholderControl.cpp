#include "ui/win32/PlaceholderControl.h"

#include "platform/Platform.h"

HWND ReplacePlaceholder(HWND dialog, int placeholderId, int controlId, const wchar_t* windowClass, DWORD style,
                        DWORD extendedStyle, void* createParam)
{
    HWND placeholder = ::GetDlgItem(dialog, placeholderId);
    if (!placeholder)
        return nullptr;
    RECT place;
    ::GetWindowRect(placeholder, &place);
    ::MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    HWND control = ::CreateWindowExW(extendedStyle, windowClass, L"", style | WS_CHILD | WS_VISIBLE, place.left,
                                     place.top, place.right - place.left, place.bottom - place.top, dialog,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)),
                                     static_cast<HINSTANCE>(Platform::ModuleInstance()), createParam);
    if (!control)
        return nullptr;
    // The z-order of a dialog's children is its tab order: right behind the placeholder.
    ::SetWindowPos(control, placeholder, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::SendMessageW(control, WM_SETFONT, ::SendMessageW(dialog, WM_GETFONT, 0, 0), FALSE);
    ::DestroyWindow(placeholder);
    return control;
}
