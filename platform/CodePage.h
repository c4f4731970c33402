#pragma once
// A single-byte code page as a pair of tables, so that converting a line costs one table
// look-up per character. The platform layer builds each table once from the system's own
// conversion (iconv on Linux, MultiByteToWideChar on Windows) and hands out shared,
// read-only instances (Platform::FindSingleByteCodePage).

#include "host/Text.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// What a character that a code page cannot hold becomes when no default character is given.
constexpr char kDefaultReplacementByte = '?';

class SingleByteCodePage {
public:
    // toWide: the code unit of every byte value. Where several bytes map to one unit, the
    // way back goes to the lowest of them.
    SingleByteCodePage(unsigned number, const WChar (&toWide)[256]);

    unsigned Number() const { return number_; }
    WChar ToWide(unsigned char byte) const { return toWide_[byte]; }
    // The byte for a code unit, or -1 when the code page has none.
    int ToByte(WChar unit) const
    {
        const std::uint16_t b = toByte_[unit];
        return b == kNoByte ? -1 : static_cast<int>(b);
    }

    // Converts count bytes into count units. Does not stop at NUL and does not allocate.
    void Decode(const char* bytes, std::size_t count, WChar* out) const;
    // Converts bytes up to the first NUL (or all count of them); returns the units written.
    std::size_t DecodeText(const char* bytes, std::size_t count, WChar* out) const;
    // Converts count units into at most count bytes; returns the bytes written. A unit
    // without a byte, a surrogate pair (one replacement for both) and a lone surrogate become
    // the replacement byte, and set *usedDefault when it is given. Does not allocate.
    std::size_t Encode(const WChar* text, std::size_t count, char* out, char replacement,
                       bool* usedDefault) const;

private:
    static constexpr std::uint16_t kNoByte = 0xFFFF;

    template <bool stopAtNul>
    std::size_t DecodeBytes(const unsigned char* in, std::size_t count, WChar* out) const;

    unsigned number_;
    WChar toWide_[256];
    bool asciiIdentity_; // 0x00-0x7F map to themselves
    std::unique_ptr<std::uint16_t[]> toByte_; // 65536 entries
};
