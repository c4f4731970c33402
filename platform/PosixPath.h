#pragma once
// Inside the platform layer only: file names as a POSIX system takes them.

#include "host/Text.h"

#include <string>

namespace Platform::Posix {

// The path in UTF-8. A lone surrogate cannot name a file on a UTF-8 system; it becomes U+FFFD.
std::string PathToUtf8(const WChar* path);

} // namespace Platform::Posix
