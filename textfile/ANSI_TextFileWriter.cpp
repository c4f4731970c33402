#include "textfile/ANSI_TextFileWriter.h"

#include "platform/CodePage.h"
#include "textfile/TextFileTypes.h"
#include "host/WideText.h"

#include <climits>

int ANSI_TextFileWriter::WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar,
                                   bool* usedDefault)
{
    const WChar unit = static_cast<WChar>(character);
    return WriteRun(&unit, 1, codePage, defaultChar, usedDefault);
}

int ANSI_TextFileWriter::WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar,
                                  bool* usedDefault)
{
    const std::size_t units = RunLength(text, count);
    if (units == 0)
        return TextFileResult::Ok;
    if (const SingleByteCodePage* table = TableFor(codePage))
        return WriteThroughTable(*table, text, units, defaultChar, usedDefault);
    if (units > INT_MAX / 2 - 1)
        return TextFileResult::IoError;
    // Two bytes per unit hold every single- and double-byte code page; a code page that
    // needs more (UTF-8) is asked for its size.
    const int length = static_cast<int>(units);
    scratch_.resize(2 * units + 1);
    int converted = Platform::WideToMultiByte(codePage, text, length, &scratch_[0], 2 * length, defaultChar, usedDefault);
    if (converted == 0) {
        const int needed = Platform::WideToMultiByte(codePage, text, length, nullptr, 0, defaultChar, nullptr);
        if (needed > 2 * length) {
            scratch_.resize(static_cast<std::size_t>(needed));
            converted = Platform::WideToMultiByte(codePage, text, length, &scratch_[0], needed, defaultChar, usedDefault);
        }
    }
    return Put(scratch_.data(), static_cast<std::size_t>(converted));
}

const SingleByteCodePage* ANSI_TextFileWriter::TableFor(unsigned codePage)
{
    const unsigned resolved = codePage != 0 ? codePage : Platform::AnsiCodePage();
    if (resolved != tableCodePage_) {
        table_ = Platform::FindSingleByteCodePage(resolved);
        tableCodePage_ = resolved;
    }
    return table_;
}

int ANSI_TextFileWriter::WriteThroughTable(const SingleByteCodePage& table, const WChar* text, std::size_t units,
                                           const char* defaultChar, bool* usedDefault)
{
    const char replacement = defaultChar && *defaultChar ? *defaultChar : kDefaultReplacementByte;
    while (units > 0) {
        // Converted straight into the buffer: a unit gives at most one byte, a surrogate pair
        // one for both, so a pair cut by the end of the room is taken whole.
        std::size_t room = 0;
        char* out = reinterpret_cast<char*>(Room(&room));
        std::size_t chunk = units < room ? units : room;
        if (chunk < units && IsHighSurrogate(text[chunk - 1]) && IsLowSurrogate(text[chunk]))
            ++chunk;
        const std::size_t written = table.Encode(text, chunk, out, replacement, usedDefault);
        if (Commit(written) != TextFileResult::Ok)
            return TextFileResult::IoError;
        text += chunk;
        units -= chunk;
    }
    return TextFileResult::Ok;
}
