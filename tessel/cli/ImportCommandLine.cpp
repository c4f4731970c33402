// "tessel import KIND FILE": options of an import job and their rules. Each option is
// declared once and parsed straight into the request; rules that weigh several options
// against each other run once parsing has finished.

#include "tessel/cli/CommandLineParts.h"
#include "tessel/core/AppError.h"
#include "tessel/core/OptionSyntax.h"

namespace tessel {
namespace {

const std::vector<std::pair<std::string, OutputFormat>> kFormats = {
    {"jsonl", OutputFormat::JsonLines}, {"geojson", OutputFormat::GeoJson}, {"csv", OutputFormat::Csv},
    {"gpkg", OutputFormat::GeoPackage}, {"fgb", OutputFormat::FlatGeobuf},  {"shp", OutputFormat::Shapefile}};

void CheckTableOptions(const CLI::App& import, const ImportRequest& request)
{
    RejectIfGiven(import,
                  {"--bind", "--node-bind", "--transform", "--filter", "--secondary", "--section-nodes", "--data-only",
                   "--entity-type", "--node-config"},
                  "'import table' (a row holds every column; no binds, no job)");
    int variants = 0;
    for (const char* option : {"--max-lines", "--keys", "--key-value"})
        variants += import.count(option) > 0 ? 1 : 0;
    if (variants > 1)
        throw UsageError("choose one of --max-lines, --keys and --key-value");
    if (request.keyIndex < 0 && request.tableVariant != TableVariant::AllRows)
        throw UsageError("--key-index: the key field index cannot be negative");
}

void CheckEntityOptions(const CLI::App& import, const ImportRequest& request)
{
    RejectIfGiven(import, {"--max-lines", "--keys", "--key-value", "--key-index"},
                  "this kind (it selects rows of 'import table')");
    if (request.kind != ImportKind::Points) {
        RejectIfGiven(import, {"--filter"}, "this kind (only 'import points' filters positions)");
        RejectIfGiven(import, {"--secondary"}, "this kind (only 'import points' reads the secondary side)");
    }
    if (request.secondary && request.nodeBinds.empty())
        throw UsageError("--secondary reads the secondary binds: give them with --node-bind");
}

void AddBindOptions(CLI::App& import, ImportRequest& request)
{
    AddBindOption(import, "--bind", request.binds,
                  "Bind a column to a target, in order (repeat): COLUMN=TARGET or NAME; targets: ENTITY_NAME, "
                  "NODE_COORDINATE_X/Y, NODE_X/Y, NODE_S/E, or any attribute name",
                  "COLUMN=TARGET");
    AddTransformOption(import, request.transforms,
                       "Transform of the binds to TARGET (repeat): TARGET=upper|lower|trim|null|text|real|integer");
    import
        .add_option("--node-config", request.nodeConfigFile,
                    "Secondary (node) configuration string (default: the "
                    "main one)")
        ->type_name("CFG.xml");
    AddBindOption(import, "--node-bind", request.nodeBinds, "A secondary (node) bind, in order (repeat)",
                  "COLUMN=TARGET");
}

void AddJobOptions(CLI::App& import, ImportRequest& request)
{
    AddEntityTypeOption(import, request.entityType,
                        "The job's entity type (default: points and cloud 1, lines 2, polygons 16)");
    import.add_flag("--data-only", request.dataOnly, "The job imports data for existing entities only");
    import.add_flag("--section-nodes", request.sectionNodes, "The job also reads section nodes (secondary side)");
    import.add_flag("--secondary", request.secondary,
                    "points: read the secondary configuration and binds (nodes as points)");
    import
        .add_option_function<std::string>(
            "--filter", [&request](const std::string& value) { request.filter = ParseFilter(value);
},
            "points: keep only positions in XMIN,YMIN,XMAX,YMAX")
        ->type_name("XMIN,YMIN,XMAX,YMAX");
} // namespace

void AddTableOptions(CLI::App& import, ImportRequest& request)
{
    import.add_option("--max-lines", request.maxLines, "table: read at most N lines, comments included (default: all)")
        ->type_name("N");
    import
        .add_option_function<std::vector<std::string>>(
            "--keys",
            [&request](const std::vector<std::string>& keys) {
                request.tableVariant = TableVariant::LinkedKeys;
    request.keys = keys;
},
            "table: only rows whose key field, in capitals, is one of these")
        ->type_name("K1,K2,...")
        ->delimiter(',');
    import
        .add_option_function<std::string>(
            "--key-value",
            [&request](const std::string& value) {
                request.tableVariant = TableVariant::KeyValue;
    ParseKeyValue(value, request.keyValue, request.keyValueType);
    } // namespace tessel
,
            "table: rows of an empty key field matching VALUE[:real|text|integer|null]")
        ->type_name("VALUE[:TYPE]");
import.add_option("--key-index", request.keyIndex, "table: the key field's index (default: 0)")->type_name("N");
}

void AddOutputOptions(CLI::App& import, ImportRequest& request)
{
    import
        .add_option("-o,--output", request.output,
                    "Output file: .jsonl, .geojson, .csv, .gpkg (GeoPackage), .fgb (FlatGeobuf) or .shp (Shapefile) "
                    "(default: standard output, JSON Lines)")
        ->type_name("FILE");
    AddNamedChoice(import, "--format", "Output format, whatever the extension", kFormats, request.format)
        ->type_name("FORMAT");
    import
        .add_option("--rejects", request.rejects,
                    "Write each value that did not convert to its column's type as CSV: line, column, text, reason")
        ->type_name("FILE");
    import
        .add_option("--crs", request.crs,
                    "The coordinate system of the positions (EPSG:25833, WKT or a PROJ string), written into every "
                    "format that carries one")
        ->type_name("CRS");
}

} // namespace

FinishParsing AddImportCommand(CLI::App& app, Command& command)
{
    ImportRequest& request = command.import;
    CLI::App* import = app.add_subcommand("import", "Import a text file through the module's IMPORT_TXT engine");
    AddImportKindArgument(*import, request.kind);
    import->add_option("FILE", request.file, "The text file (it becomes the configuration's file path)")
        ->type_name("FILE")
        ->required();
    AddImportConfigOptions(*import, request.config);
    import
        ->add_option("--preset", request.preset,
                     "A survey preset's columns, types and binds (see 'tessel presets'), or 'auto' to find the one "
                     "that fits the file")
        ->type_name("NAME|auto")
        ->excludes("--config")
        ->excludes("--column");
    AddBindOptions(*import, request);
    AddJobOptions(*import, request);
    AddTableOptions(*import, request);
    AddOutputOptions(*import, request);

    return [import, &command] {
        if (!import->parsed())
            return;
        command.name = CommandName::Import;
        if (command.import.kind == ImportKind::Table)
            CheckTableOptions(*import, command.import);
        else
            CheckEntityOptions(*import, command.import);
    };
}

} // namespace tessel
