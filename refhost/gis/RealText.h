#pragma once
// Reals as the reference host shows them to people: the shortest decimal that reads back to
// the same double, in plain notation wherever that stays readable, so that a coordinate of
// 5000000 reads "5000000" and not "5e+06".

#include <cstddef>

namespace refhost {

// Room that AppendRealText needs at its output. The longest text has 26 characters
// ("-0.00000012345678901234567"); the rest is scratch for copying digits in whole blocks.
inline constexpr std::size_t kRealTextCapacity = 40;

// Writes at `out` the shortest decimal text that reads back to exactly `value` (the digits of
// std::to_chars's shortest form) and returns the end of the text; no terminating NUL. Zero and
// every value with 1e-7 <= |value| < 1e21 are written in plain notation without an exponent
// ("0", "-0", "300", "-12.5", "5000000", "0.0000001", "123456789012345680"), the other finite
// values in scientific notation ("1e+21", "1e-08", "5e-324"), and NaN and infinities as "nan",
// "-nan", "inf" and "-inf". `out` must have room for kRealTextCapacity characters. Locale-free; does
// not throw and does not allocate.
char* AppendRealText(double value, char* out) noexcept;

} // namespace refhost
