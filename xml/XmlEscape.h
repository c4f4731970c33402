#pragma once
// The XML escaping pair used on every attribute value.

#include "host/Text.h"

#include <cstddef>

// Replaces the references in text[0..length): "&#" with up to 7 characters and ';' is a
// character reference (decimal digits, or hexadecimal digits after a lower-case 'x'; zero,
// anything else and values above U+10FFFF stay as written; values above U+FFFF become a
// surrogate pair); "&lt;", "&amp;", "&gt;", "&apos;" and "&quot;" become their characters.
// Any other ampersand stays as it stands. One pass: "&amp;lt;" gives "&lt;".
WString XmlUnescape(const WChar* text, std::size_t length);
inline WString XmlUnescape(const WString& text) { return XmlUnescape(text.data(), text.size()); }

// Replaces < & > ' " by "&lt;", "&amp;", "&gt;", "&apos;", "&quot;", except that an
// ampersand that already begins a well-formed reference (a letter, '#', '_', ':' or a
// character from U+0080 up, then name characters up to ';') is kept: "&lt;" stays "&lt;",
// "a & b" becomes "a &amp; b".
WString XmlEscape(const WString& text);
