#include "textfile/UTF16_TextFileReader.h"

#include "platform/Sse2.h"
#include "host/StringLength.h"
#include "textfile/TextFileTypes.h"

#include <cstring>

namespace {

constexpr WChar kLineFeed = 0x000A;
constexpr WChar kCarriageReturn = 0x000D;

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool kHostBigEndian = true;
#else
constexpr bool kHostBigEndian = false;
#endif

WChar Swapped(WChar unit) { return static_cast<WChar>((unit >> 8) | (unit << 8)); }

} // namespace

// A unit needs two bytes, so a buffer is never smaller than that.
UTF16_TextFileReader::UTF16_TextFileReader(bool bigEndian, const WString* fileName, Platform::FileHandle file,
                                           int bufferSize)
    : TextFileReader(fileName, file, bufferSize == 1 ? 2 : bufferSize), bigEndian_(bigEndian)
{
}

int UTF16_TextFileReader::FillUnits()
{
    for (;;) {
        const int result = Fill();
        if (result != TextFileResult::Ok || UnreadBytes() >= 2)
            return result;
    }
}

WChar UTF16_TextFileReader::UnitAt(const unsigned char* bytes) const
{
    return bigEndian_ ? static_cast<WChar>(bytes[0] << 8 | bytes[1]) : static_cast<WChar>(bytes[1] << 8 | bytes[0]);
}

std::size_t UTF16_TextFileReader::FindLineFeed(const unsigned char* bytes, std::size_t size) const
{
    // The byte 0x0A of a line feed unit sits at an even offset in little-endian order and at
    // an odd one in big-endian order; its partner byte is 0.
    const std::size_t lowByteOffset = bigEndian_ ? 1 : 0;
    std::size_t from = 0;
    while (from < size) {
        const void* hit = std::memchr(bytes + from, 0x0A, size - from);
        if (!hit)
            break;
        const std::size_t at = static_cast<std::size_t>(static_cast<const unsigned char*>(hit) - bytes);
        const std::size_t unitStart = at - (at & 1);
        if ((at & 1) == lowByteOffset && UnitAt(bytes + unitStart) == kLineFeed)
            return unitStart;
        from = at + 1;
    }
    return size;
}

void UTF16_TextFileReader::AppendUnits(WString& line, std::size_t& used, const unsigned char* bytes,
                                       std::size_t units) const
{
    if (line.size() < used + units)
        line.resize(used + units);
    WChar* out = &line[used];
    used += units;
    std::memcpy(out, bytes, units * sizeof(WChar));
    if (bigEndian_ != kHostBigEndian)
        for (std::size_t i = 0; i < units; ++i)
            out[i] = Swapped(out[i]);
}

// The line keeps the previous line's length until the end, so that growing it rarely has
// to fill new room before the units are copied over it.
int UTF16_TextFileReader::ReadLine(WString& line, unsigned)
{
    std::size_t used = 0;
    for (bool firstPass = true;; firstPass = false) {
        if (UnreadBytes() < 2 && FillUnits() != TextFileResult::Ok) {
            if (firstPass) {
                line.clear();
                return TextFileResult::EndOfFile;
            }
            break;
        }
        const unsigned char* piece = Unread();
        const std::size_t available = UnreadUnitBytes();
        const std::size_t lineFeed = FindLineFeed(piece, available);
        std::size_t units = lineFeed / 2;
        Consume(lineFeed);
        if (units > 0 && UnitAt(piece + 2 * (units - 1)) == kCarriageReturn)
            --units;
        AppendUnits(line, used, piece, units);
        if (lineFeed < available) {
            Consume(2);
            break;
        }
    }
    SetLength(line, FindNulUnit(line.data(), used));
    return TextFileResult::Ok;
}

int UTF16_TextFileReader::ReadChar()
{
    for (;;) {
        if (UnreadBytes() < 2) {
            const int result = FillUnits();
            if (result != TextFileResult::Ok)
                return result;
        }
        const WChar unit = UnitAt(Unread());
        Consume(2);
        if (unit != kCarriageReturn)
            return unit;
    }
}

int UTF16_TextFileReader::CountLines(std::uint64_t& lines)
{
    lines = 0;
    bool textAfterLastLineFeed = false;
    for (;;) {
        if (UnreadBytes() < 2) {
            const int result = FillUnits();
            if (result == TextFileResult::IoError)
                return result;
            if (result != TextFileResult::Ok)
                break;
        }
        const unsigned char* bytes = Unread();
        const std::size_t available = UnreadUnitBytes();
        std::size_t scan = 0;
        for (std::size_t at; (at = FindLineFeed(bytes + scan, available - scan)) < available - scan;) {
            ++lines;
            scan += at + 2;
            textAfterLastLineFeed = false;
        }
        if (scan < available)
            textAfterLastLineFeed = true;
        Consume(available);
    }
    if (textAfterLastLineFeed)
        ++lines;
    return TextFileResult::Ok;
}
