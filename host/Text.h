#pragma once
// The module's text types. The CAD host and its GIS framework work in UTF-16 code units;
// so does every part of this module. UTF-8 is met only at the edges (file names on POSIX
// systems, the reference host's terminal and formats), through host/Utf8.h.

#include <string>

#ifdef _WIN32
using WChar = wchar_t;
#define WTEXT(literal) L##literal
#else
using WChar = char16_t;
#define WTEXT(literal) u##literal
#endif

using WString = std::basic_string<WChar>;

static_assert(sizeof(WChar) == 2, "the host's wide characters are UTF-16 code units");
