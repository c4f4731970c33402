#pragma once
// The reference host's engine registry, as tests see it beyond the framework's interface:
// every registration in the order it came. Not part of the framework's interface.

#include "host/HostApi.h"
#include "host/Text.h"

#include <vector>

namespace refhost {

// "import:ID" or "export:ID" per registered engine ("import:" alone for an empty engine),
// oldest first; emptied by CImpexManager::Clear.
VELTOGIS_IMPEX_API const std::vector<WString>& EngineRegistrations();

} // namespace refhost
