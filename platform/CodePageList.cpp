// The Windows code pages a host may offer, whatever the system: its converters decide which
// of them are there.

#include "platform/Platform.h"

namespace {

// OEM (DOS) pages, the ANSI pages of Windows, Thai, the East Asian double-byte pages, the
// Macintosh Roman page, KOI8, the ISO 8859 pages as Windows numbers them, and UTF-8.
constexpr unsigned kWindowsCodePages[] = {
    437,   737,   775,   850,   852,   855,   857,   858,   860,   861,   862,   863,   864,   865,
    866,   869,   874,   932,   936,   949,   950,   1250,  1251,  1252,  1253,  1254,  1255,  1256,
    1257,  1258,  10000, 20866, 21866, 28591, 28592, 28593, 28594, 28595, 28596, 28597, 28598,
    28599, 28603, 28605, 65001};

} // namespace

namespace Platform {

std::vector<unsigned> ConvertibleCodePages()
{
    std::vector<unsigned> pages;
    for (const unsigned codePage : kWindowsCodePages) {
        if (IsConvertibleCodePage(codePage))
            pages.push_back(codePage);
    }
    return pages;
}

} // namespace Platform
