// The C runtime's file calls on Windows: wide paths, so that any name works, binary and not
// inherited by child processes.

#include "tessel/system/FileDescriptor.h"

#include "platform/Windows.h"
#include "refhost/FilePath.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace tessel::files {
namespace {

int Open(const std::string& path, int flags)
{
    return ::_wopen(refhost::PathFromUtf8(path).c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}

} // namespace

int CreateNew(const std::string& path) { return Open(path, _O_WRONLY | _O_CREAT | _O_EXCL); }

int OpenForWriting(const std::string& path) { return Open(path, _O_WRONLY); }

int StandardOutput() { return 1; }

// _write takes an unsigned count and fails on more than INT_MAX bytes: at most a gigabyte
// per call, the caller writes the rest.
long Write(int descriptor, const void* data, std::size_t size)
{
    const unsigned chunk = size > 0x40000000u ? 0x40000000u : static_cast<unsigned>(size);
    return ::_write(descriptor, data, chunk);
}

bool Sync(int descriptor) { return ::_commit(descriptor) == 0; }

bool Close(int descriptor) { return ::_close(descriptor) == 0; }

// Windows files have no permission bits to copy.
bool SetMode(int, unsigned) { return true; }

unsigned ModeOf(const std::string&) { return 0666; }

// Devices (NUL, CON, COM1) and pipes have no status of their own; the system's handle tells.
bool IsDevice(const std::string& path)
{
    const HANDLE handle = ::CreateFileW(refhost::PathFromUtf8(path).c_str(), 0,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return false;
    const DWORD type = ::GetFileType(handle);
    ::CloseHandle(handle);
    return type == FILE_TYPE_CHAR || type == FILE_TYPE_PIPE;
}

} // namespace tessel::files
