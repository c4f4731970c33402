// "tessel presets": the survey presets, shipped and the user's own, with their columns.

#include "host/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ImportLayout.h"
#include "ui/ColumnTypes.h"
#include "ui/UserPresets.h"

#include <iostream>

namespace tessel {
namespace {

std::string TypeName(int code)
{
    std::string name = ToUtf8(ColumnTypeName(ColumnTypeChoiceOf(code)));
    for (char& c : name)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    return name;
}

} // namespace

int RunPresetsCommand(std::ostream& out)
{
    for (const SurveyPreset& preset : KnownPresets(std::cerr)) {
        out << ToUtf8(preset.name) << (preset.Shipped() ? "" : " (" + ToUtf8(preset.file) + ")") << ":";
        for (const PresetColumn& column : preset.columns) {
            out << " " << ToUtf8(column.name) << ":" << TypeName(column.type);
            if (!column.target.empty())
                out << "=" << ToUtf8(column.target);
        }
        out << "; delimiters:";
        for (const WString& delimiter : preset.delimiters)
            out << " " << ToUtf8(DelimiterName(delimiter));
        if (preset.headerLines > 0)
            out << "; header lines: " << preset.headerLines;
        out << "\n";
    }
    const WString folder = UserPresetFolder();
    out << "user presets: " << (folder.empty() ? std::string("no settings folder") : ToUtf8(folder)) << "\n";
    return ExitSuccess;
}

} // namespace tessel
