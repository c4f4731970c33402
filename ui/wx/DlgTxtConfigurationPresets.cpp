// The import wizard's survey presets: the choice, Detect, the names line, saving the user's own
// preset and the note box. Every rule is the model's.

#include "ui/TemplateIds.h"
#include "ui/wx/ColumnListCtrl.h"
#include "ui/wx/DlgTxtConfiguration.h"
#include "ui/wx/PreviewListCtrl.h"
#include "ui/wx/TemplateControls.h"
#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

using namespace ImportControl;

wxSizer* CDlgTxtConfiguration::PresetBox(const TemplateControls& controls)
{
    auto* box = new wxBoxSizer(wxVERTICAL);
    auto* choice = new wxBoxSizer(wxHORIZONTAL);
    choice->Add(controls[kPresetLabel], 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    preset_->SetMinSize(wxSize(200, -1));
    choice->Add(preset_, 1, wxALIGN_CENTER_VERTICAL);
    box->Add(choice, 0, wxEXPAND | wxBOTTOM, 6);
    auto* buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(controls[kDetect], 0, wxRIGHT, 6);
    buttons->Add(controls[kSavePreset], 0);
    box->Add(buttons, 0, wxBOTTOM, 6);
    box->Add(namesLine_, 0, wxBOTTOM, 6);
    box->Add(note_, 1, wxEXPAND);
    return box;
}

void CDlgTxtConfiguration::BindPresetControls()
{
    preset_->Bind(wxEVT_COMBOBOX, [this](wxCommandEvent&) { ChoosePreset(preset_->GetSelection()); });
    Window()->FindWindow(kDetect)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        model_.Detect();
        ShowPresets(model_.PresetChoices().empty() ? -1 : 0);
        ShowAll();
    });
    Window()->FindWindow(kSavePreset)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        model_.SavePreset(FromWxString(preset_->GetValue()));
        ShowPresets();
        ShowNote();
    });
    namesLine_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) {
        model_.SetFirstLineHoldsNames(namesLine_->GetValue());
        ShowPreview();
    });
}

void CDlgTxtConfiguration::ShowPresets(int selected)
{
    const wxString typed = preset_->GetValue();
    wxArrayString labels;
    for (const PresetChoice& choice : model_.PresetChoices())
        labels.Add(ToWxString(choice.label));
    preset_->Set(labels);
    if (selected >= 0 && static_cast<unsigned>(selected) < labels.size())
        preset_->SetSelection(selected);
    else
        preset_->ChangeValue(typed);
}

void CDlgTxtConfiguration::ShowNote()
{
    note_->ChangeValue(ToWxString(model_.Note()));
}

void CDlgTxtConfiguration::ChoosePreset(int index)
{
    if (index < 0)
        return;
    model_.ChoosePreset(static_cast<std::size_t>(index));
    ShowAll();
}

bool CDlgTxtConfiguration::ChooseTypedPreset()
{
    const std::optional<std::size_t> entry = model_.PresetLabelled(FromWxString(preset_->GetValue()));
    if (!entry)
        return false;
    preset_->SetSelection(static_cast<int>(*entry));
    ChoosePreset(static_cast<int>(*entry));
    return true;
}

void CDlgTxtConfiguration::ShowAll()
{
    ShowFields();
    ShowMode();
    ShowPreview();
}
