#pragma once
// One open text file with its reader or writer. Callers see wide (UTF-16) strings and whole
// lines; the encoding on disk is ANSI (a Windows code page), UTF-8, UTF-16LE or UTF-16BE.
// Reading finds the encoding from the byte-order mark (none: ANSI); writing puts the mark of
// the chosen encoding before the first text of a new or empty file and turns every line
// feed into CR LF.
//
// Results of every operation: 0 success, -1 end of file (nothing more to read), -2 the
// system reported an error. Nothing throws and nothing is shown to the user.
//
//     TextFile file;
//     if (file.Open(path, TextFileMode::Read, TextEncoding::Detect, 0) != 0) ...
//     WString line;
//     while (file.ReadLine(nullptr, line) == 0) ...
//     file.Close();

#include "host/Text.h"
#include "platform/Platform.h"
#include "textfile/TextFileReader.h"
#include "textfile/TextFileTypes.h"
#include "textfile/TextFileWriter.h"
#include "host/WideText.h"

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>

class TextFile {
public:
    // Most characters WriteFormat writes for one call.
    static constexpr std::size_t kMaxFormattedLength = 8192;

    // A string-table number in place of a format (see WriteFormat).
    struct StringId {
        unsigned number;
    };

    TextFile();
    ~TextFile(); // closes the file
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    // Opens path. mode: TextFileMode (1 read an existing file; 2 write a new one, truncating;
    // 3 or any other value append, creating the file when missing). flags: the encoding
    // number in the low byte (TextEncoding) and TextFileFlags. bufferSize: bytes per read or
    // write, 0 (or less) for 4096.
    // Reading with encoding 0 (or 5 to 255) detects the encoding from the mark; an empty file
    // opens with encoding 0 and reads nothing. With a named UTF encoding, a mark of that
    // encoding at the start is skipped unless TextFileFlags::NoMarkCheck is set; ANSI never
    // skips one. Writing: encoding 0 means ANSI; appending to a non-empty file writes no mark.
    // An open object is closed first. On -2 the object stays closed.
    int Open(const WChar* path, int mode, std::uint32_t flags, int bufferSize = 0);
    int Open(const WString& path, int mode, std::uint32_t flags, int bufferSize = 0)
    {
        return Open(path.c_str(), mode, flags, bufferSize);
    }

    // The next line into line, without its line feed (see TextFileReader for the rules);
    // line keeps its capacity from call to call. 0, or -1 when nothing is left (also when the
    // file is not open for reading, and after a read error: ReadFailed() tells them apart).
    // usedDefault, when given, is cleared.
    int ReadLine(bool* usedDefault, WString& line);
    // Counts the lines that ReadLine would still deliver, exactly, without decoding them,
    // and reads to the end of the file: for the counting pass before an import. 0, -1 when
    // not open for reading, -2 on a read error (lines then counts those ended before it).
    int CountLines(std::uint64_t* lines);
    // True once a read of this file failed; ReadLine reported the end at that point.
    bool ReadFailed() const;

    // Writes a NUL-terminated string (null writes nothing). The first text of a new or empty
    // file is preceded by the byte-order mark, also when the text is empty. Each line feed
    // becomes CR LF unless TextFileFlags::RawLineFeeds is set. usedDefault, when given, is
    // cleared and then set when the ANSI code page could not hold a character.
    int WriteString(bool* usedDefault, const WChar* text);
    int WriteString(bool* usedDefault, const WString& text) { return WriteString(usedDefault, text.c_str()); }
    // Writes one character, given as a code (UTF-8 writes the whole code; the other encodings
    // its low 16 bits). A line feed (10) is written as WriteString writes it.
    int WriteChar(bool* usedDefault, std::uint32_t character);
    // Formats with FormatWide (%s, %d, %i, %u, %ld, %lu, %lld, %%), keeps at most
    // kMaxFormattedLength characters, and writes the result with WriteString.
    template <class... Args>
    int WriteFormat(bool* usedDefault, const WChar* format, const Args&... args)
    {
        return WriteFormatList(usedDefault, format, {FormatArg(args)...});
    }
    int WriteFormatList(bool* usedDefault, const WChar* format, std::initializer_list<FormatArg> args);
    // The format taken from the module's string table. The module carries no string table on
    // this system, so nothing is written: the result is -2.
    int WriteFormat(bool* usedDefault, StringId format, std::initializer_list<FormatArg> args = {});

    // The replacement for characters the ANSI code page cannot hold (its first byte counts);
    // null restores the code page's own default.
    void SetDefaultChar(const char* text);
    // With raw set the ANSI reader delivers every byte as the unit of the same value, with
    // no code page conversion.
    void SetRaw(bool raw) { raw_ = raw; }
    // The code page of ANSI text in both directions; 0 (the default) is the system's ANSI
    // code page (Platform::AnsiCodePage).
    void SetCodePage(unsigned codePage) { codePage_ = codePage; }

    // Flushes a writer, closes the file and frees the reader or writer. Returns 0, or -2 when
    // a write since Open failed (also one reported earlier) or the system could not close a
    // written file. Closing a closed object does nothing and returns 0.
    int Close();

    bool IsOpen() const { return mode_ != 0; }
    int Mode() const { return mode_; }
    // The encoding in force; after detection the detected one (0 for an empty file).
    int Encoding() const { return encoding_; }
    std::uint32_t Flags() const { return flags_; }
    bool Raw() const { return raw_; }
    unsigned CodePage() const { return codePage_; }
    const WString& FileName() const { return fileName_; }

private:
    int OpenReader();
    int ChooseReader(int encoding);
    int DetectAndChooseReader();
    int SkipMarkOf(int encoding);
    void OpenWriter(int mode);
    int BeforeWriting(bool* usedDefault);
    int WriteLines(const WChar* text, bool* usedDefault);
    const char* DefaultChar() const { return hasDefaultChar_ ? defaultChar_.c_str() : nullptr; }
    void Reset();

    WString fileName_;
    int mode_ = 0;
    int encoding_ = 0;
    std::uint32_t flags_ = 0;
    bool raw_ = false;
    int bufferSize_ = 0;
    Platform::FileHandle file_ = Platform::kInvalidFile;
    std::unique_ptr<TextFileReader> reader_;
    std::unique_ptr<TextFileWriter> writer_;
    bool bomPending_ = false;
    unsigned codePage_ = 0;
    std::string defaultChar_;
    bool hasDefaultChar_ = false;
};
