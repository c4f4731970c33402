#pragma once
// Test text is written in UTF-8 source; the module works in UTF-16.

#include "host/Text.h"
#include "host/Utf8.h"

#include <string>
#include <string_view>

namespace refhost {
namespace testing {

// W("Grüße") is the UTF-16 text of the UTF-8 literal.
inline WString W(std::string_view utf8) { return FromUtf8(utf8); }

// UTF-8 form of UTF-16 text, for messages and comparisons with UTF-8 expectations.
inline std::string U8(const WString& text) { return ToUtf8(text); }

} // namespace testing
} // namespace refhost
