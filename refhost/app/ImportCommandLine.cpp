// "tessel import KIND FILE": options of an import job and their rules.

#include "refhost/app/AppError.h"
#include "refhost/app/CommandLineParts.h"
#include "refhost/app/OptionSyntax.h"

#include <map>
#include <memory>

namespace tessel {
namespace {

const std::map<std::string, OutputFormat> kFormats = {
    {"jsonl", OutputFormat::JsonLines},  {"geojson", OutputFormat::GeoJson},    {"csv", OutputFormat::Csv},
    {"gpkg", OutputFormat::GeoPackage}, {"fgb", OutputFormat::FlatGeobuf}, {"shp", OutputFormat::Shapefile}};

struct ImportOptions {
    std::string kind, file, nodeConfig, filter, keyValue, output, format, crs;
    std::vector<std::string> binds, nodeBinds, transforms, keys;
    int entityType = 0, maxLines = 0, keyIndex = 0;
    ImportConfigOptions config;
    CLI::Option *nodeConfigOption, *bindOption, *nodeBindOption, *transformOption, *entityTypeOption, *dataOnly,
        *sectionNodes, *secondary, *filterOption, *maxLinesOption, *keysOption, *keyValueOption, *keyIndexOption,
        *formatOption, *outputOption, *crsOption;
};

void CheckTableOptions(const ImportOptions& options)
{
    for (const CLI::Option* option :
         {options.bindOption, options.nodeBindOption, options.transformOption, options.filterOption, options.secondary,
          options.sectionNodes, options.dataOnly, options.entityTypeOption, options.nodeConfigOption})
        RejectIfGiven(option, "'import table' (a row holds every column; no binds, no job)");
    int variants = 0;
    for (const CLI::Option* option : {options.maxLinesOption, options.keysOption, options.keyValueOption})
        variants += option->count() > 0 ? 1 : 0;
    if (variants > 1)
        throw UsageError("choose one of --max-lines, --keys and --key-value");
    if (options.keyIndex < 0 && (options.keysOption->count() > 0 || options.keyValueOption->count() > 0))
        throw UsageError("--key-index: the key field index cannot be negative");
}

void CheckEntityOptions(const ImportOptions& options, ImportKind kind)
{
    for (const CLI::Option* option :
         {options.maxLinesOption, options.keysOption, options.keyValueOption, options.keyIndexOption})
        RejectIfGiven(option, "this kind (it selects rows of 'import table')");
    if (kind != ImportKind::Points) {
        RejectIfGiven(options.filterOption, "this kind (only 'import points' filters positions)");
        RejectIfGiven(options.secondary, "this kind (only 'import points' reads the secondary side)");
    }
    if (options.secondary->count() > 0 && options.nodeBinds.empty())
        throw UsageError("--secondary reads the secondary binds: give them with --node-bind");
}

void Finish(const ImportOptions& options, ImportRequest& request)
{
    request.kind = ImportKindNamed(options.kind);
    request.file = options.file;
    request.config = options.config.Finish();
    if (request.kind == ImportKind::Table)
        CheckTableOptions(options);
    else
        CheckEntityOptions(options, request.kind);

    if (options.nodeConfigOption->count() > 0)
        request.nodeConfigFile = options.nodeConfig;
    request.binds = ParseBindOptions("--bind", options.binds);
    request.nodeBinds = ParseBindOptions("--node-bind", options.nodeBinds);
    request.transforms = ParseTransformOptions(options.transforms);
    if (options.entityTypeOption->count() > 0) {
        CheckEntityType(options.entityType);
        request.entityType = options.entityType;
    }
    request.dataOnly = options.dataOnly->count() > 0;
    request.sectionNodes = options.sectionNodes->count() > 0;
    request.secondary = options.secondary->count() > 0;
    if (options.filterOption->count() > 0)
        request.filter = ParseFilter(options.filter);

    request.maxLines = options.maxLines;
    request.keyIndex = options.keyIndex;
    if (options.keysOption->count() > 0) {
        request.tableVariant = TableVariant::LinkedKeys;
        request.keys = options.keys;
    } else if (options.keyValueOption->count() > 0) {
        request.tableVariant = TableVariant::KeyValue;
        ParseKeyValue(options.keyValue, request.keyValue, request.keyValueType);
    }
    if (options.outputOption->count() > 0)
        request.output = options.output;
    if (options.formatOption->count() > 0)
        request.format = kFormats.at(options.format);
    if (options.crsOption->count() > 0)
        request.crs = options.crs;
}

} // namespace

FinishParsing AddImportCommand(CLI::App& app, Command& command)
{
    auto options = std::make_shared<ImportOptions>();
    CLI::App* import = app.add_subcommand("import", "Import a text file through the module's IMPORT_TXT engine");
    import->add_option("KIND", options->kind, "points, lines, polygons, table or cloud")
        ->type_name("KIND")
        ->required()
        ->check(CLI::IsMember(ImportKindNames()));
    import->add_option("FILE", options->file, "The text file (it becomes the configuration's file path)")
        ->type_name("FILE")
        ->required();

    options->config.Add(*import);
    options->bindOption = import
                              ->add_option("--bind", options->binds,
                                           "Bind a column to a target, in order (repeat): COLUMN=TARGET or NAME; "
                                           "targets: ENTITY_NAME, NODE_COORDINATE_X/Y, NODE_X/Y, NODE_S/E, or "
                                           "any attribute name")
                              ->type_name("COLUMN=TARGET")
                              ->allow_extra_args(false);
    options->transformOption =
        import
            ->add_option("--transform", options->transforms,
                         "Transform of the binds to TARGET (repeat): TARGET=upper|lower|trim|null|text|real|integer")
            ->type_name("TARGET=NAME")
            ->allow_extra_args(false);
    options->nodeConfigOption = import
                                    ->add_option("--node-config", options->nodeConfig,
                                                 "Secondary (node) configuration string (default: the main one)")
                                    ->type_name("CFG.xml");
    options->nodeBindOption =
        import->add_option("--node-bind", options->nodeBinds, "A secondary (node) bind, in order (repeat)")
            ->type_name("COLUMN=TARGET")
            ->allow_extra_args(false);
    options->entityTypeOption =
        import
            ->add_option("--entity-type", options->entityType,
                         "The job's entity type (default: points and cloud 1, lines 2, polygons 16)")
            ->type_name("N");
    options->dataOnly = import->add_flag("--data-only", "The job imports data for existing entities only");
    options->sectionNodes = import->add_flag("--section-nodes", "The job also reads section nodes (secondary side)");
    options->secondary =
        import->add_flag("--secondary", "points: read the secondary configuration and binds (nodes as points)");
    options->filterOption =
        import->add_option("--filter", options->filter, "points: keep only positions in XMIN,YMIN,XMAX,YMAX")
            ->type_name("XMIN,YMIN,XMAX,YMAX");
    options->maxLinesOption = import
                                  ->add_option("--max-lines", options->maxLines,
                                               "table: read at most N lines, comments included (default: all)")
                                  ->type_name("N");
    options->keysOption =
        import->add_option("--keys", options->keys, "table: only rows whose key field, in capitals, is one of these")
            ->type_name("K1,K2,...")
            ->delimiter(',');
    options->keyValueOption =
        import
            ->add_option("--key-value", options->keyValue,
                         "table: rows of an empty key field matching VALUE[:real|text|integer|null]")
            ->type_name("VALUE[:TYPE]");
    options->keyIndexOption =
        import->add_option("--key-index", options->keyIndex, "table: the key field's index (default: 0)")
            ->type_name("N");
    options->outputOption = import
                                ->add_option("-o,--output", options->output,
                                             "Output file: .jsonl, .geojson, .csv, .gpkg (GeoPackage), .fgb "
                                             "(FlatGeobuf) or .shp (Shapefile) (default: standard output, JSON "
                                             "Lines)")
                                ->type_name("FILE");
    options->formatOption = import->add_option("--format", options->format, "Output format, whatever the extension")
                                ->type_name("FORMAT")
                                ->check(CLI::IsMember({"jsonl", "geojson", "csv", "gpkg", "fgb", "shp"}));
    options->crsOption = import
                             ->add_option("--crs", options->crs,
                                          "The coordinate system of the positions (EPSG:25833, WKT or a PROJ "
                                          "string), written into every format that carries one")
                             ->type_name("CRS");

    return [import, options, &command] {
        if (!import->parsed())
            return;
        command.name = CommandName::Import;
        Finish(*options, command.import);
    };
}

} // namespace tessel
