#include "host/Utf8.h"

#include "host/WideText.h"

#include <utf8cpp/utf8.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

// Units before the first one beyond ASCII: most text is ASCII throughout, or starts so.
std::size_t AsciiPrefix(const WChar* text, std::size_t length)
{
    std::size_t ascii = 0;
    while (ascii < length && static_cast<std::uint32_t>(text[ascii]) < 0x80)
        ++ascii;
    return ascii;
}

// Units before the first unpaired surrogate (all of them when there is none).
std::size_t WellFormedRun(const WChar* text, std::size_t length)
{
    std::size_t i = 0;
    while (i < length) {
        const std::uint32_t unit = text[i];
        if (IsHighSurrogate(unit) && i + 1 < length && IsLowSurrogate(text[i + 1]))
            i += 2;
        else if (IsHighSurrogate(unit) || IsLowSurrogate(unit))
            break;
        else
            ++i;
    }
    return i;
}

// Well-formed runs are converted by the library; each unpaired surrogate becomes U+FFFD.
// The one encoder for both the bytes and their count, so that the two always agree.
template <class ByteOutput>
void EncodeUtf8(const WChar* text, std::size_t length, ByteOutput out)
{
    while (length > 0) {
        const std::size_t run = WellFormedRun(text, length);
        out = utf8::unchecked::utf16to8(text, text + run, out);
        if (run == length)
            return;
        out = utf8::unchecked::append(kReplacement, out);
        text += run + 1;
        length -= run + 1;
    }
}

// An output iterator that only counts the bytes written through it.
class ByteCounter {
public:
    using iterator_category = std::output_iterator_tag;
    using value_type = void;
    using difference_type = std::ptrdiff_t;
    using pointer = void;
    using reference = void;

    explicit ByteCounter(std::size_t& count) : count_(&count) {}
    ByteCounter& operator*() { return *this; }
    ByteCounter& operator=(std::uint8_t) { ++*count_; return *this; }
    ByteCounter& operator++() { return *this; }
    ByteCounter operator++(int) { return *this; }

private:
    std::size_t* count_;
};

} // namespace

void AppendUtf8(std::string& out, const WChar* text, std::size_t length)
{
    const std::size_t ascii = AsciiPrefix(text, length);
    const std::size_t start = out.size();
    out.resize(start + ascii);
    std::transform(text, text + ascii, out.begin() + static_cast<std::ptrdiff_t>(start),
                   [](WChar unit) { return static_cast<char>(unit); });
    EncodeUtf8(text + ascii, length - ascii, std::back_inserter(out));
}

std::size_t Utf8Length(const WChar* text, std::size_t length)
{
    std::size_t bytes = AsciiPrefix(text, length);
    EncodeUtf8(text + bytes, length - bytes, ByteCounter(bytes));
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

std::string ToUtf8(const WChar* text) { return text ? ToUtf8(text, WideLength(text)) : std::string(); }

WString FromUtf8(std::string_view text)
{
    WString out;
    out.reserve(text.size());
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && static_cast<unsigned char>(*at) < 0x80)
        out.push_back(static_cast<WChar>(*at++));
    // Valid stretches are converted by the library; each byte that begins no valid sequence
    // becomes one U+FFFD, and reading goes on with the byte after it.
    while (at != end) {
        const char* const invalid = utf8::find_invalid(at, end);
        utf8::unchecked::utf8to16(at, invalid, std::back_inserter(out));
        if (invalid == end)
            break;
        out.push_back(static_cast<WChar>(kReplacement));
        at = invalid + 1;
    }
    return out;
}
