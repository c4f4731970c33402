#include "refhost/app/TemporaryFile.h"

#include "refhost/app/AppError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace tessel {
namespace {

std::string FolderOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

mode_t DefaultMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

} // namespace

void ThrowCannotWrite(const std::string& path, int error)
{
    throw JobError("cannot write '" + path + "': " + std::strerror(error));
}

bool IsSpecialFile(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

TemporaryFile::~TemporaryFile() { Discard(); }

void TemporaryFile::CreateBeside(const std::string& target)
{
    Discard();
    struct stat status;
    const bool exists = stat(target.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode))
        ThrowCannotWrite(target, EISDIR);
    std::string pattern = FolderOf(target) + "/." + NameOf(target) + ".tessel-XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int descriptor = mkstemp(name.data());
    if (descriptor < 0)
        ThrowCannotWrite(target, errno);
    descriptor_ = descriptor;
    path_ = name.data();
    pending_ = true;
    if (fchmod(descriptor_, exists ? (status.st_mode & 07777) : DefaultMode()) != 0)
        ThrowCannotWrite(target, errno);
}

void TemporaryFile::RemoveFileKeepName()
{
    if (descriptor_ >= 0)
        close(descriptor_);
    descriptor_ = -1;
    unlink(path_.c_str());
}

void TemporaryFile::Replace(const std::string& target)
{
    if (descriptor_ < 0)
        descriptor_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor_ < 0 || fsync(descriptor_) != 0)
        ThrowCannotWrite(target, errno);
    const int closed = close(descriptor_);
    descriptor_ = -1;
    if (closed != 0)
        ThrowCannotWrite(target, errno);
    if (std::rename(path_.c_str(), target.c_str()) != 0)
        ThrowCannotWrite(target, errno);
    pending_ = false;
}

void TemporaryFile::Discard()
{
    if (descriptor_ >= 0)
        close(descriptor_);
    descriptor_ = -1;
    if (pending_)
        unlink(path_.c_str());
    pending_ = false;
}

} // namespace tessel
