#pragma once
// Helpers for the text-file tests: a scratch folder, byte-exact files, and reading a whole
// file through TextFile.

#include "host/Utf8.h"
#include "textfile/TextFile.h"

#include <cerrno>
#include <cstdint>
#include <string>
#include <vector>

namespace textfile_testing {

// What Platform::LastError reports, by cause, on each system.
namespace system_error {
#ifdef _WIN32
constexpr int kMissingFile = 2;       // ERROR_FILE_NOT_FOUND
constexpr int kMissingFolder = 3;     // ERROR_PATH_NOT_FOUND
constexpr int kFolderAsFile = 5;      // ERROR_ACCESS_DENIED
constexpr int kAccessDenied = 5;
constexpr int kInjectedIoError = 1117; // ERROR_IO_DEVICE
constexpr int kDiskFull = 112;        // ERROR_DISK_FULL
#else
constexpr int kMissingFile = ENOENT;
constexpr int kMissingFolder = ENOENT;
constexpr int kFolderAsFile = EISDIR;
constexpr int kAccessDenied = EACCES;
constexpr int kInjectedIoError = EIO;
constexpr int kDiskFull = ENOSPC;
#endif
} // namespace system_error

// A fresh folder under the system's temporary folder, removed with everything in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    // The path of a file in the folder, narrow and wide.
    std::string Path(const std::string& name) const { return path_ + "/" + name; }
    WString WidePath(const std::string& name) const;
    // Writes bytes to a file of the folder and returns its wide path.
    WString Write(const std::string& name, const std::string& bytes) const;

private:
    std::string path_;
};

std::string ReadBytes(const std::string& path);
bool WriteBytes(const std::string& path, const std::string& bytes);

// Every line of a file as ReadLine delivers them, and how reading ended.
struct ReadResult {
    int openResult = 0;
    int encoding = 0;
    std::vector<WString> lines;
    int endResult = 0; // the first result other than 0
    std::uint64_t counted = 0; // CountLines on a second opening
    int countResult = 0;
};
ReadResult ReadAll(const WString& path, std::uint32_t flags = 0, int bufferSize = 0, unsigned codePage = 0);

// Widens each byte into the unit of the same value (for expectations in Latin-1 range).
WString Latin1(const std::string& bytes);
// UTF-8 text as UTF-16 and back, for paths and expectations.

// The folder of the external corpora, or "" when it is absent.
std::string TestDataFolder();

} // namespace textfile_testing

// Skips the current test when the external corpora are not there.
#define REQUIRE_TESTDATA()                                                                   \
    do {                                                                                     \
        if (::textfile_testing::TestDataFolder().empty())                                    \
            GTEST_SKIP() << "external test corpora not found at " TESSEL_TESTDATA;            \
    } while (false)
