// Arbitrary bytes as a text file. The first byte picks the buffer size; for each way of
// opening, reading must end in -1, deliver no NUL, and agree with the counting pass. The
// lines then go through the splitters, and through a UTF-16LE file that must read back the
// same. Files live in memory (memfd) and are reached by their /proc path.

#include "textfile/FieldSplit.h"
#include "textfile/TextFile.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace {

class MemoryFile {
public:
    explicit MemoryFile(const char* name) : fd_(::memfd_create(name, 0))
    {
        if (fd_ < 0)
            std::abort();
        const std::string path = "/proc/self/fd/" + std::to_string(fd_);
        path_.assign(path.begin(), path.end());
    }
    void Fill(const std::uint8_t* data, std::size_t size) const
    {
        if (::ftruncate(fd_, 0) != 0 || ::pwrite(fd_, data, size, 0) != static_cast<ssize_t>(size))
            std::abort();
    }
    const WString& Path() const { return path_; }

private:
    int fd_;
    WString path_;
};

void Check(bool condition)
{
    if (!condition)
        std::abort();
}

std::vector<WString> ReadAll(const WString& path, std::uint32_t flags, int bufferSize)
{
    std::vector<WString> lines;
    TextFile file;
    Check(file.Open(path, TextFileMode::Read, flags, bufferSize) == TextFileResult::Ok);
    WString line;
    int result;
    while ((result = file.ReadLine(nullptr, line)) == TextFileResult::Ok) {
        Check(line.find(WChar(0)) == WString::npos);
        lines.push_back(line);
    }
    Check(result == TextFileResult::EndOfFile && !file.ReadFailed());

    TextFile counter;
    std::uint64_t counted = 0;
    Check(counter.Open(path, TextFileMode::Read, flags, bufferSize) == TextFileResult::Ok);
    Check(counter.CountLines(&counted) == TextFileResult::Ok && counted == lines.size());
    return lines;
}

void Split(const std::vector<WString>& lines)
{
    static const DelimiterList delimiterSets[] = {{WTEXT(" ")}, {WTEXT(","), WTEXT(";")}, {WTEXT("\t")}, {WTEXT("::")}, {WTEXT(""), WTEXT("\u00A4")}};
    const WString markers = CommentMarkersOf(WTEXT("#;"));
    PositionList full = {3, 7};
    PositionList limited = full;
    FieldList fields;
    FieldList firstFields;
    for (const WString& original : lines) {
        (void)IsCommentLine(original, markers);
        for (const DelimiterList& delimiters : delimiterSets) {
            WString line = original;
            NormalizeDelimitedLine(line, delimiters, fields);
        }
        SplitByDelimiter(original, fields, WTEXT(','), 2);
        const int count = SplitAtPositions(original, full, fields);
        Check(SplitAtPositions(original, limited, firstFields, 3) == count);
        for (std::size_t i = 0; i < firstFields.size(); ++i)
            Check(firstFields[i] == fields[i]);
    }
}

// What UTF-16LE holds, it gives back: lines written with a line feed each read back alike.
void RoundTrip(const std::vector<WString>& lines, const MemoryFile& target)
{
    TextFile writer;
    Check(writer.Open(target.Path(), TextFileMode::Write, TextEncoding::Utf16LE) == TextFileResult::Ok);
    for (const WString& line : lines) {
        Check(writer.WriteString(nullptr, line) == TextFileResult::Ok);
        Check(writer.WriteChar(nullptr, WTEXT('\n')) == TextFileResult::Ok);
    }
    Check(writer.Close() == TextFileResult::Ok);
    // A buffer larger than the file: no fill ends on a carriage return inside a line.
    Check(ReadAll(target.Path(), TextEncoding::Detect, 1 << 20) == lines);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const MemoryFile source("fuzz-textfile-in");
    static const MemoryFile target("fuzz-textfile-out");
    if (size == 0)
        return 0;
    const int bufferSize = data[0] % 17; // 0 is the default of 4096
    source.Fill(data + 1, size - 1);
    static const std::uint32_t flagSets[] = {0, 1, 2, 3, 4, 2 | 0x200, 3 | 0x200, 4 | 0x200};
    for (std::uint32_t flags : flagSets) {
        const std::vector<WString> lines = ReadAll(source.Path(), flags, bufferSize);
        if (flags == 0) {
            Split(lines);
            RoundTrip(lines, target);
        }
    }
    return 0;
}
