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
    bool alertBoxes = false;
    int dialogsShown = 0; // dialogs open now, nested ones counted
    std::vector<DialogWindow> openWindows; // on Windows: the dialogs open now, innermost last
    std::vector<DialogRecord> records;
    std::deque<DialogDriver> drivers;
};

DialogState& Dialogs();

// Shows an alert's text in a message box over the open dialog when that is wanted; false
// when it is not (no dialog open, boxes off, or no toolkit).
bool ShowAlertBox(const WString& text);

} // namespace CadShim
