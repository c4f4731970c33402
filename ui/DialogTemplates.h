#pragma once
// What both views of a dialog share, written once so that they cannot drift: the template
// number, the host message of its title, and every control in tab order with its id, kind,
// caption and place. The lists are in ui/templates/*.def; the Windows resource script builds
// the dialog templates from the same lists, and the wx views make and order their controls
// by them.
//
// A .def file is a list of
//   DIALOG_TEMPLATE(template id, title message, width, height)
//   DIALOG_CONTROL(id, kind, caption message, template label, mnemonic, x, y, width, height)
// with places and sizes in dialog units. A control's caption is its host message when it has
// one (set when the dialog opens, as the host's texts are not the module's), else the
// template's own label; '&' in a label, or the mnemonic letter of a message caption, is the
// letter Alt reaches the control by.

#include "host/Text.h"

#include <cstddef>

// The templates' numbers.
constexpr unsigned kImportDialogId = 102;
constexpr unsigned kExportDialogId = 103;
constexpr unsigned kFileChoiceDialogId = 104;

enum class ControlKind {
    Label,         // static text; a mnemonic moves to the next control in the tab order
    Edit,          // one line of text
    ReadOnlyText,  // several lines, read only
    Button,
    DefaultButton, // the push button that Enter presses
    IconButton,    // a push button showing one of the host's icons
    RadioFirst,    // the first radio button of a group
    Radio,
    Check,
    Combo,         // a drop-down list whose text can also be typed
    GroupBox,
    Placeholder,   // a rectangle where the view makes a control of its own
    Ruler,
    ColumnList,
};

struct DialogControl {
    int id;
    ControlKind kind;
    unsigned caption;   // host message number; 0: the template's label
    const char* label;  // the template's own label (ASCII), "" for none
    char mnemonic;      // for a message caption: the letter Alt reaches it by; 0: none
    int x, y, width, height;

    bool TakesFocus() const;
};

struct DialogTemplate {
    unsigned id;
    unsigned title;     // host message number of the window title
    int width, height;  // dialog units
    const DialogControl* controls;
    std::size_t count;

    const DialogControl* begin() const { return controls; }
    const DialogControl* end() const { return controls + count; }
    // The control with that id, or null.
    const DialogControl* Find(int id) const;
};

const DialogTemplate& ImportDialogTemplate();     // 102
const DialogTemplate& ExportDialogTemplate();     // 103
const DialogTemplate& FileChoiceDialogTemplate(); // 104

// The id the import wizard gives its preview list, made in the placeholder 202.
constexpr int kPreviewListId = 555;
constexpr int kPreviewPlaceholderId = 202;

// The caption a control shows: its host message with '&' put before the first occurrence of
// its mnemonic letter (in either case; none when the text lacks it), or its template label.
WString ControlCaption(const DialogControl& control);
// text with '&' before the first occurrence of letter in either case; '&'s already in the
// text are doubled so that they show as themselves.
WString WithMnemonic(const WString& text, char letter);
