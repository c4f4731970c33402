// The module's own dialogs, shown when the CAD application shows dialogs; when it cannot
// (no display, dialogs off) the command line answers as before. Nothing a dialog throws
// leaves it: the engine sees a cancelled dialog instead.

#include "ui/DialogFactory.h"

// The same three classes in each toolkit's views.
#if defined(_WIN32)
#include "ui/win32/DlgFileChoice.h"
#include "ui/win32/DlgTxtConfiguration.h"
#include "ui/win32/DlgTxtConfigurationExport.h"
#else
#include "ui/wx/DlgFileChoice.h"
#include "ui/wx/DlgTxtConfiguration.h"
#include "ui/wx/DlgTxtConfigurationExport.h"
#endif

namespace {

class ModuleDialogs final : public DialogFactory {
public:
    int RunImportConfiguration(VeltoGis::ImportExport::CImportDefinition* definition, int secondary,
                               const WChar* filePath) override
    {
        if (!definition)
            return ModalResultCancel;
        try {
            CDlgTxtConfiguration dialog(*definition, secondary != 0, filePath);
            const int result = dialog.DoModal();
            if (result == kDialogNotShown)
                return CommandLineDialogs().RunImportConfiguration(definition, secondary, filePath);
            return result == IDOK ? ModalResultOk : ModalResultCancel;
        } catch (...) {
            return ModalResultCancel;
        }
    }

    int RunExportConfiguration(VeltoGis::ImportExport::CExportDefinition* definition, int secondary) override
    {
        if (!definition)
            return ModalResultCancel;
        try {
            CDlgTxtConfigurationExport dialog(*definition, secondary != 0);
            const int result = dialog.DoModal();
            if (result == kDialogNotShown)
                return CommandLineDialogs().RunExportConfiguration(definition, secondary);
            return result == IDOK ? ModalResultOk : ModalResultCancel;
        } catch (...) {
            return ModalResultCancel;
        }
    }

    int RunFileChoice(const WChar* path) override
    {
        try {
            CDlgFileChoice dialog;
            dialog.SetFilePath(path ? WString(path) : WString());
            const int result = dialog.DoModal();
            if (result == kDialogNotShown)
                return CommandLineDialogs().RunFileChoice(path);
            return result == FileChoiceOverwrite || result == FileChoiceAppend ? result : FileChoiceCancel;
        } catch (...) {
            return FileChoiceCancel;
        }
    }
};

} // namespace

DialogFactory& DefaultDialogs()
{
    static ModuleDialogs factory;
    return factory;
}
