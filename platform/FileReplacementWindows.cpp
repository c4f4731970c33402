// Whole files by name on Windows. A replacement takes an existing target's place through
// ReplaceFileW, which keeps the target's attributes and security; a new target is moved into
// place with write-through.

#include "platform/FileReplacement.h"
#include "platform/ErrorRecord.h"
#include "platform/Platform.h"
#include "platform/PlatformFaults.h"
#include "platform/Windows.h"

#include <atomic>
#include <cwchar>
#include <string>

namespace {

bool Fail(int error) { return Platform::ErrorRecord::Fail(error); }

bool FailWithSystemError() { return Fail(static_cast<int>(::GetLastError())); }

// A file opened for nothing but questions about it; directories too.
HANDLE OpenForQuestions(const WChar* path)
{
    return ::CreateFileW(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                         FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

// A name nobody else uses in the target's folder that still tells which file it is for.
WString FreshNameBeside(const WString& target)
{
    static std::atomic<unsigned> counter{0};
    const unsigned stamp = static_cast<unsigned>(::GetTickCount()) ^ (static_cast<unsigned>(::GetCurrentProcessId()) << 16);
    wchar_t suffix[40];
    std::swprintf(suffix, 40, L".%06u-%u.part", stamp % 1000000u, counter++);
    return target + suffix;
}

// The path made absolute: ReplaceFileW works out the folders itself and fails on relative
// names (ERROR_DIRECTORY). The path as given when the system cannot tell.
WString FullPath(const WChar* path)
{
    const DWORD needed = ::GetFullPathNameW(path, 0, nullptr, nullptr);
    if (needed == 0)
        return path;
    WString full(needed, L'\0');
    const DWORD length = ::GetFullPathNameW(path, needed, full.data(), nullptr);
    if (length == 0 || length >= needed)
        return path;
    full.resize(length);
    return full;
}

bool FlushToDisk(const WChar* path)
{
    const HANDLE file = ::CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FailWithSystemError();
    const bool flushed = ::FlushFileBuffers(file) != 0;
    const DWORD error = ::GetLastError();
    ::CloseHandle(file);
    return flushed || Fail(static_cast<int>(error));
}

} // namespace

namespace Platform {

PathKind KindOfPath(const WChar* path)
{
    if (!path || !*path)
        return PathKind::Missing;
    const HANDLE file = OpenForQuestions(path);
    if (file == INVALID_HANDLE_VALUE)
        return PathKind::Missing;
    PathKind kind = PathKind::Other;
    BY_HANDLE_FILE_INFORMATION information;
    if (::GetFileType(file) == FILE_TYPE_DISK && ::GetFileInformationByHandle(file, &information))
        kind = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? PathKind::Directory : PathKind::Regular;
    ::CloseHandle(file);
    return kind;
}

bool SizeOfFile(const WChar* path, std::uint64_t* size)
{
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExW(path, GetFileExInfoStandard, &data))
        return FailWithSystemError();
    *size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    return true;
}

bool CreateFileBeside(const WChar* target, WString* created)
{
    for (int attempt = 0; attempt < 100; ++attempt) {
        const WString name = FreshNameBeside(target);
        const HANDLE file = ::CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                          FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file == INVALID_HANDLE_VALUE && ::GetLastError() == ERROR_FILE_EXISTS)
            continue;
        if (file == INVALID_HANDLE_VALUE)
            return FailWithSystemError();
        ::CloseHandle(file);
        *created = name;
        return true;
    }
    return Fail(ERROR_FILE_EXISTS);
}

bool ReplaceFileWith(const WChar* target, const WChar* replacement)
{
    if (FaultPoint::ReplaceFails())
        return Fail(ERROR_IO_DEVICE);
    if (!FlushToDisk(replacement))
        return false;
    const WString fullTarget = FullPath(target);
    const WString fullReplacement = FullPath(replacement);
    if (KindOfPath(target) == PathKind::Regular) {
        if (::ReplaceFileW(fullTarget.c_str(), fullReplacement.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS,
                           nullptr, nullptr))
            return true;
        return FailWithSystemError();
    }
    if (::MoveFileExW(fullReplacement.c_str(), fullTarget.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    return FailWithSystemError();
}

bool RemoveFile(const WChar* path)
{
    return ::DeleteFileW(path) || FailWithSystemError();
}

bool TruncateFile(const WChar* path, std::uint64_t length)
{
    const HANDLE file = ::CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FailWithSystemError();
    LARGE_INTEGER position;
    position.QuadPart = static_cast<LONGLONG>(length);
    const bool cut = ::SetFilePointerEx(file, position, nullptr, FILE_BEGIN) && ::SetEndOfFile(file);
    const DWORD error = ::GetLastError();
    ::CloseHandle(file);
    return cut || Fail(static_cast<int>(error));
}

WString ErrorDescription(int error)
{
    wchar_t* text = nullptr;
    const DWORD length = ::FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                              FORMAT_MESSAGE_IGNORE_INSERTS,
                                          nullptr, static_cast<DWORD>(error), 0, reinterpret_cast<wchar_t*>(&text), 0,
                                          nullptr);
    WString description(text ? text : L"", length);
    if (text)
        ::LocalFree(text);
    // The system's text ends in a full stop and a line break; the message around it has its own.
    while (!description.empty() && (description.back() == L'\r' || description.back() == L'\n' ||
                                    description.back() == L' ' || description.back() == L'.'))
        description.pop_back();
    return description;
}

} // namespace Platform
