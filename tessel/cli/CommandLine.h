#pragma once
// The command line of the host application: commands, their options and what they mean.

#include "tessel/core/Requests.h"

#include <optional>
#include <ostream>

namespace tessel {

enum class CommandName { Import, Export, ConfigImport, ConfigExport, Describe, Engines, Targets, Configure, Presets };

struct Command {
    CommandName name = CommandName::Engines;
    GlobalOptions global;
    ImportRequest import;
    ExportRequest exportJob;
    ConfigRequest config;
    DescribeRequest describe;
    EnginesRequest engines;
    TargetsRequest targets;
    ConfigureRequest configure;
    PresetsRequest presets;
};

// Parses the arguments. Help and version texts go to out and give no command. Throws a
// usage AppError, its text one line naming the option, for anything that cannot be run.
std::optional<Command> ParseCommandLine(int argc, const char* const* argv, std::ostream& out);

// Loads the module and runs the command: the one place where a command line becomes work.
int RunCommand(const Command& command, std::ostream& out);

} // namespace tessel
