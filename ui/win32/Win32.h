#pragma once
// The Windows headers as the Win32 views include them: after host/CadDialogs.h (whose IDOK
// and IDCANCEL constants the headers' macros of the same value would otherwise break), without
// the rarely used parts and without the min/max macros that would break the C++ library.

#include "host/CadDialogs.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

// The dialog base's SetWindowText member, not the headers' macro for SetWindowTextA/W.
#undef SetWindowText
