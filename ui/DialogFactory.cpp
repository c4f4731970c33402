#include "ui/DialogFactory.h"

namespace {

class NoDialogs final : public DialogFactory {
public:
    int RunImportConfiguration(VeltoGis::ImportExport::CImportDefinition*, int, const WChar*) override
    {
        return ModalResultCancel;
    }
    int RunExportConfiguration(VeltoGis::ImportExport::CExportDefinition*, int) override { return ModalResultCancel; }
    int RunFileChoice(const WChar*) override { return FileChoiceCancel; }
};

NoDialogs noDialogs;
DialogFactory* installed = &noDialogs;

} // namespace

DialogFactory::~DialogFactory() = default;

DialogFactory& Dialogs() { return *installed; }

DialogFactory* InstallDialogFactory(DialogFactory* factory)
{
    DialogFactory* previous = installed == &noDialogs ? nullptr : installed;
    installed = factory ? factory : &noDialogs;
    return previous;
}
