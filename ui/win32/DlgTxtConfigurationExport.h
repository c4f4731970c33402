#pragma once
// The export configuration dialog (template 103): the thin Win32 view over
// ExportConfigurationModel.

#include "host/CadDialogs.h"
#include "host/ImpexDefinitions.h"
#include "ui/DialogTemplates.h"
#include "ui/ExportConfigurationModel.h"

#include <functional>

class CDlgTxtConfigurationExport final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kExportDialogId;

    // Asks where to save: true with the chosen path, false when the user cancelled.
    using FileChooser = std::function<bool(DialogWindow parent, const WString& filter, WString& path)>;

    // Edits the definition's node configuration when node is set, else its plain one.
    CDlgTxtConfigurationExport(VeltoGis::ImportExport::CExportDefinition& definition, bool node);

    // Replaces the save-file chooser for every dialog after it (null: the system's own).
    static void SetFileChooser(FileChooser chooser);

    long OnAcadKeepFocus() override { return 1; }

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    bool OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam, std::intptr_t& result) override;

private:
    void ShowFields();
    void ReadFields();
    void ApplyDelimiterKind();
    void ChooseFile();

    ExportConfigurationModel model_;
    VeltoGis::Utility::CVeltoBitmapButton browse_;
};
