#pragma once
// The existing-file question: the thin view over FileChoiceModel.

#include "host/CadDialogs.h"
#include "ui/DialogTemplates.h"
#include "host/Text.h"

class CDlgFileChoice final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kFileChoiceDialogId;

    CDlgFileChoice() : CAdUiBaseDialog(kTemplateId) {}

    // The file the question is about; set before DoModal.
    void SetFilePath(const WString& path) { path_ = path; }

    long OnAcadKeepFocus() override { return 1; }

protected:
    bool OnInitDialog() override;
    void OnCancel() override;

private:
    WString path_;
};
