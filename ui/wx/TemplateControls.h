#pragma once
// A dialog's controls made from its template (ui/DialogTemplates.h): every control in the
// template's order, so that the tab order is the template's, with the template's id and
// caption. The view makes the controls of its own kinds (icon buttons, the ruler, the lists)
// and lays all of them out in its sizers.

#include "ui/DialogTemplates.h"

#include <wx/string.h>

#include <functional>
#include <map>

class wxWindow;

class TemplateControls {
public:
    // Makes a control the view draws itself, or returns null to have the default one of
    // its kind made.
    using OwnControl = std::function<wxWindow*(wxWindow* parent, const DialogControl& control)>;

    // Makes every control of the template as a child of parent. A placeholder stands for the
    // view's own control, which ownControl must make; so must an icon button, the ruler and
    // the column list.
    TemplateControls(wxWindow* parent, const DialogTemplate& dialogTemplate, const OwnControl& ownControl);

    // The control with the template id; the id must be in the template.
    wxWindow* operator[](int id) const;
    template <class Control>
    Control* Get(int id) const
    {
        return static_cast<Control*>((*this)[id]);
    }

private:
    std::map<int, wxWindow*> controls_;
};

// The control's caption for the toolkit: ControlCaption, whose '&' marks the mnemonic in
// wx as in Win32.
wxString CaptionOf(const DialogControl& control);
