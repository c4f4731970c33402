#pragma once
// How the engines reach their dialogs. The engines never create a dialog class directly:
// they ask the installed factory, so that a host without a user interface (the command-line
// host, tests) can answer in its own way. Without an installed factory no dialog can be
// shown: configuration dialogs end as cancelled and the file question as "cancel", so an
// existing file is never replaced without somebody having chosen to.

#include "host/ImpexDefinitions.h"
#include "host/Text.h"

// Results of the file choice question.
enum FileChoice { FileChoiceOverwrite = 1, FileChoiceAppend = 2, FileChoiceCancel = 3 };
// Modal results of the configuration dialogs.
enum ModalResult { ModalResultOk = 1, ModalResultCancel = 2 };

class DialogFactory {
public:
    virtual ~DialogFactory();
    // Edits the import configuration (secondary != 0: the node configuration) of the job and
    // stores it on OK; filePath, when not null, pre-sets the file. Returns the modal result.
    virtual int RunImportConfiguration(VeltoGis::ImportExport::CImportDefinition* definition, int secondary,
                                       const WChar* filePath) = 0;
    // Edits the export configuration (secondary != 0: the node configuration); the modal result.
    virtual int RunExportConfiguration(VeltoGis::ImportExport::CExportDefinition* definition, int secondary) = 0;
    // Asks what to do with the existing output file: a FileChoice.
    virtual int RunFileChoice(const WChar* path) = 0;
};

// The file question on the CAD command line, the way the CAD application asks when its
// dialogs are off: the message with the path, then the keywords; nothing entered is cancel.
// Returns a FileChoice.
int AskFileChoiceOnCommandLine(const WChar* path);
// The command-line keyword of a FileChoice: "Overwrite", "Append" or "Cancel".
const WChar* FileChoiceKeyword(int choice);

// The installed factory, else the default one.
DialogFactory& Dialogs();
// Installs a factory (null: back to the default one); returns the previous one, null for
// the default. The caller keeps ownership.
DialogFactory* InstallDialogFactory(DialogFactory* factory);

// The default factory: the module's dialogs where the build has them (falling back to the
// command line whenever the CAD application shows no dialog), else the command line.
DialogFactory& DefaultDialogs();
// Answers on the CAD command line: the file question is asked there, the configuration
// dialogs end as cancelled.
DialogFactory& CommandLineDialogs();
