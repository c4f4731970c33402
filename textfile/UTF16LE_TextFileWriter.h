#pragma once
// Writes UTF-16 little-endian with the mark FF FE.

#include "textfile/UTF16_TextFileWriter.h"

class UTF16LE_TextFileWriter : public UTF16_TextFileWriter {
public:
    UTF16LE_TextFileWriter(const WString* fileName, Platform::FileHandle file, int bufferSize)
        : UTF16_TextFileWriter(false, fileName, file, bufferSize)
    {
    }
};
