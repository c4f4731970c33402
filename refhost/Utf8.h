#pragma once
// UTF-8 <-> UTF-16 conversion for the reference host's edges (terminal, files named on the
// command line, JSON). The module itself never converts; only the reference host does.

#include "host/Text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace refhost {

// UTF-8 form of UTF-16 text. An unpaired surrogate becomes U+FFFD. Does not throw
// beyond std::bad_alloc.
std::string ToUtf8(const WChar* text, std::size_t length);
std::string ToUtf8(const WString& text);
// A null pointer gives "".
std::string ToUtf8(const WChar* text);
// Appends the UTF-8 form of text to out, as ToUtf8 makes it.
void AppendUtf8(std::string& out, const WChar* text, std::size_t length);
// How many bytes the UTF-8 form of text takes.
std::size_t Utf8Length(const WChar* text, std::size_t length);

// UTF-16 form of UTF-8 text. Every byte that does not start a valid, shortest-form
// sequence of a scalar value becomes one U+FFFD, so no input is dropped silently.
WString FromUtf8(std::string_view text);

} // namespace refhost
