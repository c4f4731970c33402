// Whole files by name on POSIX systems. A replacement is renamed over the target (atomic
// within one file system) after fsync, and the folder is synced so that the new name
// survives a crash too.

#include "platform/FileReplacement.h"
#include "host/Utf8.h"
#include "platform/ErrorRecord.h"
#include "platform/Platform.h"
#include "platform/PlatformFaults.h"
#include "platform/PosixPath.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace {

bool Fail(int error) { return Platform::ErrorRecord::Fail(error); }

bool FailWithErrno() { return Fail(errno); }

// The file a link names, so that the link survives its file being replaced; the path as it
// stands when it names nothing yet.
std::string ResolvedName(const WChar* path)
{
    const std::string name = Platform::Posix::PathToUtf8(path);
    char resolved[PATH_MAX];
    if (::realpath(name.c_str(), resolved))
        return resolved;
    return name;
}

std::string FolderOf(const std::string& name)
{
    const std::size_t slash = name.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : name.substr(0, slash);
}

// A name nobody else uses, hidden from folder listings, that still tells which file it is for.
std::string FreshNameBeside(const std::string& target)
{
    static std::atomic<unsigned> counter{0};
    const std::size_t slash = target.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : target.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const unsigned long stamp = static_cast<unsigned long>(now.tv_nsec) ^ (static_cast<unsigned long>(::getpid()) << 20);
    return folder + "." + base + "." + std::to_string(stamp % 1000000) + "-" + std::to_string(counter++) + ".part";
}

bool SyncFolderOf(const std::string& name)
{
    const int folder = ::open(FolderOf(name).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return false;
    const bool synced = ::fsync(folder) == 0;
    ::close(folder);
    return synced;
}

} // namespace

namespace Platform {

PathKind KindOfPath(const WChar* path)
{
    struct stat info;
    if (!path || !*path || ::stat(Posix::PathToUtf8(path).c_str(), &info) != 0)
        return PathKind::Missing;
    if (S_ISREG(info.st_mode))
        return PathKind::Regular;
    return S_ISDIR(info.st_mode) ? PathKind::Directory : PathKind::Other;
}

bool SizeOfFile(const WChar* path, std::uint64_t* size)
{
    struct stat info;
    if (::stat(Posix::PathToUtf8(path).c_str(), &info) != 0)
        return FailWithErrno();
    *size = static_cast<std::uint64_t>(info.st_size);
    return true;
}

bool CreateFileBeside(const WChar* target, WString* created)
{
    const std::string targetName = ResolvedName(target);
    struct stat existing;
    const bool targetExists = ::stat(targetName.c_str(), &existing) == 0;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name = FreshNameBeside(targetName);
        // 0666 less the umask: the permissions any new file of the user's would get.
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return FailWithErrno();
        if (targetExists) {
            // Best effort for the owner: only a privileged process may give a file away.
            if (existing.st_uid != ::geteuid() || existing.st_gid != ::getegid())
                (void)!::fchown(fd, existing.st_uid, existing.st_gid);
            ::fchmod(fd, existing.st_mode & 07777);
        }
        ::close(fd);
        *created = FromUtf8(name);
        return true;
    }
    return Fail(EEXIST);
}

bool ReplaceFileWith(const WChar* target, const WChar* replacement)
{
    if (FaultPoint::ReplaceFails())
        return Fail(EIO);
    const std::string targetName = ResolvedName(target);
    const std::string replacementName = Posix::PathToUtf8(replacement);
    const int fd = ::open(replacementName.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return FailWithErrno();
    const bool synced = ::fsync(fd) == 0;
    const int syncError = errno;
    ::close(fd);
    if (!synced)
        return Fail(syncError);
    if (::rename(replacementName.c_str(), targetName.c_str()) != 0)
        return FailWithErrno();
    SyncFolderOf(targetName);
    return true;
}

bool RemoveFile(const WChar* path)
{
    if (::unlink(Posix::PathToUtf8(path).c_str()) != 0)
        return FailWithErrno();
    return true;
}

bool TruncateFile(const WChar* path, std::uint64_t length)
{
    int result;
    do
        result = ::truncate(Posix::PathToUtf8(path).c_str(), static_cast<off_t>(length));
    while (result != 0 && errno == EINTR);
    return result == 0 || FailWithErrno();
}

WString ErrorDescription(int error)
{
    char buffer[256] = {};
    // The GNU strerror_r returns its text, which may not be the buffer.
    const char* text = ::strerror_r(error, buffer, sizeof buffer);
    return FromUtf8(text ? text : "");
}

} // namespace Platform
