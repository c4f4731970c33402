#pragma once
// The commands, each run against the loaded module. Each returns the exit status; failures
// it finds itself leave as AppError, failures inside an engine as EngineError.

#include "tessel/core/Requests.h"
#include "tessel/jobs/ModuleHost.h"

#include <chrono>
#include <ostream>
#include <string>

namespace tessel {

int RunImportCommand(ModuleHost& module, const ImportRequest& request, const GlobalOptions& global);
int RunExportCommand(ModuleHost& module, const ExportRequest& request, const GlobalOptions& global);
int RunConfigCommand(ModuleHost& module, const ConfigRequest& request, std::ostream& out);
int RunDescribeCommand(ModuleHost& module, const DescribeRequest& request, std::ostream& out);
int RunConfigureCommand(ModuleHost& module, const ConfigureRequest& request, std::ostream& out);
int RunEnginesCommand(ModuleHost& module, const EnginesRequest& request, std::ostream& out);
int RunTargetsCommand(ModuleHost& module, const TargetsRequest& request, std::ostream& out);
int RunPresetsCommand(std::ostream& out);

// "12,345,678 points", "1 point": counts in summary lines.
std::string Counted(std::size_t count, const std::string& singular, const std::string& plural);

// A job's summary line on standard error, "tessel: WHAT in 1.23 s" (time since started),
// unless --quiet.
void PrintSummary(const GlobalOptions& global, std::chrono::steady_clock::time_point started, const std::string& what);

} // namespace tessel
