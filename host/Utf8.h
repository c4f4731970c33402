#pragma once
// Standard UTF-8 to and from the module's UTF-16 text, for every side that meets the outside
// world in UTF-8: file names on POSIX systems, the system's error texts, and the reference
// host's and tessel's terminal, JSON, CSV and GIS formats. Strict both ways, so no input is
// dropped silently: an unpaired surrogate is written as U+FFFD, and each byte that does not
// begin a valid, shortest-form sequence of a scalar value reads as one U+FFFD.
// Nothing here throws beyond std::bad_alloc or depends on the C locale.

#include "host/Text.h"

#include <cstddef>
#include <string>
#include <string_view>

std::string ToUtf8(const WChar* text, std::size_t length);
std::string ToUtf8(const WString& text);
// A null pointer gives "".
std::string ToUtf8(const WChar* text);
// Appends what ToUtf8 makes of text to out; a leading run of ASCII is copied in one go.
void AppendUtf8(std::string& out, const WChar* text, std::size_t length);
// How many bytes AppendUtf8 appends for text, counted without converting it.
std::size_t Utf8Length(const WChar* text, std::size_t length);

WString FromUtf8(std::string_view text);
