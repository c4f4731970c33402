#include "ui/wx/DlgFileChoice.h"

#include "ui/FileChoiceModel.h"
#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

namespace {
constexpr int kQuestion = 114;
} // namespace

bool CDlgFileChoice::OnInitDialog()
{
    const FileChoiceModel model(path_);
    wxWindow* window = Window();
    auto* rows = new wxBoxSizer(wxVERTICAL);
    auto* question = new wxTextCtrl(window, kQuestion, ToWxString(model.Question()), wxDefaultPosition,
                                    wxSize(420, 70), wxTE_MULTILINE | wxTE_READONLY | wxTE_NO_VSCROLL);
    rows->Add(question, 1, wxEXPAND | wxALL, 10);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    for (const FileChoiceModel::Button& choice : FileChoiceModel::kButtons) {
        auto* button = new wxButton(window, choice.controlId, ToWxString(LoadMessage(choice.caption)));
        const int result = choice.result;
        button->Bind(wxEVT_BUTTON, [this, result](wxCommandEvent&) { EndDialog(result); });
        buttons->Add(button, 0, wxLEFT, 8);
    }
    rows->Add(buttons, 0, wxALIGN_RIGHT | wxRIGHT | wxBOTTOM, 10);
    window->SetSizer(rows);
    SetWindowText(model.Title().c_str());
    return true;
}

void CDlgFileChoice::OnCancel() { EndDialog(FileChoiceModel::kClosedResult); }
