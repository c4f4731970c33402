#include "host/GisUtility.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"
#include "tessel/cli/CommandLine.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"

namespace tessel {

int RunCommand(const Command& command, std::ostream& out)
{
    if (command.global.codePage)
        SelectModuleCodePage(*command.global.codePage);
    refhost::EnableProgressDrawing(!command.global.quiet);
    // Like the CAD application, tessel shows the module's dialogs; the toolkit starts only
    // when one is needed and a display is there.
    CadShim::AllowDialogs(!command.global.noDialogs);
    CadShim::ShowAlertsInMessageBoxes(true);
    ModuleHost module;
    module.Load(ResolveModulePath(command.global.modulePath.value_or("")));

    switch (command.name) {
    case CommandName::Import: return RunImportCommand(module, command.import, command.global);
    case CommandName::Export: return RunExportCommand(module, command.exportJob, command.global);
    case CommandName::ConfigImport:
    case CommandName::ConfigExport: return RunConfigCommand(module, command.config, out);
    case CommandName::Describe: return RunDescribeCommand(module, command.describe, out);
    case CommandName::Configure: return RunConfigureCommand(module, command.configure, out);
    case CommandName::Targets: return RunTargetsCommand(module, command.targets, out);
    case CommandName::Presets: return RunPresetsCommand(out);
    case CommandName::Engines: break;
    }
    return RunEnginesCommand(module, command.engines, out);
}

} // namespace tessel
