#include "textfile/ANSI_TextFileReader.h"

#include "host/StringLength.h"
#include "textfile/TextFile.h"
#include "textfile/TextFileTypes.h"

#include <cstring>

ANSI_TextFileReader::ANSI_TextFileReader(const TextFile* owner, const WString* fileName,
                                         Platform::FileHandle file, int bufferSize)
    : TextFileReader(fileName, file, bufferSize), owner_(owner)
{
}

int ANSI_TextFileReader::ReadChar() { return NextByteSkippingCR(); }

int ANSI_TextFileReader::ReadLine(WString& line, unsigned codePage)
{
    const bool raw = owner_ && owner_->Raw();
    if (!raw && FindTable(codePage))
        return ReadLineThroughTable(line);
    const int result = ReadByteLine(scratch_);
    if (result != TextFileResult::Ok) {
        line.clear();
        return result;
    }
    const void* nul = std::memchr(scratch_.data(), '\0', scratch_.size());
    const std::size_t length = nul ? static_cast<const char*>(nul) - scratch_.data() : scratch_.size();
    ConvertGathered(length, line, codePage);
    return TextFileResult::Ok;
}

// The gathered line, raw or through a multi-byte code page.
void ANSI_TextFileReader::ConvertGathered(std::size_t length, WString& line, unsigned codePage)
{
    line.resize(length);
    if (owner_ && owner_->Raw()) {
        for (std::size_t i = 0; i < length; ++i)
            line[i] = static_cast<unsigned char>(scratch_[i]);
        return;
    }
    // A multi-byte code page; one unit per byte is always room enough.
    const int converted = length == 0 ? 0
        : Platform::MultiByteToWide(codePage, scratch_.data(), static_cast<int>(length), &line[0], static_cast<int>(length));
    line.resize(static_cast<std::size_t>(converted));
}

const SingleByteCodePage* ANSI_TextFileReader::FindTable(unsigned codePage)
{
    // Only code page 0 (and 3, the thread's) follow the ANSI code page setting.
    const unsigned ansiCodePage = codePage == 0 || codePage == 3 ? Platform::AnsiCodePage() : 0;
    if (!tableLookedUp_ || codePage != tableCodePage_ || ansiCodePage != tableAnsiCodePage_) {
        table_ = Platform::FindSingleByteCodePage(codePage);
        tableCodePage_ = codePage;
        tableAnsiCodePage_ = ansiCodePage;
        tableLookedUp_ = true;
    }
    return table_;
}

// A single-byte code page converts each piece straight from the buffer into line. The
// line keeps the previous line's length until the end, so that growing it rarely has to
// fill new room before the text is written over it.
int ANSI_TextFileReader::ReadLineThroughTable(WString& line)
{
    std::size_t used = 0;
    bool textEnded = false;
    const int result = ReadBytePieces([&](const unsigned char* piece, std::size_t length, bool) {
        if (textEnded)
            return;
        if (line.size() < used + length)
            line.resize(used + length);
        const std::size_t decoded = table_->DecodeText(reinterpret_cast<const char*>(piece), length, &line[used]);
        used += decoded;
        textEnded = decoded < length;
    });
    SetLength(line, result == TextFileResult::Ok ? used : 0);
    return result;
}
