#include "tessel/system/CaseMapping.h"

#include "platform/Windows.h"

namespace tessel {

WChar ToLetterCase(WChar unit, LetterCase to)
{
    WChar mapped = unit;
    const DWORD flags = to == LetterCase::Upper ? LCMAP_UPPERCASE : LCMAP_LOWERCASE;
    return ::LCMapStringW(LOCALE_INVARIANT, flags, &unit, 1, &mapped, 1) == 1 ? mapped : unit;
}

} // namespace tessel
