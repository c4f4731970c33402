#pragma once
// Survey point-file presets: named column layouts (names, types, the targets an import of
// points binds them to) with the delimiters each is tried with. The shipped ones are data
// (presets/survey-presets.txt) compiled into the module; the user's own are ordinary import
// configuration files (UserPresets.h). Applying one fills an ordinary import configuration,
// exactly as a user setting delimiters and columns would, so nothing new is stored.

#include "host/Text.h"
#include "import/ImportTxtConfiguration.h"

#include <vector>

struct PresetColumn {
    WString name;
    int type = 0;   // the configuration's type code: 5001 real, 5005 text, 5010 integer
    WString target; // the bind target of an import of points; empty: none
};

struct SurveyPreset {
    WString name;
    std::vector<PresetColumn> columns;
    // The delimiters the preset is tried with, each one alternative in order of preference;
    // an alternative of several characters (a user preset's) uses them all at once.
    DelimiterList delimiters;
    // A user preset's own settings, taken from its file; a shipped one leaves them empty/0.
    WString file; // the file it came from; empty for a shipped preset
    WString comments;
    int headerLines = 0;

    bool Shipped() const { return file.empty(); }
};

// Reads a preset table in the shipped data's form: '#' lines are comments, a "delimiters"
// line lists the delimiters (\s blank, \t tab) every preset is tried with, and each other
// non-empty line is NAME COLUMN:TYPE[=TARGET]... (TYPE text, real or integer). Returns false
// and names the first bad line in problem; presets then holds those read before it.
bool ReadPresetTable(const WString& text, std::vector<SurveyPreset>& presets, WString& problem);

// The presets shipped with the module, in the order of their table.
const std::vector<SurveyPreset>& ShippedPresets();

// The preset of that name, ignoring ASCII letter case; null when none has it.
const SurveyPreset* FindPreset(const std::vector<SurveyPreset>& presets, const WString& name);

// "comma", "blank", "tab", "semicolon", or the character itself; several joined by "+".
WString DelimiterName(const WString& delimiter);

// The configuration's delimiter list for one alternative: one entry per character.
DelimiterList DelimitersOf(const WString& alternative);

// Fills the configuration as a user choosing this layout would: delimited mode with the one
// delimiter, the preset's columns numbered from 0 and all imported, its comments and header
// lines where it has its own (a shipped preset leaves those as they are). The file path
// stays.
void ApplyPreset(const SurveyPreset& preset, const WString& delimiter, ImportTxtConfiguration& configuration);

// The bind target the shipped presets give a column of that name (ignoring ASCII case), or
// empty: what a user preset's columns are bound to.
WString TargetOfColumnName(const WString& name);
