#include "tessel/system/TemporaryFile.h"

#include "tessel/core/AppError.h"

#include "tessel/system/FileDescriptor.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <random>

namespace tessel {
namespace {

std::string FolderOf(const std::string& path)
{
    const auto slash = path.find_last_of("/\\");
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path)
{
    const auto slash = path.find_last_of("/\\");
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Six random letters and digits, as mkstemp would choose them.
std::string RandomSuffix()
{
    static std::mt19937_64 random(std::random_device{}() ^
                                  static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    static const char kLetters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::string suffix(6, ' ');
    for (char& c : suffix)
        c = kLetters[random() % (sizeof kLetters - 1)];
    return suffix;
}

} // namespace

void ThrowCannotWrite(const std::string& path, int error)
{
    throw JobError("cannot write '" + path + "': " + std::strerror(error));
}

bool IsSpecialFile(const std::string& path) { return files::KindOf(path) == files::Kind::Special; }

TemporaryFile::~TemporaryFile() { Discard(); }

void TemporaryFile::CreateBeside(const std::string& target)
{
    Discard();
    if (files::KindOf(target) == files::Kind::Folder)
        ThrowCannotWrite(target, EISDIR);
    const unsigned mode = files::ModeOf(target);
    const std::string stem = FolderOf(target) + "/." + NameOf(target) + ".tessel-";
    int descriptor = -1;
    for (int attempt = 0; descriptor < 0 && attempt < 100; ++attempt) {
        path_ = stem + RandomSuffix();
        descriptor = files::CreateNew(path_);
        if (descriptor < 0 && errno != EEXIST)
            break;
    }
    if (descriptor < 0)
        ThrowCannotWrite(target, errno);
    descriptor_ = descriptor;
    pending_ = true;
    if (!files::SetMode(descriptor_, mode))
        ThrowCannotWrite(target, errno);
}

void TemporaryFile::RemoveFileKeepName()
{
    if (descriptor_ >= 0)
        files::Close(descriptor_);
    descriptor_ = -1;
    files::Remove(path_);
}

void TemporaryFile::CloseKeepFile()
{
    if (descriptor_ >= 0 && !files::Close(descriptor_))
        ThrowCannotWrite(path_, errno);
    descriptor_ = -1;
}

void TemporaryFile::Replace(const std::string& target)
{
    // Windows syncs only what may be written.
    if (descriptor_ < 0)
        descriptor_ = files::OpenForWriting(path_);
    if (descriptor_ < 0 || !files::Sync(descriptor_))
        ThrowCannotWrite(target, errno);
    const bool closed = files::Close(descriptor_);
    descriptor_ = -1;
    if (!closed)
        ThrowCannotWrite(target, errno);
    if (!files::Replace(path_, target))
        ThrowCannotWrite(target, errno);
    pending_ = false;
}

void TemporaryFile::Discard()
{
    if (descriptor_ >= 0)
        files::Close(descriptor_);
    descriptor_ = -1;
    if (pending_)
        files::Remove(path_);
    pending_ = false;
}

} // namespace tessel
