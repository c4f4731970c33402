#pragma once
// A private folder for one test's files, removed with everything in it when the object goes.

#include "host/Text.h"

#include <filesystem>
#include <string>

namespace refhost {
namespace testing {

class TempDir {
public:
    TempDir() = default;
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The folder (created under the system's temporary folder on first use). Throws std::runtime_error
    // when it cannot be created.
    const std::string& Path();
    // The path of a file in the folder, in the form the module takes.
    WString FilePath(const std::string& name);
    // Writes the bytes exactly as given into the file (replacing it) and returns its path.
    // Throws std::runtime_error when the file cannot be written.
    WString WriteFile(const std::string& name, const std::string& bytes);
    // The bytes of the file; "" when it does not exist or cannot be read.
    std::string ReadFile(const std::string& name);

private:
    std::filesystem::path Entry(const std::string& name);

    std::string path_;
};

} // namespace testing
} // namespace refhost
