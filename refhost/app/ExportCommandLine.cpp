// "tessel export KIND INPUT -o OUT": options of an export job and their rules.

#include "refhost/app/AppError.h"
#include "refhost/app/CommandLineParts.h"

#include <map>
#include <memory>

namespace tessel {
namespace {

const std::map<std::string, ExportKind> kKinds = {
    {"points", ExportKind::Points}, {"lines", ExportKind::Lines}, {"polygons", ExportKind::Polygons}};
const std::map<std::string, IfExists> kAnswers = {
    {"overwrite", IfExists::Overwrite}, {"append", IfExists::Append}, {"cancel", IfExists::Cancel}};
const std::map<std::string, InputFormat> kInputFormats = {
    {"jsonl", InputFormat::JsonLines}, {"geojson", InputFormat::GeoJson}, {"gdal", InputFormat::Gdal}};

struct ExportOptions {
    std::string kind, input, output, nodeConfig, ifExists, inputFormat, layer;
    std::vector<std::string> binds, nodeBinds, transforms;
    int entityType = 0;
    ExportConfigOptions config;
    CLI::Option *nodeConfigOption, *entityTypeOption, *ifExistsOption, *inputFormatOption, *layerOption;
};

void Finish(const ExportOptions& options, ExportRequest& request)
{
    request.kind = kKinds.at(options.kind);
    request.input = options.input;
    request.output = options.output;
    request.config = options.config.Finish();
    if (options.nodeConfigOption->count() > 0)
        request.nodeConfigFile = options.nodeConfig;
    request.binds = ParseBindOptions("--bind", options.binds);
    request.nodeBinds = ParseBindOptions("--node-bind", options.nodeBinds);
    request.transforms = ParseTransformOptions(options.transforms);
    if (options.entityTypeOption->count() > 0) {
        CheckEntityType(options.entityType);
        request.entityType = options.entityType;
    }
    if (options.ifExistsOption->count() > 0)
        request.ifExists = kAnswers.at(options.ifExists);
    if (options.inputFormatOption->count() > 0)
        request.inputFormat = kInputFormats.at(options.inputFormat);
    if (options.layerOption->count() > 0)
        request.layer = options.layer;
}

} // namespace

FinishParsing AddExportCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<ExportOptions>();
    CLI::App* exportCommand =
        app.add_subcommand("export", "Export records to a text file through the module's EXPORT_TXT engine");
    exportCommand->add_option("KIND", options->kind, "points, lines or polygons")
        ->type_name("KIND")
        ->required()
        ->check(CLI::IsMember({"points", "lines", "polygons"}));
    exportCommand->add_option("INPUT", options->input, "JSON Lines or GeoJSON, as 'tessel import' writes them")
        ->type_name("INPUT")
        ->required();
    exportCommand->add_option("-o,--output", options->output, "The text file to write")
        ->type_name("OUT.txt")
        ->required();
    options->config.Add(*exportCommand);
    exportCommand
        ->add_option("--bind", options->binds,
                     "An output column, in order (repeat): SOURCE=TARGET or NAME. SOURCE is a GeoJSON property, or "
                     "#0, #1, ... for the values of JSON Lines; TARGET heads the column (default: every field)")
        ->type_name("SOURCE=TARGET")
        ->allow_extra_args(false);
    exportCommand
        ->add_option("--transform", options->transforms,
                     "Transform of the values bound to TARGET (repeat): TARGET=upper|lower|trim|null|text|real|integer")
        ->type_name("TARGET=NAME")
        ->allow_extra_args(false);
    options->nodeConfigOption =
        exportCommand
            ->add_option("--node-config", options->nodeConfig, "Node configuration string (default: the main one)")
            ->type_name("CFG.xml");
    exportCommand->add_option("--node-bind", options->nodeBinds, "A node bind, in order (repeat)")
        ->type_name("SOURCE=TARGET")
        ->allow_extra_args(false);
    options->entityTypeOption =
        exportCommand
            ->add_option(
                "--entity-type", options->entityType,
                "The job's entity type (default: points 1, lines 2, polygons 16; any other reads the node side)")
            ->type_name("N");
    options->ifExistsOption =
        exportCommand
            ->add_option("--if-exists", options->ifExists,
                         "When OUT exists: overwrite, append or cancel (default: ask on the terminal, else cancel)")
            ->type_name("ANSWER")
            ->check(CLI::IsMember({"overwrite", "append", "cancel"}));
    options->inputFormatOption =
        exportCommand
            ->add_option("--input-format", options->inputFormat,
                         "jsonl, geojson or gdal (any vector dataset GDAL reads), whatever the extension")
            ->type_name("FORMAT")
            ->check(CLI::IsMember({"jsonl", "geojson", "gdal"}));
    options->layerOption =
        exportCommand->add_option("--layer", options->layer, "The layer of a GIS dataset (default: its only one)")
            ->type_name("NAME");

    return [exportCommand, options, &command] {
        if (!exportCommand->parsed())
            return;
        command.name = CommandName::Export;
        Finish(*options, command.exportJob);
    };
}

} // namespace tessel
