#pragma once
// The writers behind TextFile, one class per encoding. This base holds the byte buffer:
// bytes collect in it and go to the file whenever it is full, and at Flush. On its own it
// writes nothing: its character and run operations fail with -2.

#include "host/Text.h"
#include "platform/Platform.h"

#include <cstddef>
#include <cstdint>
#include <memory>

class TextFileWriter {
public:
    // fileName and file are borrowed from the owning TextFile. bufferSize: 0 stands for 4096;
    // a negative size is taken as 4096 as well.
    TextFileWriter(const WString* fileName, Platform::FileHandle file, int bufferSize);
    virtual ~TextFileWriter();
    TextFileWriter(const TextFileWriter&) = delete;
    TextFileWriter& operator=(const TextFileWriter&) = delete;

    // One character, given as a 32-bit code. codePage and defaultChar matter to the ANSI
    // writer only; *usedDefault is set (never cleared) when a character had to be replaced.
    virtual int WriteChar(std::uint32_t character, unsigned codePage, const char* defaultChar, bool* usedDefault);
    // count units of text (a negative count: up to the terminating NUL, which is not written).
    virtual int WriteRun(const WChar* text, int count, unsigned codePage, const char* defaultChar, bool* usedDefault);
    // The encoding's byte-order mark; the base writes none and succeeds.
    virtual int WriteByteOrderMark();

    // Writes the buffered bytes to the file. 0, or -2 when this or any earlier write since
    // construction failed (so a caller learns at Close that data is missing).
    int Flush();
    // False when the buffer could not be allocated (the writer is then unusable).
    bool HasBuffer() const { return buffer_ != nullptr; }
    const WString* FileName() const { return fileName_; }

protected:
    // Copies bytes into the buffer, writing it out whenever it is full. 0 or -2.
    int Put(const void* bytes, std::size_t count);
    // The free part of the buffer, never empty, for a writer that converts into it directly.
    unsigned char* Room(std::size_t* available)
    {
        *available = size_ - used_;
        return buffer_.get() + used_;
    }
    // count bytes were placed in Room; writes the buffer out when it is full. 0 or -2.
    int Commit(std::size_t count)
    {
        used_ += count;
        return used_ == size_ ? WriteBuffer() : 0;
    }
    static std::size_t RunLength(const WChar* text, int count);

private:
    int WriteBuffer();

    const WString* fileName_;
    Platform::FileHandle file_;
    std::size_t size_;
    std::unique_ptr<unsigned char[]> buffer_;
    std::size_t used_ = 0;
    bool failed_ = false;
};
