// "tessel engines", "describe", "targets" and "configure": what the engines say of
// themselves and of configurations.

#include "tessel/cli/CommandLineParts.h"

namespace tessel {
namespace {

CLI::App* AddDescribe(CLI::App& app, DescribeRequest& request)
{
    CLI::App* describe = app.add_subcommand("describe", "Print the engine's description of a configuration");
    describe->add_option("CFG", request.configFile, "A file holding the configuration string")
        ->type_name("CFG.xml")
        ->required();
    describe->add_flag("--node", request.node, "Describe it as the job's secondary (node) configuration");
    describe->add_flag("--import", request.forceImport, "It is an import configuration")
        ->excludes(describe->add_flag("--export", request.forceExport, "It is an export configuration"));
    return describe;
}

CLI::App* AddTargets(CLI::App& app, TargetsRequest& request)
{
    CLI::App* targets = app.add_subcommand("targets", "List the target ids an import job must bind and may not bind");
    AddImportKindArgument(*targets, request.kind);
    AddEntityTypeOption(*targets, request.entityType, "The job's entity type");
    targets->add_flag("--data-only", request.dataOnly, "A job that imports data for existing entities only");
    return targets;
}

CLI::App* AddConfigure(CLI::App& app, ConfigureRequest& request)
{
    static const std::vector<std::pair<std::string, bool>> engines = {{"import", false}, {"export", true}};
    CLI::App* configure = app.add_subcommand(
        "configure", "Open an engine's configuration dialog (needs a display) and print the configuration made");
    AddNamedChoice(*configure, "ENGINE", "import or export", engines, request.exportEngine)->required();
    configure->add_option("FILE", request.file, "import: open the dialog pre-set to this text file")->type_name("FILE");
    configure->add_option("--config", request.configFile, "The configuration to start from")->type_name("CFG.xml");
    configure->add_flag("--node", request.node, "Edit the secondary (node) configuration");
    configure->add_option("-o,--output", request.output, "Write the configuration there (default: standard output)")
        ->type_name("CFG.xml");
    return configure;
}

} // namespace

FinishParsing AddInformationCommands(CLI::App& app, Command& command)
{
    CLI::App* engines = app.add_subcommand("engines", "List the engines the module registered");
    engines->add_flag("-v,--verbose", command.engines.verbose, "Also the engines' capability answers");
    CLI::App* describe = AddDescribe(app, command.describe);
    CLI::App* targets = AddTargets(app, command.targets);
    CLI::App* configure = AddConfigure(app, command.configure);
    CLI::App* presets = app.add_subcommand(
        "presets", "List the survey presets, shipped and the user's own, with their columns and delimiters");

    return [engines, describe, targets, configure, presets, &command] {
        if (presets->parsed())
            command.name = CommandName::Presets;
        if (engines->parsed())
            command.name = CommandName::Engines;
        else if (describe->parsed())
            command.name = CommandName::Describe;
        else if (targets->parsed())
            command.name = CommandName::Targets;
        else if (configure->parsed())
            command.name = CommandName::Configure;
    };
}

} // namespace tessel
