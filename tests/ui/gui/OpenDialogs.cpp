#include "OpenDialogs.h"

#include <wx/dialog.h>
#include <wx/modalhook.h>
#include <wx/msgdlg.h>

#include <dlfcn.h>

#include <algorithm>
#include <vector>

namespace {

// Every dialog's ShowModal passes through the hook, the toolkit's own message boxes too.
class OpenDialogHook final : public wxModalDialogHook {
public:
    std::vector<wxDialog*> open;

protected:
    int Enter(wxDialog* dialog) override
    {
        open.push_back(dialog);
        return wxID_NONE; // shown as usual
    }
    void Exit(wxDialog* dialog) override { open.erase(std::remove(open.begin(), open.end(), dialog), open.end()); }
};

OpenDialogHook& Hook()
{
    static OpenDialogHook hook;
    return hook;
}

// A message box runs GTK's own loop (gtk_dialog_run), which only a response ends. Looked up
// at run time: the GTK headers are not among the build's dependencies, its library is loaded.
void RespondCancel(wxDialog* box)
{
    using Response = void (*)(void* dialog, int response);
    constexpr int kGtkResponseCancel = -6;
    if (auto respond = reinterpret_cast<Response>(dlsym(RTLD_DEFAULT, "gtk_dialog_response")))
        respond(box->GetHandle(), kGtkResponseCancel);
}

} // namespace

void TrackOpenDialogs() { Hook().Register(); }

void EndOpenDialogs()
{
    const std::vector<wxDialog*> open = Hook().open;
    for (auto dialog = open.rbegin(); dialog != open.rend(); ++dialog) {
        if ((*dialog)->IsModal())
            (*dialog)->EndModal(wxID_CANCEL);
        else if (dynamic_cast<wxMessageDialogBase*>(*dialog))
            RespondCancel(*dialog);
        // Else ended already, by an earlier failure: its run returns once the driver does.
    }
}
