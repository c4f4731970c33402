#pragma once
// The export configuration dialog: the thin view over ExportConfigurationModel.

#include "host/CadDialogs.h"
#include "ui/DialogTemplates.h"
#include "host/ImpexDefinitions.h"
#include "ui/ExportConfigurationModel.h"

#include <functional>

class wxCheckBox;
class wxRadioButton;
class wxTextCtrl;

class CDlgTxtConfigurationExport final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kExportDialogId;

    // Asks where to save: true with the chosen path, false when the user cancelled.
    using FileChooser = std::function<bool(wxWindow* parent, const WString& filter, WString& path)>;

    // Edits the definition's node configuration when node is set, else its plain one.
    CDlgTxtConfigurationExport(VeltoGis::ImportExport::CExportDefinition& definition, bool node);

    // Replaces the save-file chooser for every dialog after it (null: the toolkit's own).
    static void SetFileChooser(FileChooser chooser);

    long OnAcadKeepFocus() override { return 1; }

protected:
    bool OnInitDialog() override;

private:
    void ShowFields();
    void ReadFields();
    void ApplyDelimiterKind();
    void ChooseFile();
    void OnOK();

    ExportConfigurationModel model_;
    VeltoGis::Utility::CVeltoBitmapButton browse_;
    wxTextCtrl* path_ = nullptr;
    wxTextCtrl* comment_ = nullptr;
    wxRadioButton* delimiterKinds_[3] = {};
    wxTextCtrl* otherDelimiter_ = nullptr;
    wxCheckBox* header_ = nullptr;
    wxRadioButton* formats_[2] = {};
};
