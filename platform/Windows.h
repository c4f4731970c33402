#pragma once
// The Windows headers as the platform layer includes them: without the rarely used parts and
// without the min/max macros that would break the C++ library's names.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
