#pragma once
// The readers behind TextFile, one class per encoding. This base holds the byte buffer and
// the line machinery that the encodings share; on its own it is the reader of an empty file,
// whose every read reports the end.
//
// Rules every reader keeps:
// - Only a line feed ends a line. A carriage return that is the last byte (unit) of a piece
//   taken from one buffer fill is dropped, also when no line feed follows it: a lone CR at the
//   end of a fill is lost. That is the required behaviour, not an accident.
// - A read that finds nothing for a new line reports -1 (also after an I/O error, which
//   ReadFailed() then tells); text gathered before the end is delivered as a last line.
// - A delivered line never contains U+0000: its text ends at the first NUL.

#include "host/Text.h"
#include "platform/Platform.h"
#include "textfile/TextFileTypes.h"

#include <cstdint>
#include <memory>
#include <string>

class TextFileReader {
public:
    // fileName and file are borrowed from the owning TextFile. bufferSize: bytes per read,
    // 0 stands for 4096, a negative size gives no buffer (a reader that only reports the end).
    TextFileReader(const WString* fileName, Platform::FileHandle file, int bufferSize);
    virtual ~TextFileReader();
    TextFileReader(const TextFileReader&) = delete;
    TextFileReader& operator=(const TextFileReader&) = delete;

    // The next character, carriage returns skipped; -1 at the end, -2 on a read error.
    virtual int ReadChar();
    // The next line into line (its capacity is kept); 0, or -1 when nothing is left.
    // codePage matters to the ANSI reader only.
    virtual int ReadLine(WString& line, unsigned codePage);
    // Counts the lines that ReadLine would still deliver, without decoding them, and reads
    // to the end. 0, or -2 when a read failed (lines then counts those ended before it).
    virtual int CountLines(std::uint64_t& lines);

    // False when the buffer could not be allocated (the reader is then unusable).
    bool HasBuffer() const { return buffer_ != nullptr || size_ < 0; }
    // True once a read of the file failed.
    bool ReadFailed() const { return readFailed_; }
    const WString* FileName() const { return fileName_; }

protected:
    // Moves the unread bytes to the front of the buffer and reads behind them.
    // 0, -1 at the end (also when there is no buffer), -2 on a read error.
    int Fill();
    std::size_t UnreadBytes() const { return valid_ - position_; }
    const unsigned char* Unread() const { return buffer_.get() + position_; }
    void Consume(std::size_t bytes) { position_ += bytes; }

    // The next byte, carriage returns skipped, or a negative result.
    int NextByteSkippingCR();
    // Hands the next line's bytes to take(const unsigned char* piece, std::size_t length,
    // bool last), one piece per buffer fill, with the CR rule applied to each piece; last
    // tells that a line feed ends the line in this piece. 0, or -1 when nothing at all was
    // there for a new line.
    template <class Take>
    int ReadBytePieces(Take&& take);
    // Gathers the next line's bytes into line.
    int ReadByteLine(std::string& line);
    // CountLines over bytes: one line per line feed, one more for bytes after the last.
    int CountByteLines(std::uint64_t& lines);

private:
    static const unsigned char* FindLineFeed(const unsigned char* bytes, std::size_t count);

    const WString* fileName_;
    Platform::FileHandle file_;
    int size_;
    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t position_ = 0;
    std::size_t valid_ = 0;
    bool atEnd_ = false;
    bool readFailed_ = false;
};

template <class Take>
int TextFileReader::ReadBytePieces(Take&& take)
{
    for (bool firstPass = true;; firstPass = false) {
        if (UnreadBytes() == 0 && Fill() != TextFileResult::Ok)
            return firstPass ? TextFileResult::EndOfFile : TextFileResult::Ok;
        const unsigned char* piece = Unread();
        const unsigned char* lineFeed = FindLineFeed(piece, UnreadBytes());
        std::size_t length = lineFeed ? static_cast<std::size_t>(lineFeed - piece) : UnreadBytes();
        Consume(length);
        if (length > 0 && piece[length - 1] == '\r')
            --length;
        take(piece, length, lineFeed != nullptr);
        if (lineFeed) {
            Consume(1);
            return TextFileResult::Ok;
        }
    }
}
