// The C runtime's file calls on POSIX systems: paths are bytes (UTF-8 as they are), and a
// call that a signal interrupts is made again.

#include "tessel/system/FileDescriptor.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessel::files {
namespace {

int Open(const std::string& path, int flags)
{
    int descriptor;
    do
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace

int CreateNew(const std::string& path) { return Open(path, O_WRONLY | O_CREAT | O_EXCL); }

int OpenForWriting(const std::string& path) { return Open(path, O_WRONLY); }

int StandardOutput() { return 1; }

long Write(int descriptor, const void* data, std::size_t size)
{
    long written;
    do
        written = static_cast<long>(::write(descriptor, data, size));
    while (written < 0 && errno == EINTR);
    return written;
}

bool Sync(int descriptor) { return ::fsync(descriptor) == 0; }

bool Close(int descriptor) { return ::close(descriptor) == 0; }

bool SetMode(int descriptor, unsigned mode) { return ::fchmod(descriptor, static_cast<mode_t>(mode)) == 0; }

unsigned ModeOf(const std::string& path)
{
    struct stat status;
    if (::stat(path.c_str(), &status) == 0)
        return status.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// A device's own status says what it is.
bool IsDevice(const std::string&) { return false; }

} // namespace tessel::files
