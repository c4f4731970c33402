#pragma once
// Writes UTF-16 big-endian with the mark FE FF.

#include "textfile/UTF16_TextFileWriter.h"

class UTF16BE_TextFileWriter : public UTF16_TextFileWriter {
public:
    UTF16BE_TextFileWriter(const WString* fileName, Platform::FileHandle file, int bufferSize)
        : UTF16_TextFileWriter(true, fileName, file, bufferSize)
    {
    }
};
