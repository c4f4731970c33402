#include "ui/UserPresets.h"

#include "host/Utf8.h"
#include "platform/UserFolders.h"
#include "textfile/TextFile.h"

namespace {

// A configuration file as tessel and the wizard write one: UTF-8 or UTF-16 by its mark,
// UTF-8 without one; lines joined by line feeds.
bool ReadConfigurationText(const WString& path, WString& text)
{
    TextFile file;
    file.SetRaw(true);
    if (file.Open(path, TextFileMode::Read, TextEncoding::Detect) != TextFileResult::Ok)
        return false;
    const bool unmarked = file.Encoding() == TextEncoding::Ansi;
    WString line;
    while (file.ReadLine(nullptr, line) == TextFileResult::Ok) {
        if (unmarked)
            line = FromUtf8(std::string(line.begin(), line.end()));
        text += line;
        text += WTEXT('\n');
    }
    return !file.ReadFailed();
}

WString Stem(const WString& fileName)
{
    const std::size_t dot = fileName.rfind(WTEXT('.'));
    return dot == WString::npos || dot == 0 ? fileName : fileName.substr(0, dot);
}

bool UsableName(const WString& name)
{
    return !name.empty() && name[0] != '.' && name.find_first_of(WTEXT("/\\:*?\"<>|")) == WString::npos;
}

} // namespace

WString UserPresetFolder()
{
    const WString settings = Platform::UserSettingsFolder();
    return settings.empty() ? settings : settings + Platform::PathSeparator() + WTEXT("presets");
}

SurveyPreset PresetOfConfiguration(const WString& name, const WString& file, const ImportTxtConfiguration& configuration)
{
    SurveyPreset preset;
    preset.name = name;
    preset.file = file;
    WString delimiters;
    for (const WString& delimiter : configuration.GetDelimiters())
        delimiters += delimiter;
    preset.delimiters = {delimiters};
    preset.comments = configuration.GetComments();
    preset.headerLines = configuration.GetHeaderLines();
    for (const auto& column : configuration.GetColumns()) {
        if (column)
            preset.columns.push_back({column->GetName(), column->GetType(), TargetOfColumnName(column->GetName())});
    }
    return preset;
}

UserPresetList ReadUserPresets(const WString& folder)
{
    UserPresetList list;
    if (folder.empty())
        return list;
    for (const WString& name : Platform::FilesInFolder(folder)) {
        const WString path = folder + Platform::PathSeparator() + name;
        WString text;
        if (!ReadConfigurationText(path, text)) {
            list.problems.push_back({path, PresetFileProblem::Kind::Unreadable});
            continue;
        }
        ImportTxtConfiguration configuration;
        if (configuration.Parse(text.c_str()) != 1) {
            list.problems.push_back({path, PresetFileProblem::Kind::NotAConfiguration});
            continue;
        }
        if (configuration.GetMode() != 0) {
            list.problems.push_back({path, PresetFileProblem::Kind::NotDelimited});
            continue;
        }
        list.presets.push_back(PresetOfConfiguration(Stem(name), path, configuration));
    }
    return list;
}

WString SaveUserPreset(const WString& folder, const WString& name, ImportTxtConfiguration configuration)
{
    if (!UsableName(name) || folder.empty() || !Platform::MakeFolders(folder))
        return WString();
    configuration.SetTxtFile(WString());
    const WString path = folder + Platform::PathSeparator() + name + WTEXT(".xml");
    TextFile file;
    if (file.Open(path, TextFileMode::Write, TextEncoding::Utf8) != TextFileResult::Ok)
        return WString();
    const bool written = file.WriteString(nullptr, configuration.ToXml()) == TextFileResult::Ok;
    return file.Close() == TextFileResult::Ok && written ? path : WString();
}

WString DescribePresetProblem(const PresetFileProblem& problem)
{
    switch (problem.kind) {
    case PresetFileProblem::Kind::Unreadable: return problem.file + WTEXT(": the file cannot be read");
    case PresetFileProblem::Kind::NotAConfiguration:
        return problem.file + WTEXT(": not an import configuration (no cfg element)");
    case PresetFileProblem::Kind::NotDelimited: break;
    }
    return problem.file + WTEXT(": a fixed-width configuration, which a preset cannot be");
}
