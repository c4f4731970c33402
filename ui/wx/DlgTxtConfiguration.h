#pragma once
// The import wizard: the thin view over ImportConfigurationModel, with the ruler, the
// preview list and the column list.

#include "host/CadDialogs.h"
#include "ui/DialogTemplates.h"
#include "host/ImpexDefinitions.h"
#include "ui/ImportConfigurationModel.h"

#include <wx/string.h>

#include <functional>

class wxCheckBox;
class wxComboBox;
class wxRadioButton;
class wxStaticText;
class wxTextCtrl;
class wxKeyEvent;
class wxMouseEvent;
class wxSizer;
class wxWindow;
class ColumnListCtrl;
class CRulerWnd;
class PreviewListCtrl;
class TemplateControls;

class CDlgTxtConfiguration final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kImportDialogId;

    // Asks which file to open: true with the chosen path, false when the user cancelled.
    using FileChooser = std::function<bool(wxWindow* parent, const WString& filter, WString& path)>;

    // Edits the definition's node configuration when node is set, else its plain one;
    // presetPath, when not null, is the file the wizard opens on.
    CDlgTxtConfiguration(VeltoGis::ImportExport::CImportDefinition& definition, bool node,
                         const WChar* presetPath = nullptr);

    // Replaces the open-file chooser for every wizard after it (null: the toolkit's own).
    static void SetFileChooser(FileChooser chooser);

    long OnAcadKeepFocus() override { return 1; }

protected:
    bool OnInitDialog() override;
    // Esc in the column list's editor closes the editor, not the wizard.
    void OnCancel() override;

private:
    // The template's controls, in its order; the view's own kinds from CreateOwnControl.
    void CreateControls();
    wxWindow* CreateOwnControl(wxWindow* parent, const DialogControl& control);
    ColumnListCtrl* CreateColumnList(wxWindow* parent, int id);
    wxSizer* FileRow(const TemplateControls& controls);
    wxSizer* ModeRow(const TemplateControls& controls);
    wxSizer* ColumnRow(const TemplateControls& controls);
    void BindControls();
    void ShowFields();
    // Marks the fields that the configuration would not give back as shown.
    void ShowStoredChanges();
    void ShowNameChanges();
    void ShowMode();
    void ShowPreview();
    int PreviewColumnWidth(const ImportPreview& preview, std::size_t column) const;
    void ShowColumns();
    void ShowEncoding();
    void TakeDelimiters();
    void ChooseFile();
    void OnRulerMouse(wxMouseEvent& event);
    void OnRulerKey(wxKeyEvent& event);
    void ShowRulerTip(int rulerPosition);
    void OnCharHook(wxKeyEvent& event);
    void OnColumnChanged(int row, int column);
    void OnOK();

    // The survey presets (DlgTxtConfigurationPresets.cpp).
    wxSizer* PresetBox(const TemplateControls& controls);
    void BindPresetControls();
    // The preset list as the model has it; selects entry (-1: none) and keeps the typed text.
    void ShowPresets(int selected = -1);
    void ShowNote();
    // The type cells of columns whose type a preview line disagrees with.
    void ShowTypeWarnings();
    void ChoosePreset(int index);
    // Enter in the preset choice: true when its text names an entry, which is then chosen.
    bool ChooseTypedPreset();
    // After a preset action: every field, the preview, the columns and the note anew.
    void ShowAll();

    ImportConfigurationModel model_;
    WString presetPath_;
    bool hasPresetPath_;
    VeltoGis::Utility::CVeltoBitmapButton browse_;
    VeltoGis::Utility::CVeltoBitmapButton rebuild_;
    wxTextCtrl* path_ = nullptr;
    wxStaticText* encoding_ = nullptr;
    wxRadioButton* delimited_ = nullptr;
    wxRadioButton* fixedWidth_ = nullptr;
    wxCheckBox* space_ = nullptr;
    wxCheckBox* tab_ = nullptr;
    wxCheckBox* other_ = nullptr;
    wxTextCtrl* otherDelimiters_ = nullptr;
    wxTextCtrl* comments_ = nullptr;
    CRulerWnd* ruler_ = nullptr;
    wxWindow* removeBreaks_ = nullptr;
    PreviewListCtrl* preview_ = nullptr;
    wxStaticText* shownColumns_ = nullptr;
    ColumnListCtrl* columns_ = nullptr;
    wxComboBox* preset_ = nullptr;
    wxCheckBox* namesLine_ = nullptr;
    wxTextCtrl* note_ = nullptr;
    wxString rulerTip_;
};
