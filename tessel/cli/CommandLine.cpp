#include "tessel/cli/CommandLine.h"

#include "tessel/cli/CommandLineParts.h"
#include "tessel/core/AppError.h"

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

std::optional<Command> ParseCommandLine(int argc, const char* const* argv, std::ostream& out)
{
    Command command;
    CLI::App app("Imports surveyors' text files through the VeltoXTessel module and exports them back to text.",
                 "tessel");
    // Options are --name on every system: on Windows a path such as /data/survey.txt (the
    // current drive's root, or the Unix file system under Wine) is a file, not an option.
    app.allow_windows_style_options(false);
    app.fallthrough();
    app.require_subcommand(1);
    app.set_version_flag("--version", kVersion);
    app.add_flag("-q,--quiet", command.global.quiet, "No progress bar and no summary line");
    app.add_flag("--no-dialogs", command.global.noDialogs,
                 "Never show the module's dialogs (they appear only where there is a display)");
    app.add_option("--codepage", command.global.codePage,
                   "The ANSI code page of files and configurations (default: 1252)")
        ->type_name("N");
    app.add_option("--module", command.global.modulePath,
                   "The module to load (default: TESSEL_MODULE, or beside tessel)")
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
    for (const FinishParsing& finish : finishers)
        finish();
    return command;
}

} // namespace tessel
