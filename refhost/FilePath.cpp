#include "refhost/FilePath.h"

#include "host/Utf8.h"

namespace refhost {

std::filesystem::path PathFromUtf8(const std::string& utf8) { return PathFromWide(FromUtf8(utf8)); }

std::filesystem::path PathFromWide(const WString& text)
{
#ifdef _WIN32
    return std::filesystem::path(text);
#else
    return std::filesystem::path(ToUtf8(text));
#endif
}

std::string PathToUtf8(const std::filesystem::path& path)
{
#ifdef _WIN32
    return ToUtf8(path.wstring());
#else
    return path.string();
#endif
}

bool IsRegularFile(const std::filesystem::path& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace refhost
