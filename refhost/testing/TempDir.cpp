#include "refhost/testing/TempDir.h"

#include "refhost/Utf8.h"

#include <stdlib.h>

#include <cstdlib>
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
        std::filesystem::remove_all(path_, ignored);
    }
}

const std::string& TempDir::Path()
{
    if (path_.empty()) {
        const char* base = std::getenv("TMPDIR");
        std::string pattern = std::string(base && *base ? base : "/tmp") + "/tessel-test-XXXXXX";
        if (!mkdtemp(&pattern[0]))
            throw std::runtime_error("cannot create a temporary folder from " + pattern);
        path_ = pattern;
    }
    return path_;
}

WString TempDir::FilePath(const std::string& name) { return FromUtf8(Path() + "/" + name); }

WString TempDir::WriteFile(const std::string& name, const std::string& bytes)
{
    const std::string path = Path() + "/" + name;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path);
    return FromUtf8(path);
}

std::string TempDir::ReadFile(const std::string& name)
{
    std::ifstream file(Path() + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace testing
} // namespace refhost
