#include "textfile/TextFileReader.h"

#include "textfile/TextFileTypes.h"

#include <cstring>
#include <new>

namespace {

constexpr int kDefaultBufferSize = 4096;

int BufferSizeFor(int requested) { return requested == 0 ? kDefaultBufferSize : requested; }

} // namespace

TextFileReader::TextFileReader(const WString* fileName, Platform::FileHandle file, int bufferSize)
    : fileName_(fileName), file_(file), size_(BufferSizeFor(bufferSize))
{
    if (size_ > 0)
        buffer_.reset(new (std::nothrow) unsigned char[static_cast<std::size_t>(size_)]);
}

TextFileReader::~TextFileReader() = default;

int TextFileReader::ReadChar() { return TextFileResult::EndOfFile; }

int TextFileReader::ReadLine(WString& line, unsigned)
{
    line.clear();
    return TextFileResult::EndOfFile;
}

int TextFileReader::CountLines(std::uint64_t& lines)
{
    lines = 0;
    return TextFileResult::Ok;
}

int TextFileReader::Fill()
{
    if (atEnd_ || !buffer_) {
        atEnd_ = true;
        return TextFileResult::EndOfFile;
    }
    const std::size_t kept = UnreadBytes();
    if (kept > 0)
        std::memmove(buffer_.get(), buffer_.get() + position_, kept);
    position_ = 0;
    valid_ = kept;
    std::uint32_t bytesRead = 0;
    if (!Platform::ReadFile(file_, buffer_.get() + kept, static_cast<std::uint32_t>(size_ - kept), &bytesRead)) {
        readFailed_ = true;
        return TextFileResult::IoError;
    }
    if (bytesRead == 0) {
        atEnd_ = true;
        return TextFileResult::EndOfFile;
    }
    valid_ = kept + bytesRead;
    return TextFileResult::Ok;
}

int TextFileReader::NextByteSkippingCR()
{
    for (;;) {
        if (UnreadBytes() == 0) {
            const int result = Fill();
            if (result != TextFileResult::Ok)
                return result;
        }
        const unsigned char byte = buffer_[position_++];
        if (byte != '\r')
            return byte;
    }
}

const unsigned char* TextFileReader::FindLineFeed(const unsigned char* bytes, std::size_t count)
{
    return static_cast<const unsigned char*>(std::memchr(bytes, '\n', count));
}

int TextFileReader::ReadByteLine(std::string& line)
{
    line.clear();
    return ReadBytePieces([&line](const unsigned char* piece, std::size_t length, bool) {
        line.append(reinterpret_cast<const char*>(piece), length);
    });
}

int TextFileReader::CountByteLines(std::uint64_t& lines)
{
    lines = 0;
    bool textAfterLastLineFeed = false;
    for (;;) {
        if (UnreadBytes() == 0) {
            const int result = Fill();
            if (result == TextFileResult::IoError)
                return result;
            if (result != TextFileResult::Ok)
                break;
        }
        const unsigned char* scan = Unread();
        const unsigned char* end = scan + UnreadBytes();
        while (const auto* lineFeed = static_cast<const unsigned char*>(std::memchr(scan, '\n', end - scan))) {
            ++lines;
            scan = lineFeed + 1;
        }
        if (scan != Unread())
            textAfterLastLineFeed = false;
        if (scan != end)
            textAfterLastLineFeed = true;
        Consume(UnreadBytes());
    }
    if (textAfterLastLineFeed)
        ++lines;
    return TextFileResult::Ok;
}
