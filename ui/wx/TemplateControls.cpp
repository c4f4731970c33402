#include "ui/wx/TemplateControls.h"

#include "ui/wx/WxText.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/debug.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace {

wxWindow* DefaultControl(wxWindow* parent, const DialogControl& control)
{
    const wxString caption = CaptionOf(control);
    switch (control.kind) {
    case ControlKind::Label: return new wxStaticText(parent, control.id, caption);
    case ControlKind::Edit: return new wxTextCtrl(parent, control.id);
    case ControlKind::ReadOnlyText:
        return new wxTextCtrl(parent, control.id, wxString(), wxDefaultPosition, wxDefaultSize,
                              wxTE_MULTILINE | wxTE_READONLY | wxTE_NO_VSCROLL);
    case ControlKind::Button: return new wxButton(parent, control.id, caption);
    case ControlKind::DefaultButton: {
        auto* button = new wxButton(parent, control.id, caption);
        button->SetDefault();
        return button;
    }
    case ControlKind::RadioFirst:
        return new wxRadioButton(parent, control.id, caption, wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
    case ControlKind::Radio: return new wxRadioButton(parent, control.id, caption);
    case ControlKind::Check: return new wxCheckBox(parent, control.id, caption);
    case ControlKind::Combo: return new wxComboBox(parent, control.id);
    case ControlKind::GroupBox: return new wxStaticBox(parent, control.id, caption);
    default: return nullptr; // the view's own
    }
}

} // namespace

wxString CaptionOf(const DialogControl& control) { return ToWxString(ControlCaption(control)); }

TemplateControls::TemplateControls(wxWindow* parent, const DialogTemplate& dialogTemplate,
                                   const OwnControl& ownControl)
{
    // Made in the template's order: the toolkit's tab order is the order children were made in.
    for (const DialogControl& control : dialogTemplate) {
        wxWindow* made = ownControl(parent, control);
        if (!made)
            made = DefaultControl(parent, control);
        wxCHECK2_MSG(made, continue, "the view makes no control for a template entry");
        controls_[control.id] = made;
    }
}

wxWindow* TemplateControls::operator[](int id) const
{
    const auto found = controls_.find(id);
    wxASSERT_MSG(found != controls_.end(), "no such control in the dialog's template");
    return found == controls_.end() ? nullptr : found->second;
}
