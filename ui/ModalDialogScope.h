#pragma once
// Brackets a plug-in's modal dialog with the CAD document manager: the current document is
// locked before the dialog opens and unlocked after it has closed, on every path out.

class AcApDocument;

class ModalDialogScope {
public:
    ModalDialogScope();
    ~ModalDialogScope();
    ModalDialogScope(const ModalDialogScope&) = delete;
    ModalDialogScope& operator=(const ModalDialogScope&) = delete;

private:
    AcApDocument* document_;
};
