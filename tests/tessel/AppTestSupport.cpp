#include "tests/tessel/AppTestSupport.h"

#include "host/Utf8.h"
#include "refhost/FilePath.h"

#ifdef _WIN32
#include "platform/Windows.h"
#else
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#ifndef _WIN32
extern char** environ;
#endif

namespace tessel {
namespace testing {
namespace {

std::string ReadAll(const std::string& path)
{
    std::ifstream file(refhost::PathFromUtf8(path), std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

#ifdef _WIN32

// A command line that CommandLineToArgvW splits back into the same words.
std::wstring QuotedWord(const std::string& word)
{
    const std::wstring wide = FromUtf8(word);
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : wide) {
        if (c == L'\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(2 * backslashes, L'\\');
    return quoted + L"\"";
}

HANDLE InheritableFile(const std::string& path, bool write)
{
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return ::CreateFileW(write ? refhost::PathFromUtf8(path).c_str() : L"NUL", write ? GENERIC_WRITE : GENERIC_READ,
                         FILE_SHARE_READ | FILE_SHARE_WRITE, &inherit, write ? CREATE_ALWAYS : OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

// Runs the program with standard input from NUL and the outputs into the files; its exit status.
int Run(const std::vector<std::string>& words, const std::string& folder, const std::string& outPath,
        const std::string& errPath)
{
    std::wstring commandLine;
    for (const std::string& word : words)
        commandLine += (commandLine.empty() ? L"" : L" ") + QuotedWord(word);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = InheritableFile("", false);
    startup.hStdOutput = InheritableFile(outPath, true);
    startup.hStdError = InheritableFile(errPath, true);
    PROCESS_INFORMATION process{};
    const BOOL started = ::CreateProcessW(refhost::PathFromUtf8(TESSEL_BINARY).c_str(), &commandLine[0], nullptr,
                                          nullptr, TRUE, 0, nullptr, refhost::PathFromUtf8(folder).c_str(), &startup,
                                          &process);
    for (HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError})
        ::CloseHandle(handle);
    if (!started)
        throw std::runtime_error("cannot start " + std::string(TESSEL_BINARY));
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    ::GetExitCodeProcess(process.hProcess, &status);
    ::CloseHandle(process.hProcess);
    ::CloseHandle(process.hThread);
    return static_cast<int>(status & 0xFF);
}

#else

// Runs the program with standard input from /dev/null and the outputs into the files, without
// a display (the tests script every answer; a dialog would wait for a person); its exit status.
int Run(const std::vector<std::string>& words, const std::string& folder, const std::string& outPath,
        const std::string& errPath)
{
    std::vector<std::string> copies = words;
    std::vector<char*> argv;
    for (std::string& word : copies)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    std::vector<char*> environment;
    for (char** variable = environ; *variable; ++variable) {
        const std::string_view entry(*variable);
        if (entry.rfind("DISPLAY=", 0) != 0 && entry.rfind("WAYLAND_DISPLAY=", 0) != 0)
            environment.push_back(*variable);
    }
    environment.push_back(nullptr);
    pid_t child = 0;
    const int spawned = posix_spawn(&child, TESSEL_BINARY, &actions, nullptr, argv.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        throw std::runtime_error("cannot start " + std::string(TESSEL_BINARY));
    int wait = 0;
    waitpid(child, &wait, 0);
    return WIFEXITED(wait) ? WEXITSTATUS(wait) : 128 + WTERMSIG(wait);
}

#endif

} // namespace

TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& folder)
{
    const std::string outPath = folder + "/.tessel-test-stdout";
    const std::string errPath = folder + "/.tessel-test-stderr";
    std::vector<std::string> words = {TESSEL_BINARY};
    words.insert(words.end(), arguments.begin(), arguments.end());

    TesselRun run;
    run.status = Run(words, folder, outPath, errPath);
    run.out = ReadAll(outPath);
    run.err = ReadAll(errPath);
    std::error_code ignored;
    std::filesystem::remove(refhost::PathFromUtf8(outPath), ignored);
    std::filesystem::remove(refhost::PathFromUtf8(errPath), ignored);
    return run;
}

ModuleHost& LoadedModule()
{
    static const std::unique_ptr<ModuleHost> module = [] {
        auto host = std::make_unique<ModuleHost>();
        host->Load(TESSEL_MODULE_PATH);
        return host;
    }();
    return *module;
}

std::string Utf16LeWithMark(const WString& text)
{
    std::string bytes = "\xFF\xFE";
    for (const WChar unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return lines;
}

} // namespace testing
} // namespace tessel
