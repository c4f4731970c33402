#include "refhost/Environment.h"

#include "host/Utf8.h"
#include "refhost/FilePath.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <system_error>

#ifdef _WIN32
#include "platform/Windows.h"
#include <shellapi.h>

#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

namespace refhost {

void SetEnvironment(const char* name, const char* value)
{
#ifdef _WIN32
    _putenv_s(name, value ? value : "");
#else
    if (value)
        ::setenv(name, value, 1);
    else
        ::unsetenv(name);
#endif
}

std::string MakeTempFolder(const std::string& prefix)
{
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    if (error)
        return "";
    static std::atomic<unsigned> counter{0};
    std::mt19937_64 random(std::random_device{}() ^
                           static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name = prefix + std::to_string(random() % 1000000000) + "-" + std::to_string(counter++);
        const std::filesystem::path folder = base / PathFromUtf8(name);
        if (std::filesystem::create_directory(folder, error))
            return PathToUtf8(folder);
    }
    return "";
}

bool ReadsEveryFile()
{
#ifdef _WIN32
    return true;
#else
    return ::geteuid() == 0;
#endif
}

bool KeepsPermissionBits()
{
#ifdef _WIN32
    return false;
#else
    return true;
#endif
}

std::string NullDevice()
{
#ifdef _WIN32
    return "NUL";
#else
    return "/dev/null";
#endif
}

std::vector<std::string> CommandLineArguments(int argc, char** argv)
{
#ifdef _WIN32
    int count = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (wide) {
        std::vector<std::string> arguments;
        for (int i = 0; i < count; ++i)
            arguments.push_back(ToUtf8(wide[i]));
        ::LocalFree(wide);
        return arguments;
    }
#endif
    return std::vector<std::string>(argv, argv + argc);
}

void UseBinaryStandardStreams()
{
#ifdef _WIN32
    ::_setmode(1, _O_BINARY);
    ::_setmode(2, _O_BINARY);
#endif
}

bool RunsUnderWine()
{
#ifdef _WIN32
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll && ::GetProcAddress(ntdll, "wine_get_version");
#else
    return false;
#endif
}

} // namespace refhost
