#include "refhost/app/OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace tessel {

OutputFile::~OutputFile()
{
    if (ownsDescriptor_)
        close(descriptor_);
}

void OutputFile::Open()
{
    if (ToStandardOutput()) {
        descriptor_ = STDOUT_FILENO;
    } else if (IsSpecialFile(path_)) {
        descriptor_ = open(path_.c_str(), O_WRONLY | O_CLOEXEC);
        if (descriptor_ < 0)
            ThrowCannotWrite(path_, errno);
        ownsDescriptor_ = true;
    } else {
        temporary_.CreateBeside(path_);
        descriptor_ = temporary_.Descriptor();
    }
    text_.reserve(kBlockSize + 64 * 1024);
}

void OutputFile::Flush()
{
    const char* data = text_.data();
    std::size_t left = text_.size();
    while (left > 0) {
        const ssize_t written = write(descriptor_, data, left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            ThrowCannotWrite(ToStandardOutput() ? "standard output" : path_, written < 0 ? errno : ENOSPC);
        data += written;
        left -= static_cast<std::size_t>(written);
    }
    text_.clear();
}

void OutputFile::Commit()
{
    Flush();
    if (ownsDescriptor_) {
        if (close(descriptor_) != 0)
            ThrowCannotWrite(path_, errno);
        ownsDescriptor_ = false;
    } else if (!ToStandardOutput()) {
        temporary_.Replace(path_);
    }
    descriptor_ = -1;
}

} // namespace tessel
