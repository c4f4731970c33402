#include "refhost/app/ConfigDraft.h"

#include "refhost/Utf8.h"
#include "refhost/app/AppError.h"
#include "refhost/app/CodePageText.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

namespace tessel {
namespace {

constexpr WChar kInternalSeparator = 0x00A4;  // "¤", between the fixed-width positions
constexpr WChar kMultiplicationSign = 0x00D7; // "×", the configuration's stand-in for a double quote

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

bool IsLiteralInDraft(unsigned char byte)
{
    if ((byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9'))
        return true;
    return std::strchr(" #$%()*+,-./:;?@[]^_`{|}~!\\", byte) != nullptr && byte != '\0';
}

// The value in the byte form the configuration reader decodes: letters, digits and harmless
// punctuation as they are, every other byte as "=XX", bytes of 0x80 and above in the
// reader's three-group form of their 16-bit widening (0xFF00 + byte).
std::string EncodeValue(const WString& value, unsigned codePage, const std::string& what)
{
    std::string bytes;
    if (!ToCodePageBytes(value, codePage, bytes))
        throw UsageError(what + ": " + Quoted(refhost::ToUtf8(value)) + " cannot be written in code page " +
                         std::to_string(codePage));
    static const char hex[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (IsLiteralInDraft(byte)) {
            encoded.push_back(static_cast<char>(byte));
        } else if (byte < 0x80) {
            encoded += {'=', hex[byte >> 4], hex[byte & 15]};
        } else {
            const unsigned widened = 0xFF00u + byte;
            const unsigned groups[3] = {0xE0u | (widened >> 12), 0x80u | ((widened >> 6) & 0x3F),
                                        0x80u | (widened & 0x3F)};
            for (const unsigned group : groups)
                encoded += {'=', hex[group >> 4], hex[group & 15]};
        }
    }
    return encoded;
}

WString Wide(const std::string& ascii) { return WString(ascii.begin(), ascii.end()); }

void RejectMultiplicationSign(const WString& value, const std::string& option)
{
    if (value.find(kMultiplicationSign) != WString::npos)
        throw UsageError(option + ": the character '×' cannot be stored (the configuration reads it back as '\"')");
}

WString ColumnElements(const std::vector<ColumnOption>& columns, unsigned codePage)
{
    if (columns.empty())
        throw UsageError("no columns: describe the file's fields with --column NAME[:type] (or give --config)");
    std::set<std::string> names;
    WString elements;
    for (std::size_t no = 0; no < columns.size(); ++no) {
        const ColumnOption& column = columns[no];
        if (!names.insert(column.name).second)
            throw UsageError("--column: " + Quoted(column.name) + " is given twice; binds reach only the first");
        if (column.name.find('"') != std::string::npos)
            throw UsageError("--column: " + Quoted(column.name) +
                             " contains '\"', which the configuration reads back as '×'");
        elements +=
            Wide("<col no=\"" + std::to_string(no) + "\" name=\"" +
                 EncodeValue(refhost::FromUtf8(column.name), codePage, "--column") + "\" type=\"" +
                 std::to_string(static_cast<int>(column.type)) + "\" onOff=\"" + (column.enabled ? "1" : "0") + "\"/>");
    }
    return elements;
}

} // namespace

WString ImportConfigDraft(const ImportConfigChoice& choice, unsigned codePage)
{
    const bool fixed = !choice.fixedPositions.empty();
    if (fixed && choice.delimiters)
        throw UsageError("--fixed and --delimiters exclude each other: a file has fixed-width or delimited fields");
    const WString delimiters = refhost::FromUtf8(choice.delimiters.value_or(fixed ? "" : " "));
    const WString comments = refhost::FromUtf8(choice.comments.value_or("#"));
    if (!fixed && delimiters.empty())
        throw UsageError("--delimiters: at least one delimiter character is needed");
    RejectMultiplicationSign(delimiters, "--delimiters");
    RejectMultiplicationSign(comments, "--comments");

    WString positions;
    for (const unsigned position : choice.fixedPositions)
        positions += Wide(std::to_string(position)) + kInternalSeparator;

    return Wide("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"\" delimiter=\"" +
                EncodeValue(delimiters, codePage, "--delimiters") + "\" comments=\"" +
                EncodeValue(comments, codePage, "--comments") + "\" mode=\"" + (fixed ? "1" : "0") +
                "\" colPositions=\"") +
           positions + WTEXT("\">") + ColumnElements(choice.columns, codePage) + WTEXT("</cfg>");
}

WString ExportConfigDraft(const ExportConfigChoice& choice, unsigned codePage)
{
    const WString comment = refhost::FromUtf8(choice.comment.value_or("#"));
    const WString delimiter = refhost::FromUtf8(choice.delimiter.value_or("\t"));
    return Wide("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"\" comment=\"" +
                EncodeValue(comment, codePage, "--comment") + "\" delimiter=\"" +
                EncodeValue(delimiter, codePage, "--delimiter") + "\" header=\"" +
                (choice.header.value_or(true) ? "1" : "0") + "\" format=\"" + (choice.utf16 ? "1" : "0") + "\"/>");
}

WString DecodeConfigurationBytes(const std::string& bytes)
{
    WString text;
    const auto byteAt = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() >= 2 && ((byteAt(0) == 0xFF && byteAt(1) == 0xFE) || (byteAt(0) == 0xFE && byteAt(1) == 0xFF))) {
        const bool littleEndian = byteAt(0) == 0xFF;
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
            text.push_back(
                static_cast<WChar>(littleEndian ? byteAt(i) | byteAt(i + 1) << 8 : byteAt(i) << 8 | byteAt(i + 1)));
    } else {
        const bool bom = bytes.size() >= 3 && byteAt(0) == 0xEF && byteAt(1) == 0xBB && byteAt(2) == 0xBF;
        text = refhost::FromUtf8(std::string_view(bytes).substr(bom ? 3 : 0));
    }
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r'))
        text.pop_back();
    return text;
}

WString ReadConfigurationFile(const std::string& option, const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw UsageError(option + ": cannot read " + Quoted(path) + ": " + std::strerror(errno));
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (file.bad())
        throw UsageError(option + ": cannot read " + Quoted(path) + ": " + std::strerror(errno));

    const WString text = DecodeConfigurationBytes(bytes);
    if (text.empty())
        throw UsageError(option + ": " + Quoted(path) + " is empty");
    return text;
}

} // namespace tessel
