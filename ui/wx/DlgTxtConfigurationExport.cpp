#include "ui/wx/DlgTxtConfigurationExport.h"

#include "host/CadPlatform.h"
#include "host/Messages.h"
#include "ui/wx/TemplateControls.h"
#include "ui/TemplateIds.h"
#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/filedlg.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

using VeltoGis::ImportExport::CExportDefinition;

namespace {

using namespace ExportControl;

bool ToolkitFileChooser(wxWindow* parent, const WString& filter, WString& path)
{
    // The toolkit wants the filter without the trailing empty pair of the host's form.
    wxString wildcard = ToWxString(filter);
    while (wildcard.EndsWith("|"))
        wildcard.RemoveLast();
    wxFileDialog chooser(parent, wxString(), wxString(), ToWxString(path), wildcard,
                         wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (chooser.ShowModal() != wxID_OK)
        return false;
    path = FromWxString(chooser.GetPath());
    return true;
}

CDlgTxtConfigurationExport::FileChooser& InstalledChooser()
{
    static CDlgTxtConfigurationExport::FileChooser chooser;
    return chooser;
}

} // namespace

CDlgTxtConfigurationExport::CDlgTxtConfigurationExport(CExportDefinition& definition, bool node)
    : CAdUiBaseDialog(kTemplateId), model_(definition, node), browse_(nullptr)
{
}

void CDlgTxtConfigurationExport::SetFileChooser(FileChooser chooser) { InstalledChooser() = std::move(chooser); }

bool CDlgTxtConfigurationExport::OnInitDialog()
{
    wxWindow* window = Window();
    const TemplateControls controls(window, ExportDialogTemplate(), [this](wxWindow* parent, const DialogControl& control) {
        return control.id == kBrowse ? static_cast<wxWindow*>(browse_.Create(parent, control.id)) : nullptr;
    });
    browse_.SetButtonIcon(WTEXT("IDI_OPEN"), 1, 16, 16, 0);
    path_ = controls.Get<wxTextCtrl>(kFilePath);
    comment_ = controls.Get<wxTextCtrl>(kComment);
    otherDelimiter_ = controls.Get<wxTextCtrl>(kOtherDelimiter);
    header_ = controls.Get<wxCheckBox>(kHeader);
    const int kinds[] = {kSpace, kTab, kOther};
    for (int kind = 0; kind < 3; ++kind) {
        delimiterKinds_[kind] = controls.Get<wxRadioButton>(kinds[kind]);
        delimiterKinds_[kind]->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) { ApplyDelimiterKind(); });
    }
    formats_[0] = controls.Get<wxRadioButton>(kAnsi);
    formats_[1] = controls.Get<wxRadioButton>(kUtf16);

    auto* rows = new wxBoxSizer(wxVERTICAL);
    auto* grid = new wxFlexGridSizer(2, wxSize(8, 6));
    grid->AddGrowableCol(1);
    grid->Add(controls[kFileLabel], 0, wxALIGN_CENTER_VERTICAL);
    auto* fileRow = new wxBoxSizer(wxHORIZONTAL);
    path_->SetMinSize(wxSize(360, -1));
    fileRow->Add(path_, 1, wxALIGN_CENTER_VERTICAL);
    fileRow->Add(controls[kBrowse], 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    grid->Add(fileRow, 1, wxEXPAND);
    grid->Add(controls[kCommentLabel], 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(comment_, 1, wxEXPAND);
    grid->Add(controls[kDelimiterLabel], 0, wxALIGN_CENTER_VERTICAL);
    auto* delimiterRow = new wxBoxSizer(wxHORIZONTAL);
    for (wxRadioButton* kind : delimiterKinds_)
        delimiterRow->Add(kind, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 8);
    otherDelimiter_->SetMinSize(wxSize(60, -1));
    delimiterRow->Add(otherDelimiter_, 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(delimiterRow, 1, wxEXPAND);
    grid->AddSpacer(0);
    grid->Add(header_);
    rows->Add(grid, 0, wxEXPAND | wxALL, 10);

    // The box's controls are its siblings, as in the template, so that one tab order holds all.
    auto* format = new wxStaticBoxSizer(controls.Get<wxStaticBox>(kFormatGroup), wxHORIZONTAL);
    for (int id : {kEncodingLabel, kAnsi, kUtf16})
        format->Add(controls[id], 0, wxALIGN_CENTER_VERTICAL | wxALL, 6);
    rows->Add(format, 0, wxEXPAND | wxLEFT | wxRIGHT, 10);

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(controls[kOk], 0, wxRIGHT, 8); // the default button: Enter in an edit means OK
    buttons->Add(controls[kCancel]);
    rows->Add(buttons, 0, wxALIGN_RIGHT | wxALL, 10);
    window->SetSizer(rows);

    controls[kOk]->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnOK(); });
    controls[kBrowse]->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ChooseFile(); });
    SetWindowText(LoadMessage(static_cast<MessageId>(ExportDialogTemplate().title)).c_str());

    model_.Open();
    ShowFields();
    return true;
}

void CDlgTxtConfigurationExport::ShowFields()
{
    path_->ChangeValue(ToWxString(model_.filePath));
    comment_->ChangeValue(ToWxString(model_.comment));
    delimiterKinds_[model_.delimiterKind]->SetValue(true);
    otherDelimiter_->ChangeValue(ToWxString(model_.otherDelimiter));
    header_->SetValue(model_.header);
    formats_[model_.formatChoice == 1 ? 1 : 0]->SetValue(true);
    ApplyDelimiterKind();
}

void CDlgTxtConfigurationExport::ReadFields()
{
    model_.filePath = FromWxString(path_->GetValue());
    model_.comment = FromWxString(comment_->GetValue());
    for (int kind = 0; kind < 3; ++kind) {
        if (delimiterKinds_[kind]->GetValue())
            model_.delimiterKind = static_cast<ExportConfigurationModel::DelimiterKind>(kind);
    }
    model_.otherDelimiter = FromWxString(otherDelimiter_->GetValue());
    model_.header = header_->GetValue();
    model_.formatChoice = formats_[1]->GetValue() ? 1 : 0;
}

void CDlgTxtConfigurationExport::ApplyDelimiterKind()
{
    ReadFields();
    otherDelimiter_->Enable(model_.OtherDelimiterEnabled());
}

void CDlgTxtConfigurationExport::ChooseFile()
{
    ReadFields();
    WString chosen = model_.filePath;
    const FileChooser& chooser = InstalledChooser();
    const bool taken = chooser ? chooser(Window(), ExportConfigurationModel::kFileFilter, chosen)
                               : ToolkitFileChooser(Window(), ExportConfigurationModel::kFileFilter, chosen);
    if (!taken)
        return;
    model_.TakeChosenFile(chosen);
    path_->ChangeValue(ToWxString(model_.filePath));
}

void CDlgTxtConfigurationExport::OnOK()
{
    ReadFields();
    if (const auto problem = model_.Confirm()) {
        acedAlert(LoadMessage(*problem).c_str());
        return;
    }
    EndDialog(IDOK);
}
