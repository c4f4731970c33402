#include "textfile/TextFile.h"

#include "textfile/ANSI_TextFileReader.h"
#include "textfile/ANSI_TextFileWriter.h"
#include "platform/Sse2.h"
#include "textfile/UTF16BE_TextFileReader.h"
#include "textfile/UTF16BE_TextFileWriter.h"
#include "textfile/UTF16LE_TextFileReader.h"
#include "textfile/UTF16LE_TextFileWriter.h"
#include "textfile/UTF8_TextFileReader.h"
#include "textfile/UTF8_TextFileWriter.h"

#include <new>

namespace {

const WChar kLineFeedText[] = {WTEXT('\n'), 0};
const WChar kLineEnd[] = {WTEXT('\r'), WTEXT('\n')};

template <class Object>
std::unique_ptr<Object> KeepIfUsable(Object* object)
{
    std::unique_ptr<Object> owned(object);
    if (owned && !owned->HasBuffer())
        owned.reset();
    return owned;
}

} // namespace

TextFile::TextFile() = default;

TextFile::~TextFile() { Close(); }

int TextFile::Open(const WChar* path, int mode, std::uint32_t flags, int bufferSize)
{
    Close();
    if (mode != TextFileMode::Read && mode != TextFileMode::Write)
        mode = TextFileMode::Append;
    const bool reading = mode == TextFileMode::Read;
    const Platform::FileCreation creation = reading ? Platform::FileCreation::OpenExisting
        : mode == TextFileMode::Write                ? Platform::FileCreation::CreateAlways
                                                     : Platform::FileCreation::OpenAlways;
    file_ = Platform::OpenFile(path, reading ? Platform::FileAccess::Read : Platform::FileAccess::Write, creation);
    if (file_ == Platform::kInvalidFile)
        return TextFileResult::IoError;

    fileName_ = path;
    mode_ = mode;
    flags_ = flags;
    raw_ = false;
    bufferSize_ = bufferSize > 0 ? bufferSize : 0;
    encoding_ = static_cast<int>(flags & TextFileFlags::EncodingMask);
    if (!reading) {
        if (encoding_ == TextEncoding::Detect)
            encoding_ = TextEncoding::Ansi;
        OpenWriter(mode);
        return TextFileResult::Ok;
    }
    const int result = OpenReader();
    if (result != TextFileResult::Ok)
        Close();
    return result;
}

void TextFile::OpenWriter(int mode)
{
    bomPending_ = true;
    std::uint64_t size = 0;
    if (mode == TextFileMode::Append && Platform::FileSize(file_, &size) && size != 0 &&
        Platform::SeekFile(file_, 0, Platform::SeekOrigin::End))
        bomPending_ = false;
    TextFileWriter* writer = nullptr;
    switch (encoding_) {
    case TextEncoding::Ansi: writer = new (std::nothrow) ANSI_TextFileWriter(&fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf16LE: writer = new (std::nothrow) UTF16LE_TextFileWriter(&fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf16BE: writer = new (std::nothrow) UTF16BE_TextFileWriter(&fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf8: writer = new (std::nothrow) UTF8_TextFileWriter(&fileName_, file_, bufferSize_); break;
    default: break; // no writer: every write fails
    }
    writer_ = KeepIfUsable(writer);
}

int TextFile::OpenReader()
{
    switch (encoding_) {
    case TextEncoding::Ansi:
        return ChooseReader(TextEncoding::Ansi);
    case TextEncoding::Utf16LE:
    case TextEncoding::Utf16BE:
    case TextEncoding::Utf8:
        if (!(flags_ & TextFileFlags::NoMarkCheck)) {
            const int result = SkipMarkOf(encoding_);
            if (result != TextFileResult::Ok)
                return result;
        }
        return ChooseReader(encoding_);
    default:
        return DetectAndChooseReader();
    }
}

// Reads the file's first bytes one at a time; when they are the whole mark of encoding the
// reader starts behind it, otherwise back at byte 0.
int TextFile::SkipMarkOf(int encoding)
{
    std::size_t length = 0;
    const unsigned char* mark = ByteOrderMarkOf(encoding, &length);
    for (std::size_t i = 0; i < length; ++i) {
        unsigned char byte = 0;
        std::uint32_t bytesRead = 0;
        if (!Platform::ReadFile(file_, &byte, 1, &bytesRead))
            return TextFileResult::IoError;
        if (bytesRead == 0 || byte != mark[i])
            return Platform::SeekFile(file_, 0, Platform::SeekOrigin::Begin) ? TextFileResult::Ok
                                                                            : TextFileResult::IoError;
    }
    return TextFileResult::Ok;
}

// Reads single bytes while they may still begin a mark. An empty file gets the bare reader,
// which reports the end at once, and keeps encoding 0.
int TextFile::DetectAndChooseReader()
{
    unsigned char head[3];
    std::size_t count = 0;
    for (;;) {
        std::uint32_t bytesRead = 0;
        if (!Platform::ReadFile(file_, &head[count], 1, &bytesRead))
            return TextFileResult::IoError;
        if (bytesRead == 0) {
            if (count == 0) {
                encoding_ = TextEncoding::Detect;
                reader_ = KeepIfUsable(new (std::nothrow) TextFileReader(&fileName_, file_, -1));
                return TextFileResult::Ok;
            }
            break;
        }
        ++count;
        std::size_t markLength = 0;
        const int marked = EncodingOfByteOrderMark(head, count, &markLength);
        if (marked != 0)
            return ChooseReader(marked);
        if (!MayBeginByteOrderMark(head, count))
            break;
    }
    if (!Platform::SeekFile(file_, 0, Platform::SeekOrigin::Begin))
        return TextFileResult::IoError;
    return ChooseReader(TextEncoding::Ansi);
}

int TextFile::ChooseReader(int encoding)
{
    encoding_ = encoding;
    TextFileReader* reader = nullptr;
    switch (encoding) {
    case TextEncoding::Ansi: reader = new (std::nothrow) ANSI_TextFileReader(this, &fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf16LE: reader = new (std::nothrow) UTF16LE_TextFileReader(&fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf16BE: reader = new (std::nothrow) UTF16BE_TextFileReader(&fileName_, file_, bufferSize_); break;
    case TextEncoding::Utf8: reader = new (std::nothrow) UTF8_TextFileReader(&fileName_, file_, bufferSize_); break;
    default: break;
    }
    reader_ = KeepIfUsable(reader);
    return TextFileResult::Ok;
}

int TextFile::ReadLine(bool* usedDefault, WString& line)
{
    if (usedDefault)
        *usedDefault = false;
    if (!reader_) {
        line.clear();
        return TextFileResult::EndOfFile;
    }
    return reader_->ReadLine(line, codePage_);
}

int TextFile::CountLines(std::uint64_t* lines)
{
    *lines = 0;
    if (!reader_)
        return mode_ == TextFileMode::Read ? TextFileResult::Ok : TextFileResult::EndOfFile;
    return reader_->CountLines(*lines);
}

bool TextFile::ReadFailed() const { return reader_ && reader_->ReadFailed(); }

int TextFile::BeforeWriting(bool* usedDefault)
{
    if (usedDefault)
        *usedDefault = false;
    if (!writer_)
        return TextFileResult::IoError;
    if (bomPending_) {
        const int result = writer_->WriteByteOrderMark();
        if (result != TextFileResult::Ok)
            return result;
        bomPending_ = false;
    }
    return TextFileResult::Ok;
}

int TextFile::WriteString(bool* usedDefault, const WChar* text)
{
    const int result = BeforeWriting(usedDefault);
    if (result != TextFileResult::Ok || !text || !*text)
        return result;
    if (flags_ & TextFileFlags::RawLineFeeds)
        return writer_->WriteRun(text, -1, codePage_, DefaultChar(), usedDefault);
    return WriteLines(text, usedDefault);
}

// One pass over text: each piece before a line feed is written as a run, then CR LF.
int TextFile::WriteLines(const WChar* text, bool* usedDefault)
{
    for (const WChar* piece = text;;) {
        const std::size_t length = FindLineFeedOrNul(piece);
        int result = TextFileResult::Ok;
        if (length > 0)
            result = writer_->WriteRun(piece, static_cast<int>(length), codePage_, DefaultChar(), usedDefault);
        if (result != TextFileResult::Ok || piece[length] == 0)
            return result;
        result = writer_->WriteRun(kLineEnd, 2, codePage_, DefaultChar(), usedDefault);
        if (result != TextFileResult::Ok)
            return result;
        piece += length + 1;
    }
}

int TextFile::WriteChar(bool* usedDefault, std::uint32_t character)
{
    const int result = BeforeWriting(usedDefault);
    if (result != TextFileResult::Ok)
        return result;
    if (character == WTEXT('\n'))
        return WriteString(usedDefault, kLineFeedText);
    return writer_->WriteChar(character, codePage_, DefaultChar(), usedDefault);
}

int TextFile::WriteFormatList(bool* usedDefault, const WChar* format, std::initializer_list<FormatArg> args)
{
    WString text = FormatWide(format ? WString(format) : WString(), args);
    if (text.size() > kMaxFormattedLength)
        text.resize(kMaxFormattedLength);
    return WriteString(usedDefault, text);
}

int TextFile::WriteFormat(bool* usedDefault, StringId, std::initializer_list<FormatArg>)
{
    if (usedDefault)
        *usedDefault = false;
    return TextFileResult::IoError;
}

void TextFile::SetDefaultChar(const char* text)
{
    hasDefaultChar_ = text != nullptr;
    defaultChar_ = text ? text : "";
}

int TextFile::Close()
{
    if (mode_ == 0)
        return TextFileResult::Ok;
    int result = TextFileResult::Ok;
    if (mode_ != TextFileMode::Read && writer_)
        result = writer_->Flush();
    if (!Platform::CloseFile(file_) && mode_ != TextFileMode::Read)
        result = TextFileResult::IoError;
    Reset();
    return result;
}

void TextFile::Reset()
{
    file_ = Platform::kInvalidFile;
    mode_ = 0;
    reader_.reset();
    writer_.reset();
    fileName_.clear();
    fileName_.shrink_to_fit();
    bomPending_ = false;
}
