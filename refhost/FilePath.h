#pragma once
// File names between the reference host's text (UTF-8 at its edges, UTF-16 inside) and the
// system's file calls: std::filesystem paths, wide on Windows, UTF-8 bytes on Linux, so that
// non-Latin names reach the file system unchanged on both.

#include "host/Text.h"

#include <filesystem>
#include <string>

namespace refhost {

std::filesystem::path PathFromUtf8(const std::string& utf8);
std::filesystem::path PathFromWide(const WString& text);
std::string PathToUtf8(const std::filesystem::path& path);

// True for an existing regular file (after following links); false for anything else, also
// when the system cannot tell.
bool IsRegularFile(const std::filesystem::path& path);

} // namespace refhost
