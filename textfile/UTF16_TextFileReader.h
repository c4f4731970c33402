#pragma once
// What the two UTF-16 readers share: lines are cut at the unit 0x000A and the CR rule is
// applied to the unit 0x000D, each in the file's byte order. A final odd byte is never part
// of a unit: the last line ends before it and then the end is reported.

#include "textfile/TextFileReader.h"

class UTF16_TextFileReader : public TextFileReader {
public:
    // The next unit, carriage returns skipped; -1 at the end, -2 on a read error.
    int ReadChar() override;
    int ReadLine(WString& line, unsigned codePage) override;
    int CountLines(std::uint64_t& lines) override;

protected:
    UTF16_TextFileReader(bool bigEndian, const WString* fileName, Platform::FileHandle file, int bufferSize);

private:
    // Fills until at least one whole unit is unread (an odd byte is carried to the front).
    int FillUnits();
    std::size_t UnreadUnitBytes() const { return UnreadBytes() & ~std::size_t{1}; }
    WChar UnitAt(const unsigned char* bytes) const;
    // Byte offset of the first line feed unit in bytes[0, size), or size when there is none.
    std::size_t FindLineFeed(const unsigned char* bytes, std::size_t size) const;
    void AppendUnits(WString& line, std::size_t& used, const unsigned char* bytes, std::size_t units) const;

    bool bigEndian_;
};
