// Options that several commands share, and the checks they make.

#include "tessel/cli/CommandLineParts.h"

#include "tessel/core/AppError.h"
#include "tessel/core/OptionSyntax.h"

namespace tessel {
namespace {

const char kStrictHelp[] = "Make every warning an error: an unknown bind source, a configuration without a cfg "
                           "element, a composed configuration that reads back differently (and, for an import, a "
                           "job that does not validate)";

// An option whose text has escapes ("\t", "\s"), resolved into target.
CLI::Option* AddEscapedOption(CLI::App& command, const std::string& name, std::optional<std::string>& target,
                              const std::string& help)
{
    return command.add_option_function<std::string>(
        name, [name, &target](const std::string& value) { target = ResolveEscapes(name, value); }, help);
}

// --config: a stored configuration instead of the options that compose one.
CLI::Option* AddConfigFileOption(CLI::App& command, std::optional<std::string>& file, const std::string& engine)
{
    return command
        .add_option("--config", file,
                    engine + " configuration string, as the engine stores it (instead of the options below)")
        ->type_name("CFG.xml");
}

} // namespace

void AddImportConfigOptions(CLI::App& command, ImportConfigChoice& choice)
{
    CLI::Option* config = AddConfigFileOption(command, choice.configFile, "Import");
    AddEscapedOption(command, "--delimiters", choice.delimiters,
                     "Delimiter characters, each one separates fields (\\t tab, \\s blank; default: blank)")
        ->type_name("CHARS")
        ->excludes(config);
    AddEscapedOption(command, "--comments", choice.comments,
                     "Characters that mark a comment line when it starts with one (default: #; '' for none)")
        ->type_name("CHARS")
        ->excludes(config);
    command
        .add_option_function<std::string>(
            "--fixed", [&choice](const std::string& value) { choice.fixedPositions = ParsePositions(value); },
            "Fixed-width fields: positions where the 2nd, 3rd, ... field begin")
        ->type_name("POS,...")
        ->excludes(config);
    command
        .add_option_function<std::vector<std::string>>(
            "--column",
            [&choice](const std::vector<std::string>& columns) {
                for (const std::string& column : columns)
                    choice.columns.push_back(ParseColumnOption(column));
            },
            "A column of the file, in order (repeat): NAME[:real|text|integer][:off]")
        ->type_name("NAME[:TYPE][:off]")
        ->allow_extra_args(false)
        ->excludes(config);
    command
        .add_option_function<std::string>(
            "--header-lines", [&choice](const std::string& value) { choice.headerLines = ParseHeaderLines(value); },
            "Lines of column names at the start of the file (not comments), which the import skips")
        ->type_name("N");
    command.add_flag("--strict", choice.strict, kStrictHelp);
}

void AddExportConfigOptions(CLI::App& command, ExportConfigChoice& choice)
{
    CLI::Option* config = AddConfigFileOption(command, choice.configFile, "Export");
    CLI::Option* header = command.add_flag_callback(
        "--header", [&choice] { choice.header = true; },
        "Write a header line with the target field names (the default)");
    CLI::Option* noHeader = command.add_flag_callback(
        "--no-header", [&choice] { choice.header = false; }, "Write no header line");
    header->excludes(noHeader);
    for (CLI::Option* composing :
         {AddEscapedOption(command, "--delimiter", choice.delimiter,
                           "Text between two fields (\\t tab, \\s blank; default: tab)")
              ->type_name("TEXT"),
          AddEscapedOption(command, "--comment", choice.comment, "Text that starts the header line (default: #)")
              ->type_name("TEXT"),
          header, noHeader,
          command.add_flag("--utf16", choice.utf16,
                           "Write UTF-16LE with a byte-order mark instead of the ANSI code page")})
        composing->excludes(config);
    command.add_flag("--strict", choice.strict, kStrictHelp);
}

void AddBindOption(CLI::App& command, const std::string& name, std::vector<BindOption>& binds, const std::string& help,
                   const std::string& typeName)
{
    command
        .add_option_function<std::vector<std::string>>(
            name,
            [name, &binds](const std::vector<std::string>& values) {
                for (const std::string& value : values)
                    binds.push_back(ParseBindOption(name, value));
            },
            help)
        ->type_name(typeName)
        ->allow_extra_args(false);
}

void AddTransformOption(CLI::App& command, std::vector<TransformOption>& transforms, const std::string& help)
{
    command
        .add_option_function<std::vector<std::string>>(
            "--transform",
            [&transforms](const std::vector<std::string>& values) {
                for (const std::string& value : values)
                    transforms.push_back(ParseTransformOption(value));
            },
            help)
        ->type_name("TARGET=NAME")
        ->allow_extra_args(false);
}

void AddEntityTypeOption(CLI::App& command, std::optional<int>& entityType, const std::string& help)
{
    command
        .add_option_function<int>(
            "--entity-type",
            [&entityType](int type) {
                if (type != 0 && type != 1 && type != 2 && type != 16 && type != 32)
                    throw UsageError("--entity-type: " + std::to_string(type) +
                                     " is not an entity type (0 none, 1 points, 2 lines, 16 polygons, 32 nodes)");
                entityType = type;
            },
            help)
        ->type_name("N");
}

void AddImportKindArgument(CLI::App& command, ImportKind& kind)
{
    static const std::vector<std::pair<std::string, ImportKind>> kinds = {{"points", ImportKind::Points},
                                                                          {"lines", ImportKind::Lines},
                                                                          {"polygons", ImportKind::Polygons},
                                                                          {"table", ImportKind::Table},
                                                                          {"cloud", ImportKind::Cloud}};
    AddNamedChoice(command, "KIND", "points, lines, polygons, table or cloud", kinds, kind)->required();
}

void RejectIfGiven(const CLI::App& command, std::initializer_list<const char*> options, const std::string& what)
{
    for (const char* option : options) {
        if (command.count(option) > 0)
            throw UsageError(std::string(option) + " does not apply to " + what);
    }
}

} // namespace tessel
