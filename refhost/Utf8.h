#pragma once
// The reference host's name for the shared UTF-8 codec (host/Utf8.h), kept only for the
// export command until the export flow being rewritten includes host/Utf8.h itself.

#include "host/Utf8.h"

namespace refhost {
using ::FromUtf8;
} // namespace refhost
