#include "ui/wx/DlgTxtConfigurationExport.h"

#include "host/CadPlatform.h"
#include "host/Messages.h"
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

// Control ids of the dialog's template.
enum ControlId {
    kFormatFirst = 107,
    kFormatSecond = 108,
    kHeader = 109,
    kDelimiterSpace = 110,
    kDelimiterTab = 111,
    kDelimiterOther = 112,
    kOtherDelimiter = 114,
    kFileLabel = 115,
    kCommentLabel = 116,
    kDelimiterLabel = 117,
    kFormatGroup = 118,
    kFilePath = 105,
    kBrowse = 200,
    kComment = 204,
    kEncodingLabel = 233,
};

wxString Caption(MessageId id) { return ToWxString(LoadMessage(id)); }

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
    auto* rows = new wxBoxSizer(wxVERTICAL);
    auto* grid = new wxFlexGridSizer(2, wxSize(8, 6));
    grid->AddGrowableCol(1);

    grid->Add(new wxStaticText(window, kFileLabel, Caption(MessageId::ExportDialogFileLabel)), 0, wxALIGN_CENTER_VERTICAL);
    auto* fileRow = new wxBoxSizer(wxHORIZONTAL);
    path_ = new wxTextCtrl(window, kFilePath, wxString(), wxDefaultPosition, wxSize(360, -1));
    fileRow->Add(path_, 1, wxALIGN_CENTER_VERTICAL);
    fileRow->Add(browse_.Create(window, kBrowse), 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    browse_.SetButtonIcon(WTEXT("IDI_OPEN"), 1, 16, 16, 0);
    grid->Add(fileRow, 1, wxEXPAND);

    grid->Add(new wxStaticText(window, kCommentLabel, Caption(MessageId::ExportDialogCommentLabel)), 0,
              wxALIGN_CENTER_VERTICAL);
    comment_ = new wxTextCtrl(window, kComment);
    grid->Add(comment_, 1, wxEXPAND);

    grid->Add(new wxStaticText(window, kDelimiterLabel, Caption(MessageId::ExportDialogDelimiterLabel)), 0,
              wxALIGN_CENTER_VERTICAL);
    auto* delimiterRow = new wxBoxSizer(wxHORIZONTAL);
    const MessageId kindCaptions[] = {MessageId::DelimiterSpace, MessageId::DelimiterTab, MessageId::DelimiterOther};
    for (int kind = 0; kind < 3; ++kind) {
        delimiterKinds_[kind] = new wxRadioButton(window, kDelimiterSpace + kind, Caption(kindCaptions[kind]),
                                                  wxDefaultPosition, wxDefaultSize, kind == 0 ? wxRB_GROUP : 0);
        delimiterRow->Add(delimiterKinds_[kind], 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 8);
        delimiterKinds_[kind]->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) { ApplyDelimiterKind(); });
    }
    otherDelimiter_ = new wxTextCtrl(window, kOtherDelimiter, wxString(), wxDefaultPosition, wxSize(60, -1));
    delimiterRow->Add(otherDelimiter_, 0, wxALIGN_CENTER_VERTICAL);
    grid->Add(delimiterRow, 1, wxEXPAND);

    grid->AddSpacer(0);
    header_ = new wxCheckBox(window, kHeader, Caption(MessageId::ExportDialogHeaderCaption));
    grid->Add(header_);
    rows->Add(grid, 0, wxEXPAND | wxALL, 10);

    auto* format = new wxStaticBoxSizer(new wxStaticBox(window, kFormatGroup, Caption(MessageId::FormatLabel)),
                                        wxHORIZONTAL);
    format->Add(new wxStaticText(format->GetStaticBox(), kEncodingLabel, Caption(MessageId::EncodingLabel)), 0,
                wxALIGN_CENTER_VERTICAL | wxALL, 6);
    // The encodings' own names: the same in every language.
    formats_[0] = new wxRadioButton(format->GetStaticBox(), kFormatFirst, "ANSI", wxDefaultPosition, wxDefaultSize,
                                    wxRB_GROUP);
    formats_[1] = new wxRadioButton(format->GetStaticBox(), kFormatSecond, "Unicode (UTF-16LE)");
    format->Add(formats_[0], 0, wxALIGN_CENTER_VERTICAL | wxALL, 6);
    format->Add(formats_[1], 0, wxALIGN_CENTER_VERTICAL | wxALL, 6);
    rows->Add(format, 0, wxEXPAND | wxLEFT | wxRIGHT, 10);

    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    auto* ok = new wxButton(window, IDOK, Caption(MessageId::OkCaption));
    ok->SetDefault(); // Enter in an edit means OK
    buttons->Add(ok, 0, wxRIGHT, 8);
    buttons->Add(new wxButton(window, IDCANCEL, Caption(MessageId::CancelCaption)));
    rows->Add(buttons, 0, wxALIGN_RIGHT | wxALL, 10);
    window->SetSizer(rows);

    ok->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnOK(); });
    window->FindWindow(kBrowse)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ChooseFile(); });
    SetWindowText(LoadMessage(MessageId::ExportDialogTitle).c_str());

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
