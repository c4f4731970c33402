// The CAD shim's dialog state and what the host application sets and reads of it, the same
// whichever toolkit shows the dialogs.

#include "refhost/dialogs/DialogState.h"

namespace CadShim {

DialogState& Dialogs()
{
    static DialogState state;
    return state;
}

void AllowDialogs(bool allow) { Dialogs().allowed = allow; }

bool DialogsAllowed() { return Dialogs().allowed; }

void ShowAlertsInMessageBoxes(bool show) { Dialogs().alertBoxes = show; }

const std::vector<DialogRecord>& RecordedDialogs() { return Dialogs().records; }

void ClearRecordedDialogs() { Dialogs().records.clear(); }

void DriveNextDialog(DialogDriver driver) { Dialogs().drivers.push_back(std::move(driver)); }

} // namespace CadShim
