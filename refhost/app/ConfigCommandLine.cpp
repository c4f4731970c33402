// "tessel config import|export [FILE]": configuration strings without the dialogs.

#include "refhost/app/CommandLineParts.h"

#include <memory>

namespace tessel {
namespace {

struct ConfigOptions {
    std::string importFile, exportFile;
    CLI::Option *importFileOption, *exportFileOption;
    ImportConfigOptions importConfig;
    ExportConfigOptions exportConfig;
};

} // namespace

FinishParsing AddConfigCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<ConfigOptions>();
    CLI::App* config =
        app.add_subcommand("config", "Print a configuration string, composed from options, as the engine writes it");
    config->require_subcommand(1);
    CLI::App* importConfig = config->add_subcommand("import", "The import configuration");
    options->importFileOption =
        importConfig->add_option("FILE", options->importFile, "The text file the configuration names")
            ->type_name("FILE");
    options->importConfig.Add(*importConfig);
    CLI::App* exportConfig = config->add_subcommand("export", "The export configuration");
    options->exportFileOption =
        exportConfig->add_option("FILE", options->exportFile, "The text file the configuration names")
            ->type_name("FILE");
    options->exportConfig.Add(*exportConfig);

    return [importConfig, exportConfig, options, &command] {
        if (importConfig->parsed()) {
            command.name = CommandName::ConfigImport;
            if (options->importFileOption->count() > 0)
                command.config.file = options->importFile;
            command.config.importConfig = options->importConfig.Finish();
        } else if (exportConfig->parsed()) {
            command.name = CommandName::ConfigExport;
            command.config.exportConfig = true;
            if (options->exportFileOption->count() > 0)
                command.config.file = options->exportFile;
            command.config.exportConfigChoice = options->exportConfig.Finish();
        }
    };
}

} // namespace tessel
