#include "host/GisUtility.h"
#include "host/Utf8.h"
#include "refhost/FilePath.h"

#include <fast_float/fast_float.h>

#include <cstdint>
#include <string>

namespace VeltoGis {
namespace Utility {
namespace {

// The blanks the C library's atof skips.
bool IsBlank(WChar c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool IsDigit(WChar c) { return c >= '0' && c <= '9'; }

const WChar* SkipDigits(const WChar* p)
{
    while (IsDigit(*p))
        ++p;
    return p;
}

// The end of the longest decimal number at text (without its sign): digits, an optional
// '.' or ',' with digits, an optional exponent that has digits. Null when there is no digit
// before the exponent.
const WChar* NumberEnd(const WChar* text)
{
    const WChar* p = SkipDigits(text);
    bool hasDigits = p != text;
    if (*p == '.' || *p == ',') {
        const WChar* fraction = p + 1;
        p = SkipDigits(fraction);
        hasDigits = hasDigits || p != fraction;
    }
    if (!hasDigits)
        return nullptr;
    if (*p == 'e' || *p == 'E') {
        const WChar* exponent = p + 1;
        if (*exponent == '+' || *exponent == '-')
            ++exponent;
        if (IsDigit(*exponent))
            p = SkipDigits(exponent);
    }
    return p;
}

// Parses the number [first, last), whose units are ASCII digits, one separator, 'e' or 'E'
// and an exponent sign, through a narrow copy with '.' as the separator.
double ParseNarrowed(const WChar* first, const WChar* last)
{
    constexpr std::size_t kStackUnits = 96; // room for any ordinary field without allocating
    const auto length = static_cast<std::size_t>(last - first);
    char stackBuffer[kStackUnits];
    std::string longNumber;
    char* narrow = stackBuffer;
    if (length > kStackUnits) {
        longNumber.resize(length);
        narrow = &longNumber[0];
    }
    for (std::size_t i = 0; i < length; ++i)
        narrow[i] = first[i] == ',' ? '.' : static_cast<char>(first[i]);
    double value = 0.0;
    fast_float::from_chars(narrow, narrow + length, value);
    return value;
}

// Clinger's fast path for the short decimals that survey files are made of: a mantissa of at
// most 2^53 and a power of ten of at most 10^22 are both exact doubles, so one division gives
// the correctly rounded result. Returns false (and leaves value alone) for anything else:
// an exponent, too many digits, or no digit at all.
bool ParseShortDecimal(const WChar* text, double& value)
{
    static const double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    constexpr std::uint64_t kExactMantissa = std::uint64_t{1} << 53;
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fractionDigits = 0;
    const WChar* p = text;
    for (; IsDigit(*p) && digits < 19; ++p, ++digits)
        mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    if (*p == '.' || *p == ',') {
        for (++p; IsDigit(*p) && digits < 19; ++p, ++digits, ++fractionDigits)
            mantissa = mantissa * 10 + static_cast<unsigned>(*p - '0');
    }
    if (digits == 0 || IsDigit(*p) || *p == 'e' || *p == 'E' || mantissa > kExactMantissa || fractionDigits > 22)
        return false;
    value = static_cast<double>(mantissa) / kPowersOfTen[fractionDigits];
    return true;
}

} // namespace

double CUtility::AtoF(const WChar* text)
{
    if (!text)
        return 0.0;
    while (IsBlank(*text))
        ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        ++text;
    double value = 0.0;
    if (!ParseShortDecimal(text, value)) {
        const WChar* end = NumberEnd(text);
        if (!end)
            return 0.0;
        value = ParseNarrowed(text, end);
    }
    return negative ? -value : value;
}

int CUtility::FileExists(const WChar* path, int /*flags*/)
{
    if (!path || !*path)
        return 0;
    return refhost::IsRegularFile(refhost::PathFromWide(path)) ? 1 : 0;
}

int CUtility::GetStringIndex(CStringArray& strings, const WChar* text)
{
    if (!text)
        return -1;
    for (std::size_t i = 0; i < strings.size(); ++i) {
        if (strings[i] == text)
            return static_cast<int>(i);
    }
    return -1;
}

} // namespace Utility
} // namespace VeltoGis
