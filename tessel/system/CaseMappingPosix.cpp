#include "tessel/system/CaseMapping.h"

#include <locale.h>
#include <wctype.h>

namespace tessel {

// Without C.UTF-8 the C library's own locale maps what it knows.
WChar ToLetterCase(WChar unit, LetterCase to)
{
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    const auto c = static_cast<wint_t>(unit);
    if (!locale)
        return static_cast<WChar>(to == LetterCase::Upper ? towupper(c) : towlower(c));
    return static_cast<WChar>(to == LetterCase::Upper ? towupper_l(c, locale) : towlower_l(c, locale));
}

} // namespace tessel
