#include "host/GisUtility.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"
#include "refhost/app/CodePageText.h"
#include "refhost/app/Commands.h"

#include <cstdio>
#include <iostream>

namespace tessel {

std::string Counted(std::size_t count, const std::string& singular, const std::string& plural)
{
    std::string digits = std::to_string(count);
    for (auto at = digits.size(); at > 3; at -= 3)
        digits.insert(at - 3, ",");
    return digits + " " + (count == 1 ? singular : plural);
}

void PrintSummary(const GlobalOptions& global, std::chrono::steady_clock::time_point started, const std::string& what)
{
    if (global.quiet)
        return;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    char time[32];
    std::snprintf(time, sizeof time, "%.2f s", seconds);
    std::cerr << "tessel: " << what << " in " << time << std::endl;
}

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
    case CommandName::Engines: break;
    }
    return RunEnginesCommand(module, command.engines, out);
}

} // namespace tessel
