#include "textfile/TextFileWriter.h"

#include "textfile/TextFileTypes.h"
#include "host/WideText.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr int kDefaultBufferSize = 4096;

} // namespace

TextFileWriter::TextFileWriter(const WString* fileName, Platform::FileHandle file, int bufferSize)
    : fileName_(fileName), file_(file),
      size_(static_cast<std::size_t>(bufferSize > 0 ? bufferSize : kDefaultBufferSize)),
      buffer_(new (std::nothrow) unsigned char[size_])
{
}

TextFileWriter::~TextFileWriter() = default;

int TextFileWriter::WriteChar(std::uint32_t, unsigned, const char*, bool*) { return TextFileResult::IoError; }

int TextFileWriter::WriteRun(const WChar*, int, unsigned, const char*, bool*) { return TextFileResult::IoError; }

int TextFileWriter::WriteByteOrderMark() { return TextFileResult::Ok; }

std::size_t TextFileWriter::RunLength(const WChar* text, int count)
{
    return count < 0 ? WideLength(text) : static_cast<std::size_t>(count);
}

int TextFileWriter::WriteBuffer()
{
    std::uint32_t written = 0;
    const bool ok = Platform::WriteFile(file_, buffer_.get(), static_cast<std::uint32_t>(used_), &written);
    // Emptied either way: bytes that reached the file must not be written twice.
    used_ = 0;
    if (!ok) {
        failed_ = true;
        return TextFileResult::IoError;
    }
    return TextFileResult::Ok;
}

int TextFileWriter::Put(const void* bytes, std::size_t count)
{
    const auto* in = static_cast<const unsigned char*>(bytes);
    while (count > 0) {
        const std::size_t take = std::min(count, size_ - used_);
        std::memcpy(buffer_.get() + used_, in, take);
        used_ += take;
        in += take;
        count -= take;
        if (used_ == size_ && WriteBuffer() != TextFileResult::Ok)
            return TextFileResult::IoError;
    }
    return TextFileResult::Ok;
}

int TextFileWriter::Flush()
{
    if (used_ > 0)
        WriteBuffer();
    return failed_ ? TextFileResult::IoError : TextFileResult::Ok;
}
