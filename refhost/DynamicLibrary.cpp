#include "refhost/DynamicLibrary.h"

#include "host/Utf8.h"
#include "refhost/FilePath.h"

#ifdef _WIN32
#include "platform/Windows.h"
#else
#include <dlfcn.h>
#endif

#include <filesystem>

namespace refhost {

#ifdef _WIN32

namespace {

std::string SystemMessage(DWORD error)
{
    wchar_t* text = nullptr;
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                              FORMAT_MESSAGE_IGNORE_INSERTS,
                                          nullptr, error, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring message(text ? text : L"", length);
    ::LocalFree(text);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r' || message.back() == L' '))
        message.pop_back();
    const std::string number = "error " + std::to_string(error);
    return message.empty() ? number : ToUtf8(message) + " (" + number + ")";
}

} // namespace

bool DynamicLibrary::Load(const std::string& path)
{
    handle_ = ::LoadLibraryW(PathFromUtf8(path).c_str());
    error_ = handle_ ? "" : SystemMessage(::GetLastError());
    return handle_ != nullptr;
}

void* DynamicLibrary::Symbol(const char* name) const
{
    return handle_ ? reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name)) : nullptr;
}

std::string ModuleFileName(const std::string& name) { return name + ".dll"; }

std::string ProgramFolder()
{
    std::wstring path(32768, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, &path[0], static_cast<DWORD>(path.size()));
    if (length == 0 || length >= path.size())
        return ".";
    path.resize(length);
    return PathToUtf8(std::filesystem::path(path).parent_path());
}

#else

bool DynamicLibrary::Load(const std::string& path)
{
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    const char* reason = handle_ ? nullptr : ::dlerror();
    error_ = handle_ ? "" : reason ? reason : "unknown reason";
    return handle_ != nullptr;
}

void* DynamicLibrary::Symbol(const char* name) const { return handle_ ? ::dlsym(handle_, name) : nullptr; }

std::string ModuleFileName(const std::string& name) { return "lib" + name + ".so"; }

std::string ProgramFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "." : PathToUtf8(program.parent_path());
}

#endif

} // namespace refhost
