#include "ui/win32/DlgFileChoice.h"

#include "platform/Platform.h"
#include "ui/FileChoiceModel.h"
#include "ui/TemplateIds.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/TemplateCaptions.h"
#include "ui/win32/Win32.h"

using FileChoiceControl::kQuestion;

CDlgFileChoice::CDlgFileChoice() : CAdUiBaseDialog(kTemplateId, Platform::ModuleInstance()) {}

bool CDlgFileChoice::OnInitDialog()
{
    const FileChoiceModel model(path_);
    ShowTemplateCaptions(Window(), FileChoiceDialogTemplate());
    SetControlText(Window(), kQuestion, model.Question());
    SetWindowText(model.Title().c_str());
    return true;
}

bool CDlgFileChoice::OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t, std::intptr_t& result)
{
    if (message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED)
        return false;
    for (const FileChoiceModel::Button& choice : FileChoiceModel::kButtons) {
        if (choice.controlId == static_cast<int>(LOWORD(wParam))) {
            EndDialog(choice.result);
            result = 0;
            return true;
        }
    }
    return false;
}

void CDlgFileChoice::OnCancel() { EndDialog(FileChoiceModel::kClosedResult); }

// Enter with no answer button focused (a focused button answers for itself): the template has
// no default button, so that a stray Enter never overwrites or appends.
void CDlgFileChoice::OnOK() {}
