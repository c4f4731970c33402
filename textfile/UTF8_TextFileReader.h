#pragma once
// Reads UTF-8 text. The decoder is forgiving in the old way the files were always read, and
// keeps its quirks on purpose: trailing bytes are not checked for 10xxxxxx, overlong forms
// are accepted, a byte 0x80-0xDF (a stray trailing byte too) leads a two-byte form, a lead
// from 0xF8 gives U+FFFD alone, and a sequence cut short by the end of the line repeats the
// previous character (U+FFFD at the start of a line). Codes above U+FFFF are limited to
// U+10FFFF and become the surrogate pair 0xD7C0 + (code >> 10), 0xDC00 + (code & 0x3FF).
// The text of a line ends at its first NUL byte, or where a form decodes to U+0000.

#include "textfile/TextFileReader.h"

class UTF8_TextFileReader : public TextFileReader {
public:
    using TextFileReader::TextFileReader;

    // The next whole code point (not limited, no surrogates), carriage returns skipped;
    // U+FFFD for a lead from 0xF8; a failed read inside a sequence returns its result.
    int ReadChar() override;
    int ReadLine(WString& line, unsigned codePage) override;
    int CountLines(std::uint64_t& lines) override { return CountByteLines(lines); }

private:
    std::string scratch_;
};
