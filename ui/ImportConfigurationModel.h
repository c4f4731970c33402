#pragma once
// What the import wizard decides, apart from the toolkit: how a stored configuration opens,
// which controls the mode enables, when the preview reloads, how the column list is built,
// what a click on the ruler does, and what OK stores. The wizard's view moves these fields
// to and from its controls and calls the operations when the user acts.

#include "host/ImpexDefinitions.h"
#include "host/Text.h"
#include "import/ImportTxtConfiguration.h"
#include "ui/ImportPreview.h"
#include "ui/PresetDetect.h"
#include "ui/RulerModel.h"
#include "ui/SurveyPresets.h"

#include <optional>
#include <vector>

struct ColumnListRow {
    WString label; // "C1", "C2", ...
    WString name;
    int type = 0;  // a ColumnTypeChoice
    bool on = true;
    // Why the type does not suit every preview line ("" when it does): the first line whose
    // field does not convert. Said beside the list; the type stays as guessed or chosen.
    WString typeWarning;
};

// One entry of the wizard's preset choice: a preset, and what Detect found for it.
struct PresetChoice {
    WString label;                           // the preset's name; after Detect with its delimiter
    const SurveyPreset* preset = nullptr;
    std::optional<DetectCandidate> detected; // Detect's fitting candidate, applied as found
};

class ImportConfigurationModel {
public:
    enum Mode { ModeDelimited = 0, ModeFixedWidth = 1 };

    // Break colours and the ruler's colours in both modes, 0x00BBGGRR.
    static constexpr RulerColour kBreakColour = 0xDCFFFF;
    static constexpr RulerColour kActiveBackground = 0xFFC8C8;
    static constexpr RulerColour kGreyBackground = 0xA8A8A8;
    static constexpr RulerColour kGreyTicks = 0xC0C0C0;
    // A ruler position is this many cells right of the character position it stands for.
    static constexpr int kRulerToCharacter = 5;
    // The open-file chooser's filter.
    static const WChar* const kFileFilter;

    // The definition is edited, not owned; node chooses its node configuration accessors.
    ImportConfigurationModel(VeltoGis::ImportExport::CImportDefinition& definition, bool node);

    // Sets the ruler up, reads the stored configuration into the fields (a string that does
    // not parse leaves them as constructed, with tab ticked), applies the mode and loads the
    // preview. presetPath, when not null, replaces the stored file path.
    void Open(const WChar* presetPath = nullptr);

    // Switches delimited/fixed width: enables the matching controls and colours the ruler.
    // Empties the working configuration (except while opening); does not reload.
    void SetMode(int mode);
    bool DelimiterControlsEnabled() const { return mode != ModeFixedWidth; }
    bool RulerEnabled() const { return mode == ModeFixedWidth; }

    // The file chooser's answer: a new file, so the stored columns no longer apply.
    void ChooseFile(const WString& path);
    // After a delimiter check box, the other-delimiters text or the comment text changed.
    void DelimitersChanged();

    // Empties the list and reloads the preview and, unless the file did not open, the
    // column list; in fixed width the positions become the ruler's once a line is read.
    // False when the file could not be opened.
    bool LoadPreview();
    // One row per preview column, named and typed from the preview, then the stored
    // configuration's columns when their count matches (else they are dropped for good).
    void BuildColumnList();

    // A click on the ruler at a ruler position (fixed width only; a position outside the
    // scale is -1): toggles a break at the character position it stands for. True when a
    // break was added or removed (the preview has then been reloaded).
    bool ClickRuler(int rulerPosition);
    // Adds a break at the character position, or removes the one already there.
    bool ToggleBreakAt(int position);
    // Removes every break and reloads.
    void RemoveAllBreaks();
    // The tooltip over a ruler position: the character position, "" when negative.
    static WString RulerTip(int rulerPosition);

    // True when the cell's text converts to its column's chosen type.
    bool CellConverts(std::size_t row, std::size_t column) const;
    // After a column's type changed: its warning follows the new type.
    void TypeChanged(std::size_t column);

    // Survey presets (ui/ImportWizardPresets.cpp). The choice lists the shipped presets, then
    // the user's; after Detect, the fitting ones first, best first, each with its delimiter.
    const std::vector<PresetChoice>& PresetChoices() const { return presetChoices_; }
    // Fills the delimiter boxes, the header lines and the column list from the entry exactly
    // as a user setting them would (a shipped preset keeps the header lines as they are), and
    // reloads the preview. False for an index out of range or a file that does not open.
    bool ChoosePreset(std::size_t index);
    // The entry whose label is exactly the text (what Enter in the choice takes); none when no
    // entry has it.
    std::optional<std::size_t> PresetLabelled(const WString& text) const;
    // Tries every preset on the preview's lines and chooses the best fitting one; the note
    // says which fit and why the others do not. False when none fits (nothing changes).
    bool Detect();
    // The check box "first line holds the column names": one header line or none; reloads.
    void SetFirstLineHoldsNames(bool holds);
    // Saves the wizard's setup as the user's preset of that name and lists it; the note says
    // where, or why not.
    bool SavePreset(const WString& name);
    // What the last preset action found, and the columns whose type a preview line
    // disagrees with; several lines.
    WString Note() const;
    // Where the user's presets are read from and saved to; UserPresetFolder() unless set.
    void SetUserPresetFolder(const WString& folder);

    // What the configuration would make of a field (ImportValueChange bits; 0: it reads back
    // as shown): the file path, the other delimiters while they are ticked, the comment
    // characters, or the name of the column at that index. For the view to mark the field.
    unsigned StoredChanges(ImportValue value, std::size_t column = 0) const;

    // OK: composes the configuration from the fields and stores it in the definition. No
    // field is checked: what StoredChanges tells is stored all the same.
    void Confirm();

    // The fields of the wizard's controls, which the preview reads as they stand.
    WString filePath;
    int mode = ModeDelimited;
    bool space = false;
    bool tab = false;
    bool other = false;
    WString otherDelimiters;
    WString comments = WTEXT("*#");
    // The first non-comment lines that hold names, not data (the configuration's header lines).
    int headerLines = 0;
    std::vector<ColumnListRow> columns;

    // The ticked delimiters in the wizard's order: space, tab, then the other-delimiters text
    // as one delimiter string (a stored configuration reads it back one per character).
    DelimiterList Delimiters() const;

    const ImportPreview& Preview() const { return preview_; }
    // How the preview's lines are read (see WorkRunner); by default on the calling thread.
    void SetPreviewRunner(WorkRunner runner) { preview_.SetRunner(std::move(runner)); }
    RulerModel& Ruler() { return ruler_; }
    const RulerModel& Ruler() const { return ruler_; }
    // Fixed width: where the columns begin, from the ruler.
    const PositionList& Positions() const { return positions_; }
    bool ConfigurationLoaded() const { return loaded_; }
    int BreaksAdded() const { return breaksAdded_; }

private:
    WString Stored() const;
    void ApplyStoredColumns();
    void ApplyChosenColumns();
    void TakeFields(const ImportTxtConfiguration& configuration);
    // The column list as the configuration's columns, numbered from 0.
    ImportTxtConfiguration::ColumnList ColumnRecords() const;
    void ListPresets();
    void RefreshTypeWarnings();

    VeltoGis::ImportExport::CImportDefinition& definition_;
    bool node_;
    // The one configuration record the wizard parses into and composes from.
    ImportTxtConfiguration configuration_;
    ImportPreview preview_;
    RulerModel ruler_;
    PositionList positions_;
    int breaksAdded_ = 0;
    bool loaded_ = false;
    bool initialising_ = false;
    // The columns of a chosen preset, which the next column list takes when the counts match.
    std::optional<ImportTxtConfiguration> chosen_;
    WString chosenName_;
    WString userPresetFolder_;
    bool userPresetFolderSet_ = false;
    std::vector<SurveyPreset> userPresets_;
    std::vector<PresetChoice> presetChoices_;
    WString presetNote_;
};
