#pragma once
// The reference CAD shim's side door for dialogs: whether the application shows them, the
// toolkit's start, and what was shown, recorded for tests. Not part of the CAD
// application's interface.

#include "host/CadDialogs.h"
#include "host/HostApi.h"
#include "host/Text.h"

#include <functional>
#include <vector>

namespace CadShim {

// Dialogs are off until the host application allows them, so that tests and scripted runs
// never wait for a person; while off, every DoModal returns kDialogNotShown.
VELTOGIS_CAD_API void AllowDialogs(bool allow);
VELTOGIS_CAD_API bool DialogsAllowed();
// Starts the toolkit once, the first time it is needed: only when dialogs are allowed and
// a display is there. True when dialogs can be shown now.
VELTOGIS_CAD_API bool StartDialogs();

// Alerts given while a dialog is shown also appear in a message box over it (as in the CAD
// application), once the host application asks for that; off by default, so that tests
// driving a dialog are not stopped by a box nobody closes.
VELTOGIS_CAD_API void ShowAlertsInMessageBoxes(bool show);

struct DialogRecord {
    unsigned templateId = 0;
    WString title;
    long keepFocusAnswer = 0; // what the dialog answered to WM_ACAD_KEEPFOCUS
    int result = 0;
};
// Every dialog shown, in order, with its result once it has closed.
VELTOGIS_CAD_API const std::vector<DialogRecord>& RecordedDialogs();
VELTOGIS_CAD_API void ClearRecordedDialogs();

// Called with the dialog's window once the next dialog is shown and its modal run has
// started, from inside that run: how tests and scripts drive a dialog.
using DialogDriver = std::function<void(DialogWindow dialog)>;
VELTOGIS_CAD_API void DriveNextDialog(DialogDriver driver);

} // namespace CadShim
