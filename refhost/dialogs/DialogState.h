#pragma once
// The CAD shim's dialog state, shared by its dialog parts. User-interface thread only.

#include "refhost/CadShimDialogs.h"

#include <deque>
#include <vector>

namespace CadShim {

struct DialogState {
    bool allowed = false;
    bool started = false;
    bool startFailed = false;
    std::vector<DialogRecord> records;
    std::deque<DialogDriver> drivers;
};

DialogState& Dialogs();

} // namespace CadShim
