// File names on POSIX systems are bytes: UTF-8 as they are.

#include "refhost/FilePath.h"

#include "host/Utf8.h"

namespace refhost {

std::filesystem::path PathFromWide(const WString& text) { return std::filesystem::path(ToUtf8(text)); }

std::string PathToUtf8(const std::filesystem::path& path) { return path.string(); }

} // namespace refhost
