// CAdUiBaseDialog on wxWidgets: a wxDialog made per modal run, with the CAD application's
// conventions: the buttons IDOK and IDCANCEL end the run through OnOK and OnCancel, the
// close box and Esc through OnCancel, and the keep-focus question is asked when it opens.

#include "host/CadDialogs.h"
#include "refhost/dialogs/DialogState.h"
#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/dialog.h>

using CadShim::Dialogs;

class CadDialogWindow final : public wxDialog {
public:
    explicit CadDialogWindow(CAdUiBaseDialog& owner)
        : wxDialog(nullptr, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE),
          owner_(owner)
    {
        Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { owner_.OnCancel(); });
        Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
            if (event.GetKeyCode() == WXK_ESCAPE)
                owner_.OnCancel();
            else
                event.Skip();
        });
        Bind(wxEVT_BUTTON, [this](wxCommandEvent& event) {
            if (event.GetId() == IDCANCEL)
                owner_.OnCancel();
            else
                event.Skip();
        });
    }

    static void Run(CAdUiBaseDialog& owner, int& result);

private:
    CAdUiBaseDialog& owner_;
};

void CadDialogWindow::Run(CAdUiBaseDialog& owner, int& result)
{
    CadDialogWindow window(owner);
    owner.window_ = &window;
    CadShim::DialogRecord record;
    record.templateId = owner.TemplateId();
    if (!owner.OnInitDialog()) {
        owner.window_ = nullptr;
        result = IDCANCEL;
        return;
    }
    record.title = FromWxString(window.GetTitle());
    record.keepFocusAnswer = owner.OnAcadKeepFocus();
    window.Fit();
    window.CentreOnScreen();
    auto& state = Dialogs();
    const std::size_t index = state.records.size();
    state.records.push_back(record);
    if (!state.drivers.empty()) {
        CadShim::DialogDriver driver = std::move(state.drivers.front());
        state.drivers.pop_front();
        window.CallAfter([driver, &window] { driver(&window); });
    }
    ++state.dialogsShown;
    result = window.ShowModal();
    --state.dialogsShown;
    state.records[index].result = result;
    owner.window_ = nullptr;
}

CAdUiBaseDialog::CAdUiBaseDialog(unsigned templateId, void* resourceInstance)
    : templateId_(templateId), resourceInstance_(resourceInstance)
{
}

CAdUiBaseDialog::~CAdUiBaseDialog() = default;

int CAdUiBaseDialog::DoModal()
{
    if (window_ || !CadShim::StartDialogs())
        return kDialogNotShown;
    int result = IDCANCEL;
    CadDialogWindow::Run(*this, result);
    return result;
}

void CAdUiBaseDialog::EndDialog(int result)
{
    if (auto* dialog = dynamic_cast<wxDialog*>(window_); dialog && dialog->IsModal())
        dialog->EndModal(result);
}

long CAdUiBaseDialog::OnAcadKeepFocus() { return 0; }

bool CAdUiBaseDialog::OnInitDialog() { return true; }

void CAdUiBaseDialog::OnCancel() { EndDialog(IDCANCEL); }

void CAdUiBaseDialog::SetWindowText(const WChar* title)
{
    if (window_)
        window_->SetLabel(ToWxString(title ? WString(title) : WString()));
}
