#include "tessel/system/FileDescriptor.h"

#include "refhost/FilePath.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

#ifdef _WIN32
#include "platform/Windows.h"
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tessel::files {

namespace {

namespace fs = std::filesystem;

int Open(const std::string& path, int flags)
{
#ifdef _WIN32
    return ::_wopen(refhost::PathFromUtf8(path).c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
#else
    int descriptor;
    do
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
#endif
}

} // namespace

int CreateNew(const std::string& path) { return Open(path, O_WRONLY | O_CREAT | O_EXCL); }

int OpenForWriting(const std::string& path) { return Open(path, O_WRONLY); }


int StandardOutput() { return 1; }

long Write(int descriptor, const void* data, std::size_t size)
{
#ifdef _WIN32
    const unsigned chunk = size > 0x40000000u ? 0x40000000u : static_cast<unsigned>(size);
    return ::_write(descriptor, data, chunk);
#else
    long written;
    do
        written = static_cast<long>(::write(descriptor, data, size));
    while (written < 0 && errno == EINTR);
    return written;
#endif
}

bool Sync(int descriptor)
{
#ifdef _WIN32
    return ::_commit(descriptor) == 0;
#else
    return ::fsync(descriptor) == 0;
#endif
}

bool Close(int descriptor)
{
#ifdef _WIN32
    return ::_close(descriptor) == 0;
#else
    return ::close(descriptor) == 0;
#endif
}

bool Remove(const std::string& path)
{
    std::error_code error;
    return fs::remove(refhost::PathFromUtf8(path), error);
}

bool Replace(const std::string& from, const std::string& to)
{
    std::error_code error;
    fs::rename(refhost::PathFromUtf8(from), refhost::PathFromUtf8(to), error);
    if (error)
        errno = error.value();
    return !error;
}

bool SetMode(int descriptor, unsigned mode)
{
#ifdef _WIN32
    (void)descriptor;
    (void)mode;
    return true;
#else
    return ::fchmod(descriptor, static_cast<mode_t>(mode)) == 0;
#endif
}

unsigned ModeOf(const std::string& path)
{
#ifdef _WIN32
    (void)path;
    return 0666;
#else
    struct stat status;
    if (::stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
#endif
}

#ifdef _WIN32
// Devices (NUL, CON, COM1) and pipes have no status of their own; the system's handle tells.
bool IsWindowsDevice(const std::string& path)
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
#endif

Kind KindOf(const std::string& path)
{
#ifdef _WIN32
    if (IsWindowsDevice(path))
        return Kind::Special;
#endif
    std::error_code error;
    const fs::file_status status = fs::status(refhost::PathFromUtf8(path), error);
    switch (status.type()) {
    case fs::file_type::not_found:
    case fs::file_type::none: return Kind::Missing;
    case fs::file_type::regular: return Kind::Regular;
    case fs::file_type::directory: return Kind::Folder;
    default: return error ? Kind::Missing : Kind::Special;
    }
}

} // namespace tessel::files
