#include "TextFileTesting.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

namespace textfile_testing {

namespace {

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); }

} // namespace

ScratchFolder::ScratchFolder()
{
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base && *base ? base : "/tmp") + "/tessel-textfile-XXXXXX";
    if (::mkdtemp(&pattern[0]))
        path_ = pattern;
}

ScratchFolder::~ScratchFolder()
{
    if (!path_.empty())
        ::nftw(path_.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
}

WString ScratchFolder::WidePath(const std::string& name) const { return FromUtf8(Path(name)); }

WString ScratchFolder::Write(const std::string& name, const std::string& bytes) const
{
    WriteBytes(Path(name), bytes);
    return WidePath(name);
}

std::string ReadBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

ReadResult ReadAll(const WString& path, std::uint32_t flags, int bufferSize, unsigned codePage)
{
    ReadResult result;
    TextFile file;
    file.SetCodePage(codePage);
    result.openResult = file.Open(path, TextFileMode::Read, flags, bufferSize);
    if (result.openResult != TextFileResult::Ok)
        return result;
    result.encoding = file.Encoding();
    WString line;
    int status;
    while ((status = file.ReadLine(nullptr, line)) == TextFileResult::Ok)
        result.lines.push_back(line);
    result.endResult = status;
    file.Close();

    TextFile counter;
    if (counter.Open(path, TextFileMode::Read, flags, bufferSize) == TextFileResult::Ok)
        result.countResult = counter.CountLines(&result.counted);
    return result;
}

WString Latin1(const std::string& bytes)
{
    WString out;
    for (unsigned char b : bytes)
        out += static_cast<WChar>(b);
    return out;
}

std::string TestDataFolder()
{
    struct stat info;
    if (::stat(TESSEL_TESTDATA, &info) == 0 && S_ISDIR(info.st_mode))
        return TESSEL_TESTDATA;
    return "";
}

} // namespace textfile_testing
