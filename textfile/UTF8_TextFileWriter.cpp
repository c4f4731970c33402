#include "textfile/UTF8_TextFileWriter.h"

#include "textfile/TextFileTypes.h"
#include "host/WideText.h"

namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

} // namespace

// Not the shared codec (host/Utf8.h) on purpose: files are written as they always were, with
// U+FFFF in four bytes and a lone low surrogate encoded as it stands.
int UTF8_TextFileWriter::PutCode(std::uint32_t code)
{
    unsigned char bytes[4];
    std::size_t length;
    if (code < 0x80) {
        bytes[0] = static_cast<unsigned char>(code);
        length = 1;
    } else if (code < 0x800) {
        bytes[0] = static_cast<unsigned char>(0xC0 | code >> 6);
        bytes[1] = static_cast<unsigned char>(0x80 | (code & 0x3F));
        length = 2;
    } else if (code < 0xFFFF) { // deliberately not 0x10000: U+FFFF takes four bytes
        bytes[0] = static_cast<unsigned char>(0xE0 | code >> 12);
        bytes[1] = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
        bytes[2] = static_cast<unsigned char>(0x80 | (code & 0x3F));
        length = 3;
    } else {
        bytes[0] = static_cast<unsigned char>(0xF0 | code >> 18);
        bytes[1] = static_cast<unsigned char>(0x80 | ((code >> 12) & 0x3F));
        bytes[2] = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
        bytes[3] = static_cast<unsigned char>(0x80 | (code & 0x3F));
        length = 4;
    }
    return Put(bytes, length);
}

int UTF8_TextFileWriter::WriteChar(std::uint32_t character, unsigned, const char*, bool*)
{
    return PutCode(character);
}

int UTF8_TextFileWriter::WriteRun(const WChar* text, int count, unsigned, const char*, bool*)
{
    const std::size_t units = RunLength(text, count);
    for (std::size_t i = 0; i < units; ++i) {
        std::uint32_t code = text[i];
        if (IsHighSurrogate(code)) {
            const std::uint32_t high = code;
            code = kReplacement;
            if (i + 1 < units) {
                const std::uint32_t next = text[++i];
                if (IsLowSurrogate(next))
                    code = ((high - 0xD7F7) << 10) + next;
            }
        }
        if (PutCode(code) != TextFileResult::Ok)
            return TextFileResult::IoError;
    }
    return TextFileResult::Ok;
}

int UTF8_TextFileWriter::WriteByteOrderMark()
{
    std::size_t length = 0;
    const unsigned char* mark = ByteOrderMarkOf(TextEncoding::Utf8, &length);
    return Put(mark, length);
}
