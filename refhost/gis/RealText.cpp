#include "refhost/gis/RealText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "the digits are gathered in registers for a little-endian machine"
#endif

namespace refhost {
namespace {

// Plain notation from here up to (not including) kPlainLimit; zero is plain too.
constexpr double kPlainMin = 1e-7;
constexpr double kPlainLimit = 1e21;

// Survey values carry up to nine decimals (a tenth of a millimetre in degrees, a nanometre in
// metres). A value with more is nearly always computed, with 15 to 17 significant digits,
// which the quick way could not write anyway.
constexpr int kMaxQuickDecimals = 9;
constexpr double kPowersOfTen[kMaxQuickDecimals + 1] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// Below 2^50 the rounded product |value| * 10^k lies within 3/16 of the integer m whose
// decimal m * 10^-k reads back to the value (relative error 2^-53 of the value, plus half an
// ulp of the product), so rounding the product finds m whenever it exists; and no second
// integer that near can read back too (that would take a product of 2^52). Adding and taking
// away 2^52 rounds such a product to the nearest integer as a double, for the check.
constexpr double kQuickUnitsLimit = 1125899906842624.0; // 2^50
constexpr double kRoundingShift = 4503599627370496.0;   // 2^52

// The same rounding straight to an integer (in the default rounding mode, to nearest), for the
// digits, without waiting for the rounding as a double.
std::int64_t RoundToInteger(double product)
{
#if defined(__SSE2__)
    return _mm_cvtsd_si64(_mm_set_sd(product));
#else
    return std::llrint(product);
#endif
}

constexpr std::uint64_t kEightZeros = 0x3030303030303030ULL; // "00000000"

constexpr char kDigitPairs[] = "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
                               "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
                               "8081828384858687888990919293949596979899";

// The two characters of pair < 100, the first in the lower byte.
std::uint64_t PairChars(std::uint64_t pair)
{
    std::uint16_t chars;
    std::memcpy(&chars, kDigitPairs + 2 * pair, 2);
    return chars;
}

// Digits are taken from a fixed-point number: multiplying its fraction by 100 brings the next
// pair of digits above the binary point; multiplying by 10^4 skips a pair, so that the last
// pair does not wait for the ones before it. With 47 fraction bits and the factor below,
// n / 10^6 is exact enough to give every digit of each n < 10^8; with 56 bits, n / 10^8 for
// each n < 10^9 (both checked for every n).
constexpr int kEightDigitsBits = 47;
constexpr std::uint64_t kEightDigitsFactor = (std::uint64_t(1) << kEightDigitsBits) / 1000000 + 1;
constexpr int kNineDigitsBits = 56;
constexpr std::uint64_t kNineDigitsFactor = (std::uint64_t(1) << kNineDigitsBits) / 100000000 + 1;

// Four pairs of digits from a fixed-point number with `bits` fraction bits whose whole part is
// the first pair, as characters in one register, the first in the lowest byte.
template <int bits>
std::uint64_t FourPairs(std::uint64_t fixedPoint)
{
    constexpr std::uint64_t kMask = (std::uint64_t(1) << bits) - 1;
    const std::uint64_t second = (fixedPoint & kMask) * 100;
    const std::uint64_t third = (second & kMask) * 100;
    const std::uint64_t fourth = ((fixedPoint * 10000) & kMask) * 100; // wraps harmlessly
    return PairChars(fixedPoint >> bits) | PairChars(second >> bits) << 16 | PairChars(third >> bits) << 32 |
           PairChars(fourth >> bits) << 48;
}

// The eight decimal digits of n < 10^8 as characters, the first in the lowest byte.
std::uint64_t EightDigits(std::uint64_t n) { return FourPairs<kEightDigitsBits>(n * kEightDigitsFactor); }

// Writes n < 10^16 without leading zeros (0 as "0"), stored in whole blocks of 8 characters:
// may write up to 16 characters from out.
char* WriteWholeNumber(std::uint64_t n, char* out)
{
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    int length = 8;
    if (n < 100000000) {
        first = EightDigits(n);
    } else {
        first = EightDigits(n / 100000000);
        last = EightDigits(n % 100000000);
        length = 16;
    }
    // Leading '0' characters, at most 7 so that one digit stays.
    const int leadingZeros = __builtin_ctzll((first ^ kEightZeros) | 0x8000000000000000ULL) / 8;
    first >>= 8 * leadingZeros;
    std::memcpy(out, &first, 8);
    std::memcpy(out + 8 - leadingZeros, &last, 8);
    return out + length - leadingZeros;
}

// Writes the point and the decimals of a fraction given as nine digits in fixed point
// (fraction * 10^-9 * kNineDigitsFactor), without the zeros that end them; nothing when the
// fraction is 0. Stores 10 characters from out.
char* WriteDecimals(std::uint64_t fixedPoint, char* out)
{
    constexpr std::uint64_t kMask = (std::uint64_t(1) << kNineDigitsBits) - 1;
    const std::uint64_t head = fixedPoint >> kNineDigitsBits;
    const std::uint64_t tail = FourPairs<kNineDigitsBits>((fixedPoint & kMask) * 100);
    const std::uint64_t tailNonZero = tail ^ kEightZeros;
    const int decimals = tailNonZero != 0 ? 9 - __builtin_clzll(tailNonZero) / 8 : (head != 0 ? 1 : 0);
    out[0] = '.';
    out[1] = static_cast<char>('0' + head);
    std::memcpy(out + 2, &tail, 8);
    return decimals != 0 ? out + 1 + decimals : out;
}

// The nine-digit fixed point of the fraction of units * 10^-scale is units * 10^(9 - scale)
// less the whole part * 10^9, times kNineDigitsFactor; the factors are merged, and the
// products may wrap, since their difference (below 10^9 * kNineDigitsFactor) is exact modulo
// 2^64.
constexpr std::uint64_t kFractionFactors[kMaxQuickDecimals + 1] = {
    1000000000 * kNineDigitsFactor, 100000000 * kNineDigitsFactor, 10000000 * kNineDigitsFactor,
    1000000 * kNineDigitsFactor,    100000 * kNineDigitsFactor,    10000 * kNineDigitsFactor,
    1000 * kNineDigitsFactor,       100 * kNineDigitsFactor,       10 * kNineDigitsFactor,
    kNineDigitsFactor};

// The plain text of a value with at most kMaxQuickDecimals decimals, or nullptr. The value is
// scaled once, by the most decimals that keep the product below 2^50: every shorter decimal
// that reads back to the value appears there too, with zeros appended, so the integer found
// there without its final zeros is the shortest. The division of exact operands is correctly
// rounded, so comparing it with the value is exactly the question whether the decimal reads
// back. That decimal and the value have the same whole part (an integer between them would be
// nearer to the decimal than the value), so the whole part is the value truncated, and the
// decimals what the units hold beyond it.
char* AppendFewDecimals(double value, char* out)
{
    const double magnitude = std::fabs(value);
    int scale = kMaxQuickDecimals;
    while (magnitude * kPowersOfTen[scale] >= kQuickUnitsLimit) {
        if (--scale < 0)
            return nullptr;
    }
    const double product = magnitude * kPowersOfTen[scale];
    const double rounded = (product + kRoundingShift) - kRoundingShift;
    if (rounded / kPowersOfTen[scale] != magnitude)
        return nullptr;
    const auto units = static_cast<std::uint64_t>(RoundToInteger(product));
    const auto whole = static_cast<std::uint64_t>(static_cast<std::int64_t>(magnitude));
    if (std::signbit(value))
        *out++ = '-';
    out = WriteWholeNumber(whole, out);
    return WriteDecimals(units * kFractionFactors[scale] - whole * kFractionFactors[0], out);
}

} // namespace

char* AppendRealText(double value, char* out) noexcept
{
    const double magnitude = std::fabs(value);
    if ((magnitude >= kPlainMin && magnitude < kPlainLimit) || magnitude == 0) {
        if (char* end = AppendFewDecimals(value, out))
            return end;
        return std::to_chars(out, out + kRealTextCapacity, value, std::chars_format::fixed).ptr;
    }
    return std::to_chars(out, out + kRealTextCapacity, value, std::chars_format::scientific).ptr;
}

} // namespace refhost
