#pragma once
// What the two UTF-16 writers share: units go out in the file's byte order, a single
// character as its low 16 bits, and the mark of the byte order first.

#include "textfile/TextFileWriter.h"

#include <vector>

class UTF16_TextFileWriter : public TextFileWriter {
public:
    int WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteByteOrderMark() override;

protected:
    UTF16_TextFileWriter(bool bigEndian, const WString* fileName, Platform::FileHandle file, int bufferSize);

private:
    bool bigEndian_;
    std::vector<WChar> swapped_; // a run with its bytes swapped, when the orders differ
};
