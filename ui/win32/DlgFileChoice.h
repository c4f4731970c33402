#pragma once
// The existing-file question (template 104): the thin Win32 view over FileChoiceModel.

#include "host/CadDialogs.h"
#include "host/Text.h"
#include "ui/DialogTemplates.h"

class CDlgFileChoice final : public CAdUiBaseDialog {
public:
    static constexpr unsigned kTemplateId = kFileChoiceDialogId;

    CDlgFileChoice();

    // The file the question is about; set before DoModal.
    void SetFilePath(const WString& path) { path_ = path; }

    long OnAcadKeepFocus() override { return 1; }

protected:
    bool OnInitDialog() override;
    void OnCancel() override;
    void OnOK() override;
    bool OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam, std::intptr_t& result) override;

private:
    WString path_;
};
