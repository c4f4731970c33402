#pragma once
// Reads 8-bit text in a Windows code page. No byte-order mark is looked for: a UTF-8 mark
// reaches the caller as three characters of the code page.

#include "textfile/TextFileReader.h"

class TextFile;
class SingleByteCodePage;

class ANSI_TextFileReader : public TextFileReader {
public:
    // owner is asked for its raw setting at every line.
    ANSI_TextFileReader(const TextFile* owner, const WString* fileName, Platform::FileHandle file, int bufferSize);

    // The next byte as it stands (0-255), carriage returns skipped.
    int ReadChar() override;
    // The line converted from codePage (0: the ANSI code page), or with the owner's raw
    // setting each byte as the unit of the same value. The text ends at the first NUL byte.
    int ReadLine(WString& line, unsigned codePage) override;
    int CountLines(std::uint64_t& lines) override { return CountByteLines(lines); }

private:
    const SingleByteCodePage* FindTable(unsigned codePage);
    int ReadLineThroughTable(WString& line);
    void ConvertGathered(std::size_t length, WString& line, unsigned codePage);

    const TextFile* owner_;
    std::string scratch_;
    // The table of the code page last asked for, so that a line costs no look-up.
    unsigned tableCodePage_ = 0;
    unsigned tableAnsiCodePage_ = 0;
    const SingleByteCodePage* table_ = nullptr; // null for a multi-byte code page
    bool tableLookedUp_ = false;
};
