#pragma once
// The import wizard: the thin Win32 view over ImportConfigurationModel, made from the
// template 102 with the ruler, the preview list and the column list of its own. The survey
// presets' controls are in DlgTxtConfigurationPresets.cpp.

#include "host/CadDialogs.h"
#include "host/ImpexDefinitions.h"
#include "ui/DialogTemplates.h"
#include "ui/ImportConfigurationModel.h"

#include <functional>
#include <map>
#include <memory>

class ColumnListCtrl;
class CRulerWnd;
class PreviewListCtrl;
class ToolTips;
struct HBRUSH__;

class CDlgTxtConfiguration final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kImportDialogId;

    // Asks which file to open: true with the chosen path, false when the user cancelled.
    using FileChooser = std::function<bool(DialogWindow parent, const WString& filter, WString& path)>;

    // Edits the definition's node configuration when node is set, else its plain one;
    // presetPath, when not null, is the file the wizard opens on.
    CDlgTxtConfiguration(VeltoGis::ImportExport::CImportDefinition& definition, bool node,
                         const WChar* presetPath = nullptr);
    ~CDlgTxtConfiguration() override;

    // Replaces the open-file chooser for every wizard after it (null: the system's own).
    static void SetFileChooser(FileChooser chooser);

    long OnAcadKeepFocus() override { return 1; }
    // Enter moves on as Tab does (except in the column list's editors, where it commits, and
    // in the preset choice, where it takes the entry picked or typed);
    // the pointer over the ruler shows the character position and a click sets or removes a
    // break; Space and Delete on the ruler set or remove breaks.
    bool PreTranslateMessage(tagMSG* message) override;

protected:
    bool OnInitDialog() override;
    // Esc in the column list's editor or the preset choice's open list closes that, not the
    // wizard.
    void OnCancel() override;
    // Takes an open editor's text, composes the configuration and stores it.
    void OnOK() override;
    bool OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam, std::intptr_t& result) override;

private:
    void CreateControls();
    void SetUpColumnList();
    void ScaleToDpi();
    void ReleaseControls();
    bool OnCommand(int control, unsigned code);
    void ShowFields();
    // Marks the fields that the configuration would not give back as shown.
    void ShowStoredChanges();
    void ShowNameChanges();
    void ShowMode();
    void ShowPreview();
    int PreviewColumnWidth(std::size_t column) const;
    void ShowShownColumns();
    void ShowColumns();
    void ShowEncoding();
    void TakeDelimiters();
    void ChooseFile();
    void OnRulerMouse(const tagMSG& message);
    bool OnRulerKey(tagMSG& message);
    void OnEnter();
    void OnColumnChanged(int row, int column);

    // Survey presets.
    bool OnPresetCommand(int control, unsigned code);
    // Lists the model's preset choices, keeping the text in the choice's edit.
    void ShowPresetChoices();
    // Applies the entry and shows what it set.
    void ChoosePreset(int index);
    // Enter in the preset choice: true when it was taken there (the open list's pick, or the
    // typed text naming an entry exactly); false when it moves on as elsewhere.
    bool OnPresetEnter(const tagMSG& message);
    bool IsPresetChoice(DialogWindow window) const;
    bool IsPresetListOpen() const;
    void Detect();
    void SavePreset();
    void TakeNamesLine();
    // The model's note, whose lines the edit breaks only at CR LF.
    void ShowNote();

    ImportConfigurationModel model_;
    WString presetPath_;
    bool hasPresetPath_;
    VeltoGis::Utility::CVeltoBitmapButton browse_;
    VeltoGis::Utility::CVeltoBitmapButton removeBreaks_;
    std::unique_ptr<CRulerWnd> ruler_;
    std::unique_ptr<PreviewListCtrl> preview_;
    std::unique_ptr<ColumnListCtrl> columns_;
    std::unique_ptr<ToolTips> tips_;
    // The ruler's cell width and marker half-width at 96 DPI, as the model set them up.
    int rulerCellWidth_ = 0;
    int rulerMarkerHalfWidth_ = 0;
    // The edits' stored changes (ImportValueChange bits) by control id, and their tint.
    std::map<int, unsigned> storedChanges_;
    HBRUSH__* markedBrush_ = nullptr;
    // Set while the view writes into the edits, whose change notices are then not the user's.
    int showing_ = 0;
    // The preset entry last applied from the list, -1 none since it was filled: the
    // notifications of one pick (its end and its selection change, in either order) apply it
    // once.
    int appliedPreset_ = -1;
};
