#pragma once
// Whether a field is a number as a whole, the one rule behind the wizard's type guess, its
// warning signs and the import's account of values that did not convert.

#include "host/Text.h"

#include <cstddef>

// No number is this long: longer fields are text without being looked at, so that a huge
// field costs nothing.
constexpr std::size_t kLongestNumber = 64;

enum class NumberKind { None, Whole, Fraction };

struct NumberReading {
    NumberKind kind = NumberKind::None; // Whole: an int holds it; Fraction: any other number
    bool leadingZero = false;           // the integer part has several digits and begins with 0
};

// Reads the field as a number: optional sign, digits with '.' or ',' as the decimal separator,
// optional exponent, blanks around allowed (the host's number reading skips them). Fields
// longer than any number are None without being looked at. Does not allocate.
NumberReading ReadNumberText(const WString& field);
