#include "TextFileTesting.h"

#include "refhost/Environment.h"
#include "refhost/FilePath.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace textfile_testing {

ScratchFolder::ScratchFolder() : path_(refhost::MakeTempFolder("tessel-textfile-")) {}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    if (!path_.empty())
        std::filesystem::remove_all(refhost::PathFromUtf8(path_), ignored);
}

WString ScratchFolder::WidePath(const std::string& name) const { return FromUtf8(Path(name)); }

WString ScratchFolder::Write(const std::string& name, const std::string& bytes) const
{
    WriteBytes(Path(name), bytes);
    return WidePath(name);
}

std::string ReadBytes(const std::string& path)
{
    std::ifstream in(refhost::PathFromUtf8(path), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream out(refhost::PathFromUtf8(path), std::ios::binary | std::ios::trunc);
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
    std::error_code error;
    return std::filesystem::is_directory(refhost::PathFromUtf8(TESSEL_TESTDATA), error) ? TESSEL_TESTDATA : "";
}

} // namespace textfile_testing
