// Without dialogs the CAD application asks on its command line, as its own commands do when
// dialogs are switched off. The configuration dialogs have no command-line form: they end as
// cancelled, leaving the configuration as it was.

#include "ui/DialogFactory.h"

#include "host/CadPlatform.h"
#include "host/Messages.h"
#include "host/WideText.h"

namespace {

class CommandLineFactory final : public DialogFactory {
public:
    int RunImportConfiguration(VeltoGis::ImportExport::CImportDefinition*, int, const WChar*) override
    {
        return ModalResultCancel;
    }
    int RunExportConfiguration(VeltoGis::ImportExport::CExportDefinition*, int) override { return ModalResultCancel; }
    int RunFileChoice(const WChar* path) override { return AskFileChoiceOnCommandLine(path); }
};

} // namespace

DialogFactory& CommandLineDialogs()
{
    static CommandLineFactory factory;
    return factory;
}

const WChar* FileChoiceKeyword(int choice)
{
    switch (choice) {
    case FileChoiceOverwrite: return WTEXT("Overwrite");
    case FileChoiceAppend: return WTEXT("Append");
    default: return WTEXT("Cancel");
    }
}

int AskFileChoiceOnCommandLine(const WChar* path)
{
    const WString question = FormatWide(LoadMessage(MessageId::FileExistsQuestion), {FormatArg(path)});
    const WString keywords = WString(FileChoiceKeyword(FileChoiceOverwrite)) + WTEXT(" ") +
                             FileChoiceKeyword(FileChoiceAppend) + WTEXT(" ") + FileChoiceKeyword(FileChoiceCancel);
    const WString prompt = question + WTEXT(" [Overwrite/Append/Cancel] <Cancel>: ");
    acedInitGet(0, keywords.c_str());
    WChar answer[32] = {};
    if (acedGetKword(prompt.c_str(), answer, 32) != RTNORM)
        return FileChoiceCancel;
    for (const int choice : {FileChoiceOverwrite, FileChoiceAppend}) {
        if (WString(answer) == FileChoiceKeyword(choice))
            return choice;
    }
    return FileChoiceCancel;
}
