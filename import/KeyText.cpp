#include "import/KeyText.h"

#include <cwctype>

void UpperCaseInPlace(WString& text)
{
    for (WChar& unit : text) {
        if (unit >= 0xD800 && unit <= 0xDFFF)
            continue;
        unit = static_cast<WChar>(std::towupper(static_cast<std::wint_t>(unit)));
    }
}
