#pragma once
// Small helpers for UTF-16 text shared by every folder of the module. None of them
// allocates more than its result, none throws, and none depends on the C locale.

#include "host/Text.h"

#include <cstdint>
#include <initializer_list>

// UTF-16 surrogate halves (taken as 32-bit codes, so a code point above 0xFFFF is neither).
constexpr bool IsHighSurrogate(std::uint32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool IsLowSurrogate(std::uint32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// Reads a decimal integer the way the C runtime's _wtoi does: leading blanks
// (space, \t \n \v \f \r) are skipped, one '+' or '-' is accepted, digits are read up to
// the first non-digit; no digit gives 0. A value out of the int range saturates.
// A null pointer reads as 0.
int WideToInt(const WChar* text);
inline int WideToInt(const WString& text) { return WideToInt(text.c_str()); }

// Decimal text of a number, with '-' for negative values.
WString IntToWide(long long value);

// Widens 7-bit ASCII text; every byte becomes one code unit as it stands.
WString WidenAscii(const char* text);

// Length of a NUL-terminated wide string (0 for null).
std::size_t WideLength(const WChar* text);

// One argument of FormatWide: a wide string or an integer.
class FormatArg {
public:
    FormatArg(const WChar* text) : text_(text ? text : WTEXT("")), isText_(true) {}
    FormatArg(const WString& text) : text_(text.c_str()), isText_(true) {}
    FormatArg(int value) : number_(value) {}
    FormatArg(long value) : number_(value) {}
    FormatArg(long long value) : number_(value) {}
    FormatArg(unsigned value) : number_(value) {}

    bool IsText() const { return isText_; }
    const WChar* Text() const { return text_; }
    long long Number() const { return number_; }

private:
    const WChar* text_ = nullptr;
    long long number_ = 0;
    bool isText_ = false;
};

// printf-style formatting for the host's message texts and the configuration writers.
// Understands %s, %d, %i, %u, %ld, %lu, %lld and %%; an argument of the wrong kind is
// written in its own form (a number for %s, a text for %d). A conversion without an
// argument left, or any other conversion, is copied to the output as it stands.
WString FormatWide(const WString& format, std::initializer_list<FormatArg> args);
