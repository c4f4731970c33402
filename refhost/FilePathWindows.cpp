// File names on Windows are UTF-16: std::filesystem's wide form, so that any name works.

#include "refhost/FilePath.h"

#include "host/Utf8.h"

namespace refhost {

std::filesystem::path PathFromWide(const WString& text) { return std::filesystem::path(text); }

std::string PathToUtf8(const std::filesystem::path& path) { return ToUtf8(path.wstring()); }

} // namespace refhost
