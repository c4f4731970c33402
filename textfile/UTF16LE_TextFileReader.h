#pragma once
// Reads UTF-16 little-endian text (mark FF FE, skipped by TextFile when present).

#include "textfile/UTF16_TextFileReader.h"

class UTF16LE_TextFileReader : public UTF16_TextFileReader {
public:
    UTF16LE_TextFileReader(const WString* fileName, Platform::FileHandle file, int bufferSize)
        : UTF16_TextFileReader(false, fileName, file, bufferSize)
    {
    }
};
