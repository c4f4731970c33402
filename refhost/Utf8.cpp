#include "refhost/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace refhost {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t c)
{
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

void AppendUtf16(WString& out, char32_t c)
{
    if (c < 0x10000) {
        out.push_back(static_cast<WChar>(c));
    } else {
        c -= 0x10000;
        out.push_back(static_cast<WChar>(0xD800 + (c >> 10)));
        out.push_back(static_cast<WChar>(0xDC00 + (c & 0x3FF)));
    }
}

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

// Decodes one sequence at text[i]; returns its length, or 0 when it is not valid UTF-8.
std::size_t DecodeSequence(std::string_view text, std::size_t i, char32_t& c)
{
    const auto lead = static_cast<unsigned char>(text[i]);
    std::size_t length;
    char32_t minimum;
    if (lead < 0x80) {
        c = lead;
        return 1;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, minimum = 0x80, c = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, minimum = 0x800, c = lead & 0x0F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, minimum = 0x10000, c = lead & 0x07;
    } else {
        return 0;
    }
    if (text.size() - i < length)
        return 0;
    for (std::size_t k = 1; k < length; ++k) {
        const auto byte = static_cast<unsigned char>(text[i + k]);
        if (!IsContinuation(byte))
            return 0;
        c = (c << 6) | (byte & 0x3F);
    }
    if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return 0;
    return length;
}

} // namespace

void AppendUtf8(std::string& out, const WChar* text, std::size_t length)
{
    // Most text starts with ASCII, or is nothing else: that part is copied in one go.
    std::size_t ascii = 0;
    while (ascii < length && static_cast<char32_t>(text[ascii]) < 0x80)
        ++ascii;
    const std::size_t start = out.size();
    out.resize(start + ascii);
    std::copy(text, text + ascii, out.begin() + static_cast<std::ptrdiff_t>(start));
    for (std::size_t i = ascii; i < length; ++i) {
        const char32_t unit = text[i];
        if (unit < 0x80) {
            out.push_back(static_cast<char>(unit));
        } else if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < length && text[i + 1] >= 0xDC00 &&
                   text[i + 1] <= 0xDFFF) {
            AppendUtf8(out, 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00));
            ++i;
        } else if (unit >= 0xD800 && unit <= 0xDFFF) {
            AppendUtf8(out, kReplacement);
        } else {
            AppendUtf8(out, unit);
        }
    }
}

std::size_t Utf8Length(const WChar* text, std::size_t length)
{
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const char32_t unit = text[i];
        if (unit < 0x80) {
            bytes += 1;
        } else if (unit < 0x800) {
            bytes += 2;
        } else if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < length && text[i + 1] >= 0xDC00 &&
                   text[i + 1] <= 0xDFFF) {
            bytes += 4;
            ++i;
        } else {
            bytes += 3; // U+FFFD for an unpaired surrogate is three bytes too
        }
    }
    return bytes;
}

std::string ToUtf8(const WChar* text, std::size_t length)
{
    std::string out;
    out.reserve(length);
    AppendUtf8(out, text, length);
    return out;
}

std::string ToUtf8(const WString& text) { return ToUtf8(text.data(), text.size()); }

std::string ToUtf8(const WChar* text)
{
    if (!text)
        return std::string();
    return ToUtf8(text, std::char_traits<WChar>::length(text));
}

WString FromUtf8(std::string_view text)
{
    WString out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        char32_t c = 0;
        const std::size_t length = DecodeSequence(text, i, c);
        if (length == 0) {
            out.push_back(static_cast<WChar>(kReplacement));
            ++i;
        } else {
            AppendUtf16(out, c);
            i += length;
        }
    }
    return out;
}

} // namespace refhost
