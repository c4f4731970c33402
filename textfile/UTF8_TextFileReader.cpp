#include "textfile/UTF8_TextFileReader.h"

#include "platform/Sse2.h"
#include "host/StringLength.h"
#include "textfile/TextFileTypes.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLastCode = 0x10FFFF;

// Bytes that follow a lead byte (0 for a lead that stands alone), and the lead's value bits.
int TrailingBytes(unsigned lead)
{
    if (lead < 0x80)
        return 0;
    if (lead < 0xE0)
        return 1;
    if (lead < 0xF0)
        return 2;
    if (lead < 0xF8)
        return 3;
    return 0;
}

char32_t LeadBits(unsigned lead)
{
    static const unsigned masks[] = {0x7F, 0x1F, 0x0F, 0x07};
    return lead & masks[TrailingBytes(lead)];
}

// Writes code as one unit or a surrogate pair; returns the units written, 0 for U+0000.
std::size_t PutCode(char32_t code, WChar* out)
{
    if (code <= 0xFFFF) {
        out[0] = static_cast<WChar>(code);
        return code == 0 ? 0 : 1;
    }
    if (code > kLastCode)
        code = kLastCode;
    out[0] = static_cast<WChar>(0xD7C0 + (code >> 10));
    out[1] = static_cast<WChar>(0xDC00 + (code & 0x3FF));
    return 2;
}

// Not the shared codec (host/Utf8.h) on purpose: files are read as they always were, quirks
// and all, where the shared codec would replace each bad byte by U+FFFD.
// Decodes bytes[0, length) into line. The text ends at the first NUL byte (a sequence that
// runs into it is cut short there), or where a form decodes to U+0000. A form of n bytes
// gives at most n units, so length units are room enough for all but a cut sequence, which
// may repeat a pair for a single byte; that one is appended. The line keeps the previous
// line's length while it is written, so that it rarely has to fill new room first.
void DecodeText(const unsigned char* bytes, std::size_t length, WString& line)
{
    if (line.size() < length)
        line.resize(length);
    WChar* const begin = &line[0];
    WChar* out = begin;
    const unsigned char* in = bytes;
    const unsigned char* const end = bytes + length;
    char32_t code = kReplacement;
    while (in < end) {
        const unsigned char* const asciiRun = in;
        const std::size_t widened = WidenAsciiBlocks(in, static_cast<std::size_t>(end - in), out);
        in += widened;
        out += widened;
        while (in < end && *in < 0x80 && *in != 0)
            *out++ = *in++;
        if (in != asciiRun)
            code = in[-1];
        if (in == end || *in == 0)
            break;
        const unsigned lead = *in++;
        const int trailing = lead >= 0xF8 ? 0 : TrailingBytes(lead);
        const unsigned char* const sequenceEnd = in + trailing;
        bool cut = sequenceEnd > end;
        for (const unsigned char* at = in; !cut && at < sequenceEnd; ++at)
            cut = *at == 0;
        if (cut) {
            // Cut short by the end of the text: the previous code is emitted again.
            WChar units[2];
            SetLength(line, static_cast<std::size_t>(out - begin));
            line.append(units, PutCode(code, units));
            return;
        }
        if (lead >= 0xF8) {
            code = kReplacement;
        } else {
            code = LeadBits(lead);
            for (; in < sequenceEnd; ++in)
                code = (code << 6) | (*in & 0x3F);
        }
        const std::size_t written = PutCode(code, out);
        if (written == 0)
            break;
        out += written;
    }
    SetLength(line, static_cast<std::size_t>(out - begin));
}

} // namespace

// A line within one buffer fill is decoded where it stands; a line over several fills is
// gathered first, since a sequence may be cut between them.
int UTF8_TextFileReader::ReadLine(WString& line, unsigned)
{
    scratch_.clear();
    bool decoded = false;
    const int result = ReadBytePieces([&](const unsigned char* piece, std::size_t length, bool last) {
        if (last && scratch_.empty()) {
            DecodeText(piece, length, line);
            decoded = true;
        } else {
            scratch_.append(reinterpret_cast<const char*>(piece), length);
        }
    });
    if (result != TextFileResult::Ok)
        line.clear();
    else if (!decoded)
        DecodeText(reinterpret_cast<const unsigned char*>(scratch_.data()), scratch_.size(), line);
    return result;
}

int UTF8_TextFileReader::ReadChar()
{
    const int lead = NextByteSkippingCR();
    if (lead < 0)
        return lead;
    if (lead >= 0xF8)
        return static_cast<int>(kReplacement);
    char32_t code = LeadBits(static_cast<unsigned>(lead));
    for (int i = TrailingBytes(static_cast<unsigned>(lead)); i > 0; --i) {
        const int next = NextByteSkippingCR();
        if (next < 0)
            return next;
        code = (code << 6) | (static_cast<unsigned>(next) & 0x3F);
    }
    return static_cast<int>(code);
}
