#include "refhost/FilePath.h"

#include "host/Utf8.h"

namespace refhost {

std::filesystem::path PathFromUtf8(const std::string& utf8) { return PathFromWide(FromUtf8(utf8)); }

bool IsRegularFile(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace refhost
