#pragma once
// The command line's pieces, one per command family. Each Add... declares its options once,
// parsing their values straight into the request; the returned function runs once parsing has
// finished, naming the command and checking the rules that weigh options against each other.

#include "tessel/cli/CommandLine.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace tessel {

using FinishParsing = std::function<void()>;

FinishParsing AddImportCommand(CLI::App& app, Command& command);
FinishParsing AddExportCommand(CLI::App& app, Command& command);
FinishParsing AddConfigCommand(CLI::App& app, Command& command);
FinishParsing AddInformationCommands(CLI::App& app, Command& command);

// The options that compose a configuration, shared by the job commands and "config".
void AddImportConfigOptions(CLI::App& command, ImportConfigChoice& choice);
void AddExportConfigOptions(CLI::App& command, ExportConfigChoice& choice);

// A repeated SOURCE=TARGET option, and the repeated TARGET=TRANSFORM option.
void AddBindOption(CLI::App& command, const std::string& name, std::vector<BindOption>& binds, const std::string& help,
                   const std::string& typeName);
void AddTransformOption(CLI::App& command, std::vector<TransformOption>& transforms, const std::string& help);

// --entity-type N: one of the entity types the framework knows (0 none, 1, 2, 16, 32).
void AddEntityTypeOption(CLI::App& command, std::optional<int>& entityType, const std::string& help);

// The KIND argument of import and targets: points, lines, polygons, table or cloud.
void AddImportKindArgument(CLI::App& command, ImportKind& kind);

// An option or argument that takes one of the names of choices (in the order they are listed
// when another is given); the named value goes into target, a Value or std::optional<Value>.
template <typename Value, typename Target>
CLI::Option* AddNamedChoice(CLI::App& command, const std::string& name, const std::string& help,
                            const std::vector<std::pair<std::string, Value>>& choices, Target& target)
{
    std::vector<std::string> names;
    for (const auto& choice : choices)
        names.push_back(choice.first);
    return command
        .add_option_function<std::string>(
            name,
            [&choices, &target](const std::string& chosen) {
                for (const auto& choice : choices) {
                    if (choice.first == chosen)
                        target = choice.second;
                }
            },
            help)
        ->type_name(name)
        ->check(CLI::IsMember(names));
}

// A usage error for the first of options that was given: "--OPTION does not apply to WHAT".
void RejectIfGiven(const CLI::App& command, std::initializer_list<const char*> options, const std::string& what);

} // namespace tessel
