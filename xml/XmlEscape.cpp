#include "xml/XmlEscape.h"

namespace {

struct NamedReference {
    const WChar* name; // without the '&', with the ';'
    std::size_t length;
    WChar character;
};

// Compared in this order.
const NamedReference kNamedReferences[] = {
    {WTEXT("lt;"), 3, WTEXT('<')},     {WTEXT("amp;"), 4, WTEXT('&')},   {WTEXT("gt;"), 3, WTEXT('>')},
    {WTEXT("apos;"), 5, WTEXT('\'')}, {WTEXT("quot;"), 5, WTEXT('"')},
};

constexpr std::size_t kMaxReferenceDigits = 7;

int DigitValue(WChar c, int base)
{
    int value = -1;
    if (c >= WTEXT('0') && c <= WTEXT('9'))
        value = c - WTEXT('0');
    else if (c >= WTEXT('a') && c <= WTEXT('f'))
        value = c - WTEXT('a') + 10;
    else if (c >= WTEXT('A') && c <= WTEXT('F'))
        value = c - WTEXT('A') + 10;
    return value < base ? value : -1;
}

// The code point of the digits of "&#digits;" (decimal, or hexadecimal after 'x'); 0 when
// they are not a number.
long ReferenceValue(const WChar* digits, std::size_t count)
{
    int base = 10;
    if (count > 0 && digits[0] == WTEXT('x')) {
        base = 16;
        ++digits;
        --count;
    }
    if (count == 0)
        return 0;
    long value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int digit = DigitValue(digits[i], base);
        if (digit < 0)
            return 0;
        value = value * base + digit;
    }
    return value;
}

// At text[at] == '&': appends the character of a character reference and returns its
// length, or 0 when there is none.
std::size_t DecodeCharacterReference(const WChar* text, std::size_t length, std::size_t at, WString& out)
{
    if (at + 1 >= length || text[at + 1] != WTEXT('#'))
        return 0;
    const std::size_t digits = at + 2;
    for (std::size_t end = digits; end < length && end <= digits + kMaxReferenceDigits; ++end) {
        if (text[end] != WTEXT(';'))
            continue;
        const long value = ReferenceValue(text + digits, end - digits);
        if (value <= 0 || value > 0x10FFFF)
            return 0;
        if (value > 0xFFFF) {
            out += static_cast<WChar>(0xD800 + ((value - 0x10000) >> 10));
            out += static_cast<WChar>(0xDC00 + ((value - 0x10000) & 0x3FF));
        } else {
            out += static_cast<WChar>(value);
        }
        return end + 1 - at;
    }
    return 0;
}

std::size_t DecodeNamedReference(const WChar* text, std::size_t length, std::size_t at, WString& out)
{
    for (const NamedReference& reference : kNamedReferences) {
        if (at + 1 + reference.length > length)
            continue;
        if (WString::traits_type::compare(text + at + 1, reference.name, reference.length) == 0) {
            out += reference.character;
            return reference.length + 1;
        }
    }
    return 0;
}

bool IsAsciiLetter(WChar c) { return (c >= WTEXT('a') && c <= WTEXT('z')) || (c >= WTEXT('A') && c <= WTEXT('Z')); }

bool StartsReferenceName(WChar c)
{
    return IsAsciiLetter(c) || c == WTEXT('#') || c == WTEXT('_') || c == WTEXT(':') || c >= 0x80;
}

bool ContinuesReferenceName(WChar c)
{
    return IsAsciiLetter(c) || (c >= WTEXT('0') && c <= WTEXT('9')) || c == WTEXT('_') || c == WTEXT(':') || c == WTEXT('-') ||
           c == WTEXT('.') || c >= 0x80;
}

bool BeginsReference(const WString& text, std::size_t ampersand)
{
    std::size_t at = ampersand + 1;
    if (at >= text.size() || !StartsReferenceName(text[at]))
        return false;
    ++at;
    while (at < text.size() && ContinuesReferenceName(text[at]))
        ++at;
    return at < text.size() && text[at] == WTEXT(';');
}

const WChar* EntityFor(WChar c)
{
    switch (c) {
    case WTEXT('<'): return WTEXT("&lt;");
    case WTEXT('&'): return WTEXT("&amp;");
    case WTEXT('>'): return WTEXT("&gt;");
    case WTEXT('\''): return WTEXT("&apos;");
    case WTEXT('"'): return WTEXT("&quot;");
    default: return nullptr;
    }
}

} // namespace

WString XmlUnescape(const WChar* text, std::size_t length)
{
    if (!WString::traits_type::find(text, length, WTEXT('&')))
        return WString(text, length);
    WString out;
    out.reserve(length);
    for (std::size_t at = 0; at < length; ++at) {
        if (text[at] != WTEXT('&')) {
            out += text[at];
            continue;
        }
        std::size_t used = DecodeCharacterReference(text, length, at, out);
        if (used == 0)
            used = DecodeNamedReference(text, length, at, out);
        if (used == 0)
            out += WTEXT('&');
        else
            at += used - 1;
    }
    return out;
}

WString XmlEscape(const WString& text)
{
    WString out;
    out.reserve(text.size() + text.size() / 10 + 7);
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (out.capacity() - out.size() < 6)
            out.reserve(out.capacity() * 2);
        const WChar c = text[at];
        const WChar* entity = EntityFor(c);
        if (!entity || (c == WTEXT('&') && BeginsReference(text, at)))
            out += c;
        else
            out += entity;
    }
    return out;
}
