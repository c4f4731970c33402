#pragma once
// What a user does in the module's dialogs and what the dialogs must make of it, as data that
// the GUI tests of every toolkit play with real input: one table, so that the Linux and the
// Windows views are held to the same behaviour. Plain C++: no toolkit, no module types.
//
// Texts are UTF-8. In paths, stored configurations and expected texts, "$FILE" stands for the
// scenario's file (written into a private folder before the dialog opens) and "$DIR" for that
// folder. Control ids are those of ui/templates/*.def; 1 and 2 are OK and Cancel. The user's
// settings folder (XDG_CONFIG_HOME, APPDATA) is "$DIR/settings" while a dialog is open.

#include <cstddef>
#include <string>
#include <vector>

struct ScenarioStep {
    enum Kind {
        TypeText,             // replaces the edit's text by typing real keys
        Click,                // a mouse click in the middle of the control (a button pressed, a box
                              // toggled, the focus put into an edit)
        PressEnter,           // Enter where the focus is
        PressEscape,          // Esc where the focus is
        ChooseColumnType,     // the column list's type drop-down of row: the entry named text
        EditColumnName,       // types text into the name cell of row and commits it with Enter
        CancelColumnNameEdit, // types text into the name cell of row and throws it away with Esc
        ToggleColumnOn,       // one click on the import check box of row
        ClickRulerAt,         // a click on the ruler where the column beginning at character row goes
        ChooseEntry,          // the drop-down list control's entry named text, chosen as a user does
        ExpectEnabled,
        ExpectDisabled,
        ExpectText,           // the control shows exactly text
        ExpectTextIncludes,   // the control's text holds text
        ExpectChecked,        // a check box or radio button
        ExpectUnchecked,
        ExpectAlert,          // the next alert given is host message control, its %s being text
        ExpectDialogOpen,     // the dialog is still shown
        ExpectPreviewRows,    // the preview list holds row rows
        ExpectPreviewColumns, // the preview list has row columns
        ExpectColumnRows,     // the column list holds row rows
        ExpectColumnName,     // the name cell of row shows text
    } kind;
    int control = 0;
    int row = 0;
    std::string text;
};

struct DialogScenario {
    const char* name;           // a gtest-friendly name: letters, digits, underscores
    unsigned dialog;            // template: 102 import wizard, 103 export, 104 file question
    std::string storedBefore;   // the configuration the dialog opens on ("" none)
    std::string fileContent;    // the wizard's file, written repeat times over
    std::size_t repeat = 1;
    std::string fileName = "points.txt";
    std::string path;           // what the wizard opens on ("" its stored path) / the file question's file
    bool node = false;          // the node configuration rather than the plain one
    std::vector<ScenarioStep> steps;
    int result;                 // what DoModal returns
    std::string storedAfter;    // the exact configuration stored; "" unchanged
};

// Every scenario, each dialog's in a group.
const std::vector<DialogScenario>& DialogScenarios();

// The same text with "$FILE" and "$DIR" replaced.
std::string SubstitutePaths(const std::string& text, const std::string& file, const std::string& folder);

// The steps, written as a user says them.
namespace step {
ScenarioStep Type(int control, std::string text);
ScenarioStep Click(int control);
ScenarioStep Enter();
ScenarioStep Escape();
ScenarioStep ChooseType(int row, std::string typeName);
ScenarioStep Rename(int row, std::string name);
ScenarioStep RenameCancelled(int row, std::string typed);
ScenarioStep ToggleOn(int row);
ScenarioStep RulerAt(int character);
ScenarioStep Choose(int control, std::string entry);
ScenarioStep Enabled(int control);
ScenarioStep Disabled(int control);
ScenarioStep Shows(int control, std::string text);
ScenarioStep ShowsPart(int control, std::string text);
ScenarioStep Checked(int control);
ScenarioStep Unchecked(int control);
ScenarioStep Alert(unsigned message, std::string argument = "");
ScenarioStep StillOpen();
ScenarioStep PreviewRows(int count);
ScenarioStep PreviewColumns(int count);
ScenarioStep ColumnRows(int count);
ScenarioStep ColumnName(int row, std::string name);
} // namespace step
