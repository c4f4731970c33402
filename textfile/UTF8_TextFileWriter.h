#pragma once
// Writes UTF-8 with the mark EF BB BF. Kept as files were always written: a code from
// 0xFFFF upwards takes four bytes (U+FFFF itself becomes F0 8F BF BF, on purpose); a high
// surrogate takes the next unit of the run, and when that is not a low surrogate (it is then
// lost) or there is none, U+FFFD is written; a lone low surrogate is written as the
// three-byte form of its own value.

#include "textfile/TextFileWriter.h"

class UTF8_TextFileWriter : public TextFileWriter {
public:
    using TextFileWriter::TextFileWriter;

    // The whole code, encoded as above.
    int WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteByteOrderMark() override;

private:
    int PutCode(std::uint32_t code);
};
