#include "tessel/jobs/OutputFile.h"

#include "tessel/system/FileDescriptor.h"

#include <cerrno>
#include <filesystem>

namespace tessel {

OutputFile::~OutputFile()
{
    if (ownsDescriptor_)
        files::Close(descriptor_);
}

void OutputFile::Open()
{
    if (ToStandardOutput()) {
        descriptor_ = files::StandardOutput();
    } else if (IsSpecialFile(path_)) {
        descriptor_ = files::OpenForWriting(path_);
        if (descriptor_ < 0)
            ThrowCannotWrite(path_, errno);
        ownsDescriptor_ = true;
    } else {
        temporary_.CreateBeside(path_);
        descriptor_ = temporary_.Descriptor();
    }
    text_.reserve(kBlockSize + 64 * 1024);
}

std::unique_ptr<RecordWriter> OutputFile::MakeWriter()
{
    return MakeRecordWriter(format_, *this,
                            ToStandardOutput() ? std::string() : std::filesystem::path(path_).stem().string());
}

void OutputFile::Flush()
{
    const char* data = text_.data();
    std::size_t left = text_.size();
    while (left > 0) {
        const long written = files::Write(descriptor_, data, left);
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
        if (!files::Close(descriptor_))
            ThrowCannotWrite(path_, errno);
        ownsDescriptor_ = false;
    } else if (!ToStandardOutput()) {
        temporary_.Replace(path_);
    }
    descriptor_ = -1;
}

} // namespace tessel
