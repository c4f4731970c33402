#include "refhost/app/CommandLine.h"

#include "refhost/app/AppError.h"
#include "refhost/app/CommandLineParts.h"
#include "refhost/app/OptionSyntax.h"

namespace tessel {
namespace {

const char* const kVersion = "tessel 1.0.0 (VeltoXTessel reference host)";

const char* const kFooter = R"(
Exit status: 0 the engine did the job, 1 the job failed (the engine refused, or the output
could not be written), 2 wrong options or unusable input, 3 an error inside the engine.
Run 'tessel COMMAND --help' for the options of a command.)";

// A first word that names no command gets a line that says so and lists the commands.
void RejectUnknownCommand(CLI::App& app, int argc, const char* const* argv)
{
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "--codepage" || word == "--module") {
            ++i;
            continue;
        }
        if (word.empty() || word[0] == '-')
            continue;
        std::string commands;
        for (const CLI::App* command : app.get_subcommands({}))
            commands += (commands.empty() ? "" : ", ") + command->get_name();
        throw UsageError("unknown command '" + word + "' (" + commands + ")");
    }
}

} // namespace

std::vector<BindOption> ParseBindOptions(const char* option, const std::vector<std::string>& values)
{
    std::vector<BindOption> binds;
    for (const std::string& value : values)
        binds.push_back(ParseBindOption(option, value));
    return binds;
}

std::vector<TransformOption> ParseTransformOptions(const std::vector<std::string>& values)
{
    std::vector<TransformOption> transforms;
    for (const std::string& value : values)
        transforms.push_back(ParseTransformOption(value));
    return transforms;
}

void RejectIfGiven(const CLI::Option* option, const std::string& what)
{
    if (option && option->count() > 0)
        throw UsageError(option->get_name() + " does not apply to " + what);
}

const std::vector<std::string>& ImportKindNames()
{
    static const std::vector<std::string> names = {"points", "lines", "polygons", "table", "cloud"};
    return names;
}

ImportKind ImportKindNamed(const std::string& name)
{
    const ImportKind kinds[] = {ImportKind::Points, ImportKind::Lines, ImportKind::Polygons, ImportKind::Table,
                                ImportKind::Cloud};
    for (std::size_t i = 0; i < ImportKindNames().size(); ++i) {
        if (ImportKindNames()[i] == name)
            return kinds[i];
    }
    throw UsageError("unknown kind '" + name + "' (points, lines, polygons, table or cloud)");
}

void CheckEntityType(int type)
{
    if (type != 0 && type != 1 && type != 2 && type != 16 && type != 32)
        throw UsageError("--entity-type: " + std::to_string(type) +
                         " is not an entity type (0 none, 1 points, 2 lines, 16 polygons, 32 nodes)");
}

const char kStrictHelp[] = "Make every warning an error: an unknown bind source, a configuration without a cfg "
                           "element, a composed configuration that reads back differently (and, for an import, a "
                           "job that does not validate)";

void ImportConfigOptions::Add(CLI::App& command)
{
    config = command
                 .add_option("--config", configFile,
                             "Import configuration string, as the engine stores it (instead of the options below)")
                 ->type_name("CFG.xml");
    composing = {
        command
            .add_option("--delimiters", delimiters,
                        "Delimiter characters, each one separates fields (\\t tab, \\s blank; default: blank)")
            ->type_name("CHARS"),
        command
            .add_option("--comments", comments,
                        "Characters that mark a comment line when it starts with one (default: #; '' for none)")
            ->type_name("CHARS"),
        command.add_option("--fixed", fixed, "Fixed-width fields: positions where the 2nd, 3rd, ... field begin")
            ->type_name("POS,..."),
        command
            .add_option("--column", columns, "A column of the file, in order (repeat): NAME[:real|text|integer][:off]")
            ->type_name("NAME[:TYPE][:off]")
            ->allow_extra_args(false),
    };
    for (CLI::Option* option : composing)
        option->excludes(config);
    command.add_flag("--strict", strict, kStrictHelp);
}

ImportConfigChoice ImportConfigOptions::Finish() const
{
    ImportConfigChoice choice;
    if (config->count() > 0)
        choice.configFile = configFile;
    if (composing[0]->count() > 0)
        choice.delimiters = ResolveEscapes("--delimiters", delimiters);
    if (composing[1]->count() > 0)
        choice.comments = ResolveEscapes("--comments", comments);
    if (composing[2]->count() > 0)
        choice.fixedPositions = ParsePositions(fixed);
    for (const std::string& column : columns)
        choice.columns.push_back(ParseColumnOption(column));
    choice.strict = strict;
    return choice;
}

void ExportConfigOptions::Add(CLI::App& command)
{
    config = command
                 .add_option("--config", configFile,
                             "Export configuration string, as the engine stores it (instead of the options below)")
                 ->type_name("CFG.xml");
    header = command.add_flag("--header", "Write a header line with the target field names (the default)");
    noHeader = command.add_flag("--no-header", "Write no header line");
    header->excludes(noHeader);
    composing = {
        command.add_option("--delimiter", delimiter, "Text between two fields (\\t tab, \\s blank; default: tab)")
            ->type_name("TEXT"),
        command.add_option("--comment", comment, "Text that starts the header line (default: #)")->type_name("TEXT"),
        header,
        noHeader,
        command.add_flag("--utf16", utf16, "Write UTF-16LE with a byte-order mark instead of the ANSI code page"),
    };
    for (CLI::Option* option : composing)
        option->excludes(config);
    command.add_flag("--strict", strict, kStrictHelp);
}

ExportConfigChoice ExportConfigOptions::Finish() const
{
    ExportConfigChoice choice;
    if (config->count() > 0)
        choice.configFile = configFile;
    if (composing[0]->count() > 0)
        choice.delimiter = ResolveEscapes("--delimiter", delimiter);
    if (composing[1]->count() > 0)
        choice.comment = ResolveEscapes("--comment", comment);
    if (header->count() > 0 || noHeader->count() > 0)
        choice.header = header->count() > 0;
    choice.utf16 = utf16;
    choice.strict = strict;
    return choice;
}

std::optional<Command> ParseCommandLine(int argc, const char* const* argv, std::ostream& out)
{
    Command command;
    CLI::App app("Imports surveyors' text files through the VeltoXTessel module and exports them back to text.",
                 "tessel");
    app.fallthrough();
    app.require_subcommand(1);
    app.set_version_flag("--version", kVersion);
    app.add_flag("-q,--quiet", command.global.quiet, "No progress bar and no summary line");
    app.add_flag("--no-dialogs", command.global.noDialogs,
                 "Never show the module's dialogs (they appear only where there is a display)");
    unsigned codePage = 0;
    CLI::Option* codePageOption =
        app.add_option("--codepage", codePage, "The ANSI code page of files and configurations (default: 1252)")
            ->type_name("N");
    std::string modulePath;
    CLI::Option* moduleOption =
        app.add_option("--module", modulePath, "The module to load (default: TESSEL_MODULE, or beside tessel)")
            ->type_name("PATH");

    std::vector<FinishParsing> finishers = {
        AddImportCommand(app, command),
        AddExportCommand(app, command),
        AddConfigCommand(app, command),
        AddInformationCommands(app, command),
    };
    app.footer(kFooter);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        app.exit(help, out, out);
        return std::nullopt;
    } catch (const CLI::CallForAllHelp& help) {
        app.exit(help, out, out);
        return std::nullopt;
    } catch (const CLI::CallForVersion&) {
        out << kVersion << "\n";
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        if (app.get_subcommands().empty())
            RejectUnknownCommand(app, argc, argv);
        std::string message = error.what();
        while (!message.empty() && message.back() == '\n')
            message.pop_back();
        throw UsageError(message);
    }
    if (codePageOption->count() > 0)
        command.global.codePage = codePage;
    if (moduleOption->count() > 0)
        command.global.modulePath = modulePath;
    for (const FinishParsing& finish : finishers)
        finish();
    return command;
}

} // namespace tessel
