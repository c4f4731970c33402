// Files on Windows, through the Win32 file calls the module is written against. Every open
// shares reading only (FILE_SHARE_READ), so nobody else may write while the module has the
// file open. A directory is refused by CreateFileW itself (ERROR_ACCESS_DENIED), as the
// module opens without backup semantics.

#include "platform/CodePageSetting.h"
#include "platform/Platform.h"
#include "platform/ErrorRecord.h"
#include "platform/PlatformFaults.h"
#include "platform/Windows.h"

#include <climits>

namespace {

// What an injected failure reports, as a real device or disk would.
constexpr int kInjectedIoError = ERROR_IO_DEVICE;
constexpr int kInjectedDiskFull = ERROR_DISK_FULL;

bool Fail(int error) { return Platform::ErrorRecord::Fail(error); }

bool FailWithSystemError() { return Fail(static_cast<int>(::GetLastError())); }

Platform::FileHandle FailOpen(int error)
{
    Fail(error);
    return Platform::kInvalidFile;
}

HANDLE Handle(Platform::FileHandle file) { return reinterpret_cast<HANDLE>(file); }

DWORD Disposition(Platform::FileCreation creation)
{
    switch (creation) {
    case Platform::FileCreation::OpenExisting: return OPEN_EXISTING;
    case Platform::FileCreation::CreateAlways: return CREATE_ALWAYS;
    case Platform::FileCreation::OpenAlways: return OPEN_ALWAYS;
    }
    return OPEN_EXISTING;
}

} // namespace

namespace Platform {

FileHandle OpenFile(const WChar* path, FileAccess access, FileCreation creation)
{
    // A file's text is read or written in the ANSI code page as it is when the file opens.
    CodePageSetting::ReadAgain();
    if (FaultPoint::OpenFails())
        return FailOpen(kInjectedIoError);
    if (!path || !*path)
        return FailOpen(ERROR_FILE_NOT_FOUND);
    const DWORD desiredAccess = access == FileAccess::Read ? GENERIC_READ : GENERIC_WRITE;
    const HANDLE file = ::CreateFileW(path, desiredAccess, FILE_SHARE_READ, nullptr, Disposition(creation),
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FailOpen(static_cast<int>(::GetLastError()));
    return reinterpret_cast<FileHandle>(file);
}

bool ReadFile(FileHandle file, void* buffer, std::uint32_t size, std::uint32_t* bytesRead)
{
    *bytesRead = 0;
    if (FaultPoint::ReadFails())
        return Fail(kInjectedIoError);
    DWORD n = 0;
    if (!::ReadFile(Handle(file), buffer, size, &n, nullptr))
        return FailWithSystemError();
    *bytesRead = n;
    return true;
}

bool WriteFile(FileHandle file, const void* data, std::uint32_t size, std::uint32_t* bytesWritten)
{
    *bytesWritten = 0;
    const std::uint32_t allowed = FaultPoint::WritableBytes(size);
    const auto* bytes = static_cast<const char*>(data);
    while (*bytesWritten < allowed) {
        DWORD n = 0;
        if (!::WriteFile(Handle(file), bytes + *bytesWritten, allowed - *bytesWritten, &n, nullptr))
            return FailWithSystemError();
        if (n == 0)
            return Fail(kInjectedDiskFull);
        *bytesWritten += n;
    }
    return allowed == size || Fail(kInjectedDiskFull);
}

bool FileSize(FileHandle file, std::uint64_t* size)
{
    DWORD high = 0;
    const DWORD low = ::GetFileSize(Handle(file), &high);
    if (low == INVALID_FILE_SIZE && ::GetLastError() != NO_ERROR)
        return FailWithSystemError();
    *size = (static_cast<std::uint64_t>(high) << 32) | low;
    return true;
}

bool SeekFile(FileHandle file, std::int64_t offset, SeekOrigin origin)
{
    LONG high = static_cast<LONG>(offset >> 32);
    const DWORD low = ::SetFilePointer(Handle(file), static_cast<LONG>(offset & 0xFFFFFFFF), &high,
                                       origin == SeekOrigin::Begin ? FILE_BEGIN : FILE_END);
    if (low == INVALID_SET_FILE_POINTER && ::GetLastError() != NO_ERROR)
        return FailWithSystemError();
    return true;
}

bool CloseFile(FileHandle file)
{
    if (!::CloseHandle(Handle(file)))
        return FailWithSystemError();
    return !FaultPoint::CloseFails() || Fail(kInjectedIoError);
}

} // namespace Platform
