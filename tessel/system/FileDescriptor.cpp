// What both systems do alike, through std::filesystem.

#include "tessel/system/FileDescriptor.h"

#include "refhost/FilePath.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace tessel::files {

namespace fs = std::filesystem;

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

Kind KindOf(const std::string& path)
{
    if (IsDevice(path))
        return Kind::Special;
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
