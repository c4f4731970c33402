// The toolkit behind the CAD shim's dialogs, started lazily: one wxApp for the life of the
// process, made the first time a dialog is wanted and a display is there.

#include "refhost/CadShimDialogs.h"
#include "refhost/dialogs/DialogState.h"
#include "ui/wx/WxText.h"

#include <wx/app.h>
#include <wx/image.h>
#include <wx/init.h>
#include <wx/msgdlg.h>

#include <cstdlib>

namespace CadShim {
namespace {

bool HasDisplay()
{
    const char* x11 = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return (x11 && *x11) || (wayland && *wayland);
}

} // namespace

bool ShowAlertBox(const WString& text)
{
    const DialogState& state = Dialogs();
    if (!state.alertBoxes || state.dialogsShown == 0)
        return false;
    wxMessageBox(ToWxString(text), wxTheApp->GetAppDisplayName(), wxOK | wxICON_EXCLAMATION);
    return true;
}

bool StartDialogs()
{
    DialogState& state = Dialogs();
    if (!state.allowed)
        return false;
    if (state.started)
        return true;
    if (state.startFailed || !HasDisplay())
        return false;
    // wx needs its application object before it touches the toolkit.
    wxApp::SetInstance(new wxApp);
    static int argc = 1;
    static char name[] = "tessel";
    static char* argv[] = {name, nullptr};
    if (!wxEntryStart(argc, argv) || !wxTheApp->CallOnInit()) {
        state.startFailed = true;
        return false;
    }
    wxTheApp->SetExitOnFrameDelete(false);
    wxInitAllImageHandlers();
    state.started = true;
    return true;
}

} // namespace CadShim
