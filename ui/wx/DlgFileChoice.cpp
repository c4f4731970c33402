#include "ui/wx/DlgFileChoice.h"

#include "ui/FileChoiceModel.h"
#include "ui/wx/TemplateControls.h"
#include "ui/TemplateIds.h"
#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

using namespace FileChoiceControl;

bool CDlgFileChoice::OnInitDialog()
{
    const FileChoiceModel model(path_);
    wxWindow* window = Window();
    const TemplateControls controls(window, FileChoiceDialogTemplate(),
                                    [](wxWindow*, const DialogControl&) -> wxWindow* { return nullptr; });
    auto* question = controls.Get<wxTextCtrl>(kQuestion);
    question->ChangeValue(ToWxString(model.Question()));
    question->SetMinSize(wxSize(420, 70));
    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(question, 1, wxEXPAND | wxALL, 10);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const FileChoiceModel::Button& choice : FileChoiceModel::kButtons) {
        const int result = choice.result;
        controls[choice.controlId]->Bind(wxEVT_BUTTON, [this, result](wxCommandEvent&) { EndDialog(result); });
        buttons->Add(controls[choice.controlId], 0, wxLEFT, 8);
    }
    rows->Add(buttons, 0, wxALIGN_RIGHT | wxRIGHT | wxBOTTOM, 10);
    window->SetSizer(rows);
    SetWindowText(model.Title().c_str());
    return true;
}

void CDlgFileChoice::OnCancel() { EndDialog(FileChoiceModel::kClosedResult); }
