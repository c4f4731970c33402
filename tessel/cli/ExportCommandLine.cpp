// "tessel export KIND INPUT -o OUT": options of an export job, each declared once and parsed
// straight into the request.

#include "tessel/cli/CommandLineParts.h"

namespace tessel {
namespace {

const std::vector<std::pair<std::string, ExportKind>> kKinds = {
    {"points", ExportKind::Points}, {"lines", ExportKind::Lines}, {"polygons", ExportKind::Polygons}};
const std::vector<std::pair<std::string, IfExists>> kAnswers = {
    {"overwrite", IfExists::Overwrite}, {"append", IfExists::Append}, {"cancel", IfExists::Cancel}};
const std::vector<std::pair<std::string, InputFormat>> kInputFormats = {
    {"jsonl", InputFormat::JsonLines}, {"geojson", InputFormat::GeoJson}, {"gdal", InputFormat::Gdal}};

void AddFilesAndBinds(CLI::App& command, ExportRequest& request)
{
    AddNamedChoice(command, "KIND", "points, lines or polygons", kKinds, request.kind)->required();
    command
        .add_option("INPUT", request.input,
                    "JSON Lines or GeoJSON, as 'tessel import' writes them, or any vector "
                    "dataset GDAL reads")
        ->type_name("INPUT")
        ->required();
    command.add_option("-o,--output", request.output, "The text file to write")->type_name("OUT.txt")->required();
    AddExportConfigOptions(command, request.config);
    command
        .add_option("--preset", request.preset,
                    "Write a survey preset's columns in its order (see 'tessel presets'), named as it names them, "
                    "with its first delimiter unless --delimiter is given")
        ->type_name("NAME")
        ->excludes("--config");
    AddBindOption(command, "--bind", request.binds,
                  "An output column, in order (repeat): SOURCE=TARGET or NAME. SOURCE is a field of the input "
                  "(#0, #1, ... for the values of JSON Lines; @x, @y, @z for a point's coordinates); TARGET heads "
                  "the column (default: every field)",
                  "SOURCE=TARGET");
    AddTransformOption(command, request.transforms,
                       "Transform of the values bound to TARGET (repeat): TARGET=upper|lower|trim|null|text|real|"
                       "integer");
    command.add_option("--node-config", request.nodeConfigFile, "Node configuration string (default: the main one)")
        ->type_name("CFG.xml");
    AddBindOption(command, "--node-bind", request.nodeBinds, "A node bind, in order (repeat)", "SOURCE=TARGET");
}

} // namespace

FinishParsing AddExportCommand(CLI::App& app, Command& command)
{
    ExportRequest& request = command.exportJob;
    CLI::App* exportCommand =
        app.add_subcommand("export", "Export records to a text file through the module's EXPORT_TXT engine");
    AddFilesAndBinds(*exportCommand, request);
    AddEntityTypeOption(
        *exportCommand, request.entityType,
        "The job's entity type (default: points 1, lines 2, polygons 16; any other reads the node side)");
    AddNamedChoice(*exportCommand, "--if-exists",
                   "When OUT exists: overwrite, append or cancel (default: ask on the terminal, else cancel)", kAnswers,
                   request.ifExists)
        ->type_name("ANSWER");
    AddNamedChoice(*exportCommand, "--input-format",
                   "jsonl, geojson or gdal (any vector dataset GDAL reads), whatever the extension", kInputFormats,
                   request.inputFormat)
        ->type_name("FORMAT");
    exportCommand->add_option("--layer", request.layer, "The layer of a GIS dataset (default: its only one)")
        ->type_name("NAME");

    return [exportCommand, &command] {
        if (exportCommand->parsed())
            command.name = CommandName::Export;
    };
}

} // namespace tessel
