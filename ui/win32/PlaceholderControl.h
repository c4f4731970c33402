#pragma once
// A control of the view's own made where the dialog template keeps a placeholder for it.

#include "ui/win32/Win32.h"

// Makes a child window of windowClass with id controlId in the rectangle of the dialog's
// control placeholderId, at its place in the tab order and with the dialog's font, and
// destroys the placeholder. createParam reaches the new window's WM_NCCREATE. Null (and the
// placeholder stays) when the dialog has no such control or the window cannot be made.
HWND ReplacePlaceholder(HWND dialog, int placeholderId, int controlId, const wchar_t* windowClass, DWORD style,
                        DWORD extendedStyle, void* createParam = nullptr);
