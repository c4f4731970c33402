#include "ui/DialogTemplates.h"

#include "host/Messages.h"

#include <iterator>

namespace {

#define DIALOG_TEMPLATE(id, title, width, height)
#define DIALOG_CONTROL(id, kind, caption, label, mnemonic, x, y, width, height) \
    {id, ControlKind::kind, caption, label, mnemonic, x, y, width, height},

const DialogControl kImportControls[] = {
#include "ui/templates/ImportDialog.def"
};
const DialogControl kExportControls[] = {
#include "ui/templates/ExportDialog.def"
};
const DialogControl kFileChoiceControls[] = {
#include "ui/templates/FileChoiceDialog.def"
};

#undef DIALOG_TEMPLATE
#undef DIALOG_CONTROL
#define DIALOG_TEMPLATE(id, title, width, height) id, title, width, height,
#define DIALOG_CONTROL(id, kind, caption, label, mnemonic, x, y, width, height)

const DialogTemplate kImport = {
#include "ui/templates/ImportDialog.def"
    kImportControls, std::size(kImportControls)};
const DialogTemplate kExport = {
#include "ui/templates/ExportDialog.def"
    kExportControls, std::size(kExportControls)};
const DialogTemplate kFileChoice = {
#include "ui/templates/FileChoiceDialog.def"
    kFileChoiceControls, std::size(kFileChoiceControls)};

#undef DIALOG_TEMPLATE
#undef DIALOG_CONTROL

WChar Lower(WChar c) { return c >= 'A' && c <= 'Z' ? static_cast<WChar>(c - 'A' + 'a') : c; }

} // namespace

bool DialogControl::TakesFocus() const
{
    switch (kind) {
    case ControlKind::Label:
    case ControlKind::GroupBox:
    case ControlKind::ReadOnlyText: return false;
    default: return true;
    }
}

const DialogControl* DialogTemplate::Find(int controlId) const
{
    for (const DialogControl& control : *this) {
        if (control.id == controlId)
            return &control;
    }
    return nullptr;
}

const DialogTemplate& ImportDialogTemplate() { return kImport; }
const DialogTemplate& ExportDialogTemplate() { return kExport; }
const DialogTemplate& FileChoiceDialogTemplate() { return kFileChoice; }

WString WithMnemonic(const WString& text, char letter)
{
    WString marked;
    marked.reserve(text.size() + 2);
    bool placed = letter == 0;
    for (const WChar c : text) {
        if (c == '&')
            marked += WTEXT("&&");
        else {
            if (!placed && Lower(c) == Lower(static_cast<WChar>(letter))) {
                marked += '&';
                placed = true;
            }
            marked += c;
        }
    }
    return marked;
}

WString ControlCaption(const DialogControl& control)
{
    if (control.caption != 0)
        return WithMnemonic(LoadMessage(static_cast<MessageId>(control.caption)), control.mnemonic);
    WString label;
    for (const char* c = control.label; *c; ++c)
        label += static_cast<WChar>(static_cast<unsigned char>(*c));
    return label;
}
