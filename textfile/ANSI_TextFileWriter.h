#pragma once
// Writes 8-bit text in a Windows code page, without a byte-order mark. Characters the code
// page cannot hold become the default character and are reported through usedDefault.

#include "textfile/TextFileWriter.h"

#include <string>

class SingleByteCodePage;

class ANSI_TextFileWriter : public TextFileWriter {
public:
    using TextFileWriter::TextFileWriter;

    // The low 16 bits of character, as a run of one unit.
    int WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar, bool* usedDefault) override;
    int WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar, bool* usedDefault) override;

private:
    // The conversion table of a single-byte code page, looked up once per code page rather
    // than once per run: an export writes two runs per line.
    const SingleByteCodePage* TableFor(unsigned codePage);
    int WriteThroughTable(const SingleByteCodePage& table, const WChar* text, std::size_t units,
                          const char* defaultChar, bool* usedDefault);

    std::string scratch_;
    const SingleByteCodePage* table_ = nullptr;
    unsigned tableCodePage_ = 0; // the code page table_ belongs to; 0 until looked up
};
