// Files on POSIX systems. Paths arrive as UTF-16 and are handed to the system as UTF-8.
// POSIX has no mandatory share modes, so "nobody else may write" is not enforced here.

#include "platform/CodePageSetting.h"
#include "platform/Platform.h"
#include "host/Utf8.h"
#include "platform/ErrorRecord.h"
#include "platform/PlatformFaults.h"
#include "platform/PosixPath.h"

#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool Fail(int error) { return Platform::ErrorRecord::Fail(error); }

int OpenFlags(Platform::FileAccess access, Platform::FileCreation creation)
{
    int flags = O_CLOEXEC | (access == Platform::FileAccess::Read ? O_RDONLY : O_WRONLY);
    if (creation != Platform::FileCreation::OpenExisting)
        flags |= O_CREAT;
    if (creation == Platform::FileCreation::CreateAlways && access == Platform::FileAccess::Write)
        flags |= O_TRUNC;
    return flags;
}

int Descriptor(Platform::FileHandle file) { return static_cast<int>(file); }

Platform::FileHandle FailOpen(int error)
{
    Fail(error);
    return Platform::kInvalidFile;
}

} // namespace

namespace Platform::Posix {

std::string PathToUtf8(const WChar* path) { return ToUtf8(path); }

} // namespace Platform::Posix

namespace Platform {

FileHandle OpenFile(const WChar* path, FileAccess access, FileCreation creation)
{
    // A file's text is read or written in the ANSI code page as it is when the file opens.
    CodePageSetting::ReadAgain();
    if (FaultPoint::OpenFails())
        return FailOpen(EIO);
    if (!path || !*path)
        return FailOpen(ENOENT);
    const std::string name = Posix::PathToUtf8(path);
    int fd;
    do
        fd = ::open(name.c_str(), OpenFlags(access, creation), 0666);
    while (fd < 0 && errno == EINTR);
    if (fd < 0)
        return FailOpen(errno);
    // Reading a directory would only fail at the first read; refuse it here instead.
    struct stat info;
    int error = 0;
    if (::fstat(fd, &info) != 0)
        error = errno;
    else if (S_ISDIR(info.st_mode))
        error = EISDIR;
    if (error != 0) {
        ::close(fd);
        return FailOpen(error);
    }
    return fd;
}

bool ReadFile(FileHandle file, void* buffer, std::uint32_t size, std::uint32_t* bytesRead)
{
    *bytesRead = 0;
    if (FaultPoint::ReadFails())
        return Fail(EIO);
    ssize_t n;
    do
        n = ::read(Descriptor(file), buffer, size);
    while (n < 0 && errno == EINTR);
    if (n < 0)
        return Fail(errno);
    *bytesRead = static_cast<std::uint32_t>(n);
    return true;
}

bool WriteFile(FileHandle file, const void* data, std::uint32_t size, std::uint32_t* bytesWritten)
{
    *bytesWritten = 0;
    const std::uint32_t allowed = FaultPoint::WritableBytes(size);
    const auto* bytes = static_cast<const char*>(data);
    while (*bytesWritten < allowed) {
        const ssize_t n = ::write(Descriptor(file), bytes + *bytesWritten, allowed - *bytesWritten);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return Fail(n < 0 ? errno : ENOSPC);
        *bytesWritten += static_cast<std::uint32_t>(n);
    }
    return allowed == size || Fail(ENOSPC);
}

bool FileSize(FileHandle file, std::uint64_t* size)
{
    struct stat info;
    if (::fstat(Descriptor(file), &info) != 0)
        return Fail(errno);
    *size = static_cast<std::uint64_t>(info.st_size);
    return true;
}

bool SeekFile(FileHandle file, std::int64_t offset, SeekOrigin origin)
{
    if (::lseek(Descriptor(file), static_cast<off_t>(offset), origin == SeekOrigin::Begin ? SEEK_SET : SEEK_END) < 0)
        return Fail(errno);
    return true;
}

bool CloseFile(FileHandle file)
{
    // Not retried on EINTR: on Linux the descriptor is gone either way.
    if (::close(Descriptor(file)) != 0)
        return Fail(errno);
    return !FaultPoint::CloseFails() || Fail(EIO);
}

} // namespace Platform
