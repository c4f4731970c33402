#include "ui/UserPresets.h"

#include "host/Messages.h"
#include "host/Utf8.h"
#include "host/WideText.h"
#include "platform/FileReplacement.h"
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
    // Written beside and put in place whole: a preset saved over is never left half-written.
    WString temporary;
    if (!Platform::CreateFileBeside(path.c_str(), &temporary))
        return WString();
    TextFile file;
    bool written = file.Open(temporary, TextFileMode::Write, TextEncoding::Utf8) == TextFileResult::Ok;
    written = written && file.WriteString(nullptr, configuration.ToXml()) == TextFileResult::Ok;
    written = file.Close() == TextFileResult::Ok && written;
    if (written && Platform::ReplaceFileWith(path.c_str(), temporary.c_str()))
        return path;
    Platform::RemoveFile(temporary.c_str());
    return WString();
}

WString DescribePresetProblem(const PresetFileProblem& problem)
{
    switch (problem.kind) {
    case PresetFileProblem::Kind::Unreadable:
        return FormatWide(LoadMessage(MessageId::PresetFileUnreadable), {problem.file});
    case PresetFileProblem::Kind::NotAConfiguration:
        return FormatWide(LoadMessage(MessageId::PresetFileNotConfiguration), {problem.file});
    case PresetFileProblem::Kind::NotDelimited: break;
    }
    return FormatWide(LoadMessage(MessageId::PresetFileFixedWidth), {problem.file});
}
