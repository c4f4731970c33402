#pragma once
// Writes 8-bit text in a Windows code page, without a byte-order mark. Characters the code
// page cannot hold become the default character and are reported through usedDefault.

#include "textfile/TextFileWriter.h"

#include <string>

class ANSI_TextFileWriter : public TextFileWriter {
public:
    using TextFileWriter::TextFileWriter;

    // The low 16 bits of character, as a run of one unit.
    int WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar, bool* usedDefault) override;

private:
    std::string scratch_;
};
