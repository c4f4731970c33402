// "tessel engines", "describe", "targets" and "configure": what the engines say of
// themselves and of configurations.

#include "refhost/app/CommandLineParts.h"

#include <map>
#include <memory>

namespace tessel {
namespace {

struct InformationOptions {
    std::string describeFile, targetsKind, configureEngine, configureFile, configureConfig, configureOutput;
    int entityType = 0;
    CLI::Option *describeImport, *describeExport, *describeNode, *entityTypeOption, *dataOnly, *configureFileOption,
        *configureConfigOption, *configureNode, *configureOutputOption;
};

} // namespace

FinishParsing AddInformationCommands(CLI::App& app, Command& command)
{
    auto options = std::make_shared<InformationOptions>();

    CLI::App* engines = app.add_subcommand("engines", "List the engines the module registered");
    engines->add_flag("-v,--verbose", command.engines.verbose, "Also the engines' capability answers");

    CLI::App* describe = app.add_subcommand("describe", "Print the engine's description of a configuration");
    describe->add_option("CFG", options->describeFile, "A file holding the configuration string")
        ->type_name("CFG.xml")
        ->required();
    options->describeNode = describe->add_flag("--node", "Describe it as the job's secondary (node) configuration");
    options->describeImport = describe->add_flag("--import", "It is an import configuration");
    options->describeExport = describe->add_flag("--export", "It is an export configuration");
    options->describeImport->excludes(options->describeExport);

    CLI::App* targets = app.add_subcommand("targets", "List the target ids an import job must bind and may not bind");
    targets->add_option("KIND", options->targetsKind, "points, lines, polygons, table or cloud")
        ->type_name("KIND")
        ->required()
        ->check(CLI::IsMember(ImportKindNames()));
    options->entityTypeOption =
        targets->add_option("--entity-type", options->entityType, "The job's entity type")->type_name("N");
    options->dataOnly = targets->add_flag("--data-only", "A job that imports data for existing entities only");

    CLI::App* configure = app.add_subcommand(
        "configure", "Open an engine's configuration dialog (needs a display) and print the configuration made");
    configure->add_option("ENGINE", options->configureEngine, "import or export")
        ->type_name("ENGINE")
        ->required()
        ->check(CLI::IsMember({"import", "export"}));
    options->configureFileOption =
        configure->add_option("FILE", options->configureFile, "import: open the dialog pre-set to this text file")
            ->type_name("FILE");
    options->configureConfigOption =
        configure->add_option("--config", options->configureConfig, "The configuration to start from")
            ->type_name("CFG.xml");
    options->configureNode = configure->add_flag("--node", "Edit the secondary (node) configuration");
    options->configureOutputOption =
        configure->add_option("-o,--output", options->configureOutput, "Write the configuration there (default: "
                                                                       "standard output)")
            ->type_name("CFG.xml");

    return [engines, describe, targets, configure, options, &command] {
        if (engines->parsed()) {
            command.name = CommandName::Engines;
        } else if (describe->parsed()) {
            command.name = CommandName::Describe;
            command.describe.configFile = options->describeFile;
            command.describe.node = options->describeNode->count() > 0;
            command.describe.forceImport = options->describeImport->count() > 0;
            command.describe.forceExport = options->describeExport->count() > 0;
        } else if (targets->parsed()) {
            command.name = CommandName::Targets;
            command.targets.kind = ImportKindNamed(options->targetsKind);
            if (options->entityTypeOption->count() > 0) {
                CheckEntityType(options->entityType);
                command.targets.entityType = options->entityType;
            }
            command.targets.dataOnly = options->dataOnly->count() > 0;
        } else if (configure->parsed()) {
            command.name = CommandName::Configure;
            command.configure.exportEngine = options->configureEngine == "export";
            if (options->configureFileOption->count() > 0)
                command.configure.file = options->configureFile;
            if (options->configureConfigOption->count() > 0)
                command.configure.configFile = options->configureConfig;
            command.configure.node = options->configureNode->count() > 0;
            if (options->configureOutputOption->count() > 0)
                command.configure.output = options->configureOutput;
        }
    };
}

} // namespace tessel
