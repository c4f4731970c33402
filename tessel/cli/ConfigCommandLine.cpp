// "tessel config import|export [FILE]": configuration strings without the dialogs.

#include "tessel/cli/CommandLineParts.h"

namespace tessel {

FinishParsing AddConfigCommand(CLI::App& app, Command& command)
{
    ConfigRequest& request = command.config;
    CLI::App* config =
        app.add_subcommand("config", "Print a configuration string, composed from options, as the engine writes it");
    config->require_subcommand(1);
    CLI::App* importConfig = config->add_subcommand("import", "The import configuration");
    importConfig->add_option("FILE", request.file, "The text file the configuration names")->type_name("FILE");
    AddImportConfigOptions(*importConfig, request.importConfig);
    CLI::App* exportConfig = config->add_subcommand("export", "The export configuration");
    exportConfig->add_option("FILE", request.file, "The text file the configuration names")->type_name("FILE");
    AddExportConfigOptions(*exportConfig, request.exportConfigChoice);

    return [importConfig, exportConfig, &command] {
        if (importConfig->parsed()) {
            command.name = CommandName::ConfigImport;
        } else if (exportConfig->parsed()) {
            command.name = CommandName::ConfigExport;
            command.config.exportConfig = true;
        }
    };
}

} // namespace tessel
