#pragma once
// Reads UTF-16 big-endian text (mark FE FF, skipped by TextFile when present); lines are
// delivered with the bytes of every unit swapped into the host's order.

#include "textfile/UTF16_TextFileReader.h"

class UTF16BE_TextFileReader : public UTF16_TextFileReader {
public:
    UTF16BE_TextFileReader(const WString* fileName, Platform::FileHandle file, int bufferSize)
        : UTF16_TextFileReader(true, fileName, file, bufferSize)
    {
    }
};
