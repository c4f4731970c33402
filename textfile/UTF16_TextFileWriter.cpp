#include "textfile/UTF16_TextFileWriter.h"

#include "textfile/TextFileTypes.h"

namespace {

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool kHostBigEndian = true;
#else
constexpr bool kHostBigEndian = false;
#endif

} // namespace

UTF16_TextFileWriter::UTF16_TextFileWriter(bool bigEndian, const WString* fileName, Platform::FileHandle file,
                                           int bufferSize)
    : TextFileWriter(fileName, file, bufferSize), bigEndian_(bigEndian)
{
}

int UTF16_TextFileWriter::WriteChar(std::uint32_t character, unsigned, const char*, bool*)
{
    const unsigned char low = static_cast<unsigned char>(character & 0xFF);
    const unsigned char high = static_cast<unsigned char>((character >> 8) & 0xFF);
    const unsigned char bytes[2] = {bigEndian_ ? high : low, bigEndian_ ? low : high};
    return Put(bytes, sizeof(bytes));
}

int UTF16_TextFileWriter::WriteRun(const WChar* text, int count, unsigned, const char*, bool*)
{
    const std::size_t units = RunLength(text, count);
    if (bigEndian_ == kHostBigEndian)
        return Put(text, units * sizeof(WChar));
    swapped_.assign(text, text + units);
    for (WChar& unit : swapped_)
        unit = static_cast<WChar>((unit >> 8) | (unit << 8));
    return Put(swapped_.data(), units * sizeof(WChar));
}

int UTF16_TextFileWriter::WriteByteOrderMark()
{
    std::size_t length = 0;
    const unsigned char* mark = ByteOrderMarkOf(bigEndian_ ? TextEncoding::Utf16BE : TextEncoding::Utf16LE, &length);
    return Put(mark, length);
}
