// Libraries loaded with LoadLibraryW (so that any path works) and GetProcAddress; failures
// named by the system's own message.

#include "refhost/DynamicLibrary.h"

#include "host/Utf8.h"
#include "platform/Windows.h"
#include "refhost/FilePath.h"

#include <filesystem>

namespace refhost {
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

} // namespace refhost
