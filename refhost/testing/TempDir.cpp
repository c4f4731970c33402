#include "refhost/testing/TempDir.h"

#include "host/Utf8.h"
#include "refhost/Environment.h"
#include "refhost/FilePath.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace refhost {
namespace testing {

TempDir::~TempDir()
{
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(PathFromUtf8(path_), ignored);
    }
}

const std::string& TempDir::Path()
{
    if (path_.empty()) {
        path_ = MakeTempFolder("tessel-test-");
        if (path_.empty())
            throw std::runtime_error("cannot create a temporary folder");
    }
    return path_;
}

// With the system's own separator, as the system's file calls report paths.
std::filesystem::path TempDir::Entry(const std::string& name) { return PathFromUtf8(Path()) / PathFromUtf8(name); }

WString TempDir::FilePath(const std::string& name) { return FromUtf8(PathToUtf8(Entry(name))); }

WString TempDir::WriteFile(const std::string& name, const std::string& bytes)
{
    const std::string path = PathToUtf8(Entry(name));
    std::ofstream file(Entry(name), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
    return FromUtf8(path);
}

std::string TempDir::ReadFile(const std::string& name)
{
    std::ifstream file(Entry(name), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace testing
} // namespace refhost
