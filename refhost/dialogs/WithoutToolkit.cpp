// The CAD shim's dialog side in a build without a toolkit: no dialog is ever shown, so every
// question is answered the command-line way, and there are no images.

#include "host/CadDialogs.h"
#include "host/GisUtility.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/dialogs/DialogState.h"

namespace CadShim {
namespace {
std::vector<DialogRecord> noRecords;
} // namespace

void AllowDialogs(bool) {}
bool DialogsAllowed() { return false; }
void ShowAlertsInMessageBoxes(bool) {}
bool ShowAlertBox(const WString&) { return false; }
bool StartDialogs() { return false; }
const std::vector<DialogRecord>& RecordedDialogs() { return noRecords; }
void ClearRecordedDialogs() {}
void DriveNextDialog(DialogDriver) {}

} // namespace CadShim

CAdUiBaseDialog::CAdUiBaseDialog(unsigned templateId, void* resourceInstance)
    : templateId_(templateId), resourceInstance_(resourceInstance)
{
}
CAdUiBaseDialog::~CAdUiBaseDialog() = default;
int CAdUiBaseDialog::DoModal() { return kDialogNotShown; }
void CAdUiBaseDialog::EndDialog(int) {}
long CAdUiBaseDialog::OnAcadKeepFocus() { return 0; }
bool CAdUiBaseDialog::OnInitDialog() { return true; }
void CAdUiBaseDialog::OnCancel() {}
void CAdUiBaseDialog::SetWindowText(const WChar*) {}
#if defined(_WIN32)
bool CAdUiBaseDialog::PreTranslateMessage(tagMSG*) { return false; }
void CAdUiBaseDialog::OnOK() {}
bool CAdUiBaseDialog::OnMessage(unsigned, std::uintptr_t, std::intptr_t, std::intptr_t&) { return false; }
#endif
