#pragma once
// The command line's pieces, one per command family. Each Add... declares a command's
// options on its CLI11 app and returns the object that turns what was given into a request
// once parsing has finished (where the request's own rules are checked).

#include "refhost/app/CommandLine.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <string>
#include <vector>

namespace tessel {

using FinishParsing = std::function<void()>;

// The options that compose an import configuration, shared by "import" and "config import".
struct ImportConfigOptions {
    std::string configFile, delimiters, comments, fixed;
    std::vector<std::string> columns;
    bool strict = false;
    CLI::Option* config = nullptr;
    std::vector<CLI::Option*> composing;

    void Add(CLI::App& command);
    ImportConfigChoice Finish() const;
};

struct ExportConfigOptions {
    std::string configFile, delimiter, comment;
    bool utf16 = false;
    bool strict = false;
    CLI::Option* config = nullptr;
    CLI::Option* header = nullptr;
    CLI::Option* noHeader = nullptr;
    std::vector<CLI::Option*> composing;

    void Add(CLI::App& command);
    ExportConfigChoice Finish() const;
};

FinishParsing AddImportCommand(CLI::App& app, Command& command);
FinishParsing AddExportCommand(CLI::App& app, Command& command);
FinishParsing AddConfigCommand(CLI::App& app, Command& command);
FinishParsing AddInformationCommands(CLI::App& app, Command& command);

// Binds and transforms as repeated options give them.
std::vector<BindOption> ParseBindOptions(const char* option, const std::vector<std::string>& values);
std::vector<TransformOption> ParseTransformOptions(const std::vector<std::string>& values);

// A usage error unless the option was left out: "--OPTION does not apply to WHAT".
void RejectIfGiven(const CLI::Option* option, const std::string& what);

// The import kinds by name: points, lines, polygons, table, cloud.
const std::vector<std::string>& ImportKindNames();
ImportKind ImportKindNamed(const std::string& name);

// Entity types the framework knows: 0 (none), 1, 2, 16, 32.
void CheckEntityType(int type);

} // namespace tessel
