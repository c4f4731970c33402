#include "xml/ConfigValueCodec.h"

#include "platform/Platform.h"
#include "xml/XmlEscape.h"

#include <string>

namespace {

constexpr unsigned kAnsiCodePage = 0;

// The text's bytes in the code page; *lacking is set when a character has no form there.
std::string ToAnsiBytes(const WString& text, unsigned codePage = kAnsiCodePage, bool* lacking = nullptr)
{
    if (text.empty())
        return std::string();
    // Room for the widest code page the platform may be set to (UTF-8: 3 bytes a unit).
    std::string bytes(text.size() * 4 + 4, '\0');
    const int written = Platform::WideToMultiByte(codePage, text.data(), static_cast<int>(text.size()), &bytes[0],
                                                  static_cast<int>(bytes.size()), nullptr, lacking);
    bytes.resize(written > 0 ? static_cast<std::size_t>(written) : 0);
    return bytes;
}

WString FromAnsiBytes(const std::string& bytes)
{
    if (bytes.empty())
        return WString();
    WString text(bytes.size() + 2, WTEXT('\0'));
    const int written = Platform::MultiByteToWide(kAnsiCodePage, bytes.data(), static_cast<int>(bytes.size()),
                                                  &text[0], static_cast<int>(text.size()));
    text.resize(written > 0 ? static_cast<std::size_t>(written) : 0);
    return text;
}

const char kHexDigits[] = "0123456789ABCDEF";

void AppendGroup(WString& out, unsigned byte)
{
    out += WTEXT('=');
    out += static_cast<WChar>(kHexDigits[(byte >> 4) & 0xF]);
    out += static_cast<WChar>(kHexDigits[byte & 0xF]);
}

int HexValue(WChar c)
{
    if (c >= WTEXT('0') && c <= WTEXT('9'))
        return c - WTEXT('0');
    if (c >= WTEXT('A') && c <= WTEXT('F'))
        return c - WTEXT('A') + 10;
    if (c >= WTEXT('a') && c <= WTEXT('f'))
        return c - WTEXT('a') + 10;
    return -1;
}

// The value of the "=XX" group at text[at], or -1 when it is not one.
int GroupValue(const WString& text, std::size_t at)
{
    if (at + 2 >= text.size() || text[at] != WTEXT('='))
        return -1;
    const int high = HexValue(text[at + 1]);
    const int low = HexValue(text[at + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

// Groups in the sequence that a lead value starts (UTF-8 lengths); 1 for a lone byte.
int SequenceGroups(int lead)
{
    if (lead >= 0xC0 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF7)
        return 4;
    if (lead >= 0xF8 && lead <= 0xFB)
        return 5;
    if (lead >= 0xFC && lead <= 0xFD)
        return 6;
    return 1;
}

int LeadBits(int groups)
{
    return groups == 2 ? 0x1F : groups == 3 ? 0x0F : groups == 4 ? 0x07 : groups == 5 ? 0x03 : 0x01;
}

// Decodes the sequence at text[at] with its lead group value; -1 when a following group is
// not well formed.
int SequenceByte(const WString& text, std::size_t at, int lead, int groups)
{
    int values[6] = {lead};
    for (int k = 1; k < groups; ++k)
        if ((values[k] = GroupValue(text, at + 3 * k)) < 0)
            return -1;
    if (groups == 1)
        return lead;
    if (groups == 3)
        return ((values[1] - 2) * 64 + values[2]) & 0xFF;
    unsigned long code = static_cast<unsigned long>(lead & LeadBits(groups));
    for (int k = 1; k < groups; ++k)
        code = (code << 6) | static_cast<unsigned long>(values[k] & 0x3F);
    return static_cast<int>(code & 0xFF);
}

std::string DecodeGroups(const WString& text)
{
    std::string bytes;
    bytes.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] != WTEXT('=')) {
            bytes += static_cast<char>(text[at] & 0xFF);
            ++at;
            continue;
        }
        if (at + 2 >= text.size())
            break; // too near the end for its group: the rest is dropped
        const int lead = GroupValue(text, at);
        if (lead < 0) {
            bytes += '=';
            ++at;
            continue;
        }
        const int groups = lead < 0x7F ? 1 : SequenceGroups(lead);
        if (at + 3 * groups > text.size())
            break;
        const int byte = SequenceByte(text, at, lead, groups);
        if (byte < 0) {
            bytes += '=';
            ++at;
            continue;
        }
        bytes += static_cast<char>(byte);
        at += 3 * groups;
    }
    return bytes;
}

} // namespace

WString EncodeConfigValue(const WString& value)
{
    const std::string bytes = ToAnsiBytes(XmlEscape(value));
    WString out;
    out.reserve(bytes.size() + bytes.size() / 4);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '=') {
            AppendGroup(out, byte);
        } else if (byte < 0x80) {
            out += static_cast<WChar>(byte);
        } else {
            // Deliberately widened as a signed byte: the unit 0xFF00 + b in UTF-8's three-byte
            // form. Not the shared codec (host/Utf8.h): the groups are the stored form of one
            // byte, which DecodeConfigValue reads back by arithmetic of its own.
            const unsigned unit = 0xFF00u | byte;
            AppendGroup(out, 0xE0 | (unit >> 12));
            AppendGroup(out, 0x80 | ((unit >> 6) & 0x3F));
            AppendGroup(out, 0x80 | (unit & 0x3F));
        }
    }
    return out;
}

WString DecodeConfigValue(const WString& value)
{
    return FromAnsiBytes(DecodeGroups(XmlUnescape(value)));
}

bool ConfigValueFitsCodePage(const WString& value, unsigned codePage)
{
    bool lacking = false;
    const std::string bytes = ToAnsiBytes(value, codePage, &lacking);
    return !lacking && (value.empty() || !bytes.empty());
}
