#include "tessel/jobs/ImportLayout.h"

#include "host/Utf8.h"
#include "import/ImportTxtConfiguration.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/ConfigDraft.h"
#include "ui/PresetDetect.h"
#include "ui/UserPresets.h"

#include <algorithm>

namespace tessel {
namespace {

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

std::string NamesOf(const std::vector<SurveyPreset>& presets)
{
    std::string names;
    for (const SurveyPreset& preset : presets)
        names += (names.empty() ? "" : ", ") + ToUtf8(preset.name);
    return names;
}

std::string Describe(const DetectCandidate& candidate)
{
    std::string text = ToUtf8(candidate.preset->name) + " (" + ToUtf8(DelimiterName(candidate.delimiter));
    if (candidate.headerLines > 0)
        text += ", names line";
    return text + ")";
}

// The comment markers the import will use: those of --config, or --comments ("#" by default).
WString CommentsOf(const ImportRequest& request)
{
    if (!request.config.IsComposed()) {
        ImportTxtConfiguration configuration;
        configuration.Parse(ReadConfigurationFile("--config", *request.config.configFile).c_str());
        return configuration.GetComments();
    }
    return FromUtf8(request.config.comments.value_or("#"));
}

std::vector<DetectLine> PreviewLines(const ImportRequest& request, std::size_t maxLines)
{
    std::vector<DetectLine> lines;
    if (!ReadDetectLines(FromUtf8(request.file), CommentsOf(request), lines, maxLines))
        throw UsageError("cannot read '" + request.file + "'");
    return lines;
}

// Fills the request as the candidate's configuration: delimiters, columns, header lines (a
// given --header-lines wins), and the preset's binds under the candidate's column names. A
// given --bind wins: a preset bind to the same target is left out.
void Apply(const DetectCandidate& candidate, ImportRequest& request)
{
    ImportTxtConfiguration configuration;
    ApplyCandidate(candidate, configuration);
    WString delimiters;
    for (const WString& delimiter : configuration.GetDelimiters())
        delimiters += delimiter;
    request.config.delimiters = ToUtf8(delimiters);
    if (!request.config.headerLines)
        request.config.headerLines = configuration.GetHeaderLines();
    request.config.columns.clear();
    std::vector<BindOption> binds;
    for (std::size_t i = 0; i < configuration.GetColumns().size(); ++i) {
        const auto& column = configuration.GetColumns()[i];
        request.config.columns.push_back({ToUtf8(column->GetName()), static_cast<ColumnTypeCode>(column->GetType()), true});
        const std::string target = ToUtf8(candidate.preset->columns[i].target);
        const bool overridden = std::any_of(request.binds.begin(), request.binds.end(),
                                            [&target](const BindOption& given) { return given.target == target; });
        if (!target.empty() && !overridden)
            binds.push_back({ToUtf8(column->GetName()), target});
    }
    binds.insert(binds.end(), request.binds.begin(), request.binds.end());
    request.binds = std::move(binds);
}

std::string Reasons(const DetectResult& result)
{
    std::string text;
    for (const DetectCandidate* candidate : RejectionsToName(result))
        text += "\n  " + Describe(*candidate) + ": " + ToUtf8(candidate->reason);
    if (const WString unused = UnusedDelimitersNote(result); !unused.empty())
        text += "\n  " + ToUtf8(unused);
    return text;
}

void ChooseAutomatically(ImportRequest& request, const std::vector<SurveyPreset>& presets,
                         const std::function<bool(double, double)>& areaOfUse, std::ostream& err)
{
    const DetectResult result = DetectPresets(PreviewLines(request, 999), presets, areaOfUse);
    if (result.fitting.empty())
        throw UsageError("--preset auto: no preset fits '" + request.file + "':" + Reasons(result));
    if (!result.decided) {
        std::string candidates;
        for (const DetectCandidate& candidate : result.fitting)
            candidates += "\n  " + Describe(candidate);
        throw UsageError("--preset auto: several presets fit '" + request.file + "'" +
                         (result.note.empty() ? std::string() : " (" + ToUtf8(result.note) + ")") +
                         "; choose one with --preset NAME:" + candidates);
    }
    const DetectCandidate& chosen = result.fitting.front();
    err << "tessel: --preset auto chose " << Describe(chosen)
        << (result.note.empty() ? std::string() : "; " + ToUtf8(result.note)) << std::endl;
    Apply(chosen, request);
}

// A named preset: the first of its delimiters that fits the file (names line included);
// where none fits every line, the first that cuts the lines into its columns, else the first.
void ApplyNamed(ImportRequest& request, const SurveyPreset& preset, std::ostream& err)
{
    const DetectCandidate chosen = CandidateOfPreset(PreviewLines(request, 999), preset);
    if (!chosen.fits)
        err << "tessel: warning: --preset " << ToUtf8(preset.name) << " does not fit every line of '" << request.file
            << "' (" << ToUtf8(chosen.reason) << "); it is read with " << ToUtf8(DelimiterName(chosen.delimiter))
            << std::endl;
    Apply(chosen, request);
}

void CheckHeaderLines(const ImportRequest& request)
{
    const int headerLines = request.config.headerLines.value_or(0);
    if (headerLines == 0)
        return;
    const std::size_t found = PreviewLines(request, static_cast<std::size_t>(headerLines) + 1).size();
    if (found < static_cast<std::size_t>(headerLines))
        throw UsageError("--header-lines " + std::to_string(headerLines) + ": '" + request.file + "' has only " +
                         std::to_string(found) + (found == 1 ? " line" : " lines") + " that " +
                         (found == 1 ? "is" : "are") + " not a comment");
}

} // namespace

std::vector<SurveyPreset> KnownPresets(std::ostream& err)
{
    std::vector<SurveyPreset> presets = ShippedPresets();
    const UserPresetList user = ReadUserPresets(UserPresetFolder());
    for (const PresetFileProblem& problem : user.problems)
        err << "tessel: warning: preset " << ToUtf8(DescribePresetProblem(problem)) << "; left out" << std::endl;
    presets.insert(presets.end(), user.presets.begin(), user.presets.end());
    return presets;
}

const SurveyPreset& PresetNamed(const std::vector<SurveyPreset>& presets, const std::string& name, const char* option)
{
    if (const SurveyPreset* preset = FindPreset(presets, FromUtf8(name)))
        return *preset;
    throw UsageError(std::string(option) + ": no preset " + Quoted(name) + " (known: " + NamesOf(presets) + ")");
}

ImportRequest ResolveImportLayout(const ImportRequest& request, const std::function<bool(double, double)>& areaOfUse,
                                  std::ostream& err)
{
    ImportRequest resolved = request;
    if (request.preset) {
        const std::vector<SurveyPreset> presets = KnownPresets(err);
        if (*request.preset == "auto")
            ChooseAutomatically(resolved, presets, areaOfUse, err);
        else
            ApplyNamed(resolved, PresetNamed(presets, *request.preset, "--preset"), err);
    }
    CheckHeaderLines(resolved);
    return resolved;
}

} // namespace tessel
