#pragma once
// The tint of what needs a second look: a preview cell its column's type cannot convert, a
// field or column name that the configuration would not give back as shown.

#include "ui/win32/Win32.h"

constexpr COLORREF kMarkedBackground = RGB(255, 205, 205);
constexpr COLORREF kMarkedText = RGB(150, 0, 0);
