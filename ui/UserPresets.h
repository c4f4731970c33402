#pragma once
// The user's own survey presets: one ordinary import configuration file per preset in the
// user's settings folder (Platform::UserSettingsFolder()/presets), named after the preset.
// They are listed after the shipped ones; their columns are bound as the shipped columns of
// the same name are.

#include "host/Text.h"
#include "import/ImportTxtConfiguration.h"
#include "ui/SurveyPresets.h"

#include <vector>

// The folder the user's presets are in; empty when the system names no settings folder.
WString UserPresetFolder();

struct PresetFileProblem {
    enum class Kind { Unreadable, NotAConfiguration, NotDelimited };
    WString file;
    Kind kind;
};

struct UserPresetList {
    std::vector<SurveyPreset> presets;       // by file name
    std::vector<PresetFileProblem> problems; // files left out of the list
};

// Reads every file of the folder (none when it does not exist). A file that does not read,
// holds no import configuration (no cfg element) or a fixed-width one is left out with a
// problem naming it. The preset's name is the file's name without its extension.
UserPresetList ReadUserPresets(const WString& folder);

// The preset a stored configuration makes: its delimiters as the ones it is tried with (all
// of them together: a configuration's delimiters work as one), its columns, comments and
// header lines.
SurveyPreset PresetOfConfiguration(const WString& name, const WString& file, const ImportTxtConfiguration& configuration);

// Writes the configuration (without its file path) as the preset NAME.xml in the folder,
// making the folder first; UTF-8 with a byte-order mark, written beside and put in place whole
// (a preset saved over stays as it was when the save fails). Returns the file's path, or empty
// when the name cannot be a file name (empty, a path separator, a leading '.') or the file
// cannot be written.
WString SaveUserPreset(const WString& folder, const WString& name, ImportTxtConfiguration configuration);

// The text of a problem for people: "FILE: REASON".
WString DescribePresetProblem(const PresetFileProblem& problem);
