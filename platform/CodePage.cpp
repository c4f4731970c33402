#include "platform/CodePage.h"

#include "platform/Sse2.h"
#include "host/WideText.h"

#include <algorithm>

SingleByteCodePage::SingleByteCodePage(unsigned number, const WChar (&toWide)[256])
    : number_(number), toByte_(new std::uint16_t[0x10000])
{
    std::copy(toWide, toWide + 256, toWide_);
    asciiIdentity_ = true;
    for (int b = 0; b < 0x80; ++b)
        asciiIdentity_ = asciiIdentity_ && toWide_[b] == b;
    std::fill(toByte_.get(), toByte_.get() + 0x10000, kNoByte);
    for (int b = 255; b >= 0; --b)
        toByte_[toWide_[b]] = static_cast<std::uint16_t>(b);
}

template <bool stopAtNul>
std::size_t SingleByteCodePage::DecodeBytes(const unsigned char* in, std::size_t count, WChar* out) const
{
    // Every Windows code page maps 0x01-0x7F to itself, and most text holds nothing else.
    std::size_t i = asciiIdentity_ ? WidenAsciiBlocks(in, count, out) : 0;
    for (; i < count; ++i) {
        if (stopAtNul && in[i] == 0)
            break;
        out[i] = toWide_[in[i]];
    }
    return i;
}

void SingleByteCodePage::Decode(const char* bytes, std::size_t count, WChar* out) const
{
    DecodeBytes<false>(reinterpret_cast<const unsigned char*>(bytes), count, out);
}

std::size_t SingleByteCodePage::DecodeText(const char* bytes, std::size_t count, WChar* out) const
{
    return DecodeBytes<true>(reinterpret_cast<const unsigned char*>(bytes), count, out);
}

std::size_t SingleByteCodePage::Encode(const WChar* text, std::size_t count, char* out,
                                       char replacement, bool* usedDefault) const
{
    auto* bytes = reinterpret_cast<unsigned char*>(out);
    std::size_t i = asciiIdentity_ ? NarrowAsciiBlocks(text, count, bytes) : 0;
    std::size_t written = i;
    for (; i < count; ++i) {
        const std::uint16_t b = toByte_[text[i]];
        if (b != kNoByte) {
            out[written++] = static_cast<char>(b);
            continue;
        }
        if (IsHighSurrogate(text[i]) && i + 1 < count && IsLowSurrogate(text[i + 1]))
            ++i;
        out[written++] = replacement;
        if (usedDefault)
            *usedDefault = true;
    }
    return written;
}
