#include "refhost/CadShimAnswers.h"
#include "host/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/GdalInput.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ExportJob.h"
#include "tessel/jobs/ImportLayout.h"

#include <algorithm>
#include "ui/DialogFactory.h"
#include "ui/DialogTemplates.h"

#include <chrono>
#include <iostream>

namespace tessel {
namespace {

// The answers the engine's question about an existing file gets during this job: the one
// given in advance (--if-exists) on the CAD command line, without a dialog; else the user's
// own, in the module's dialog or on the terminal.
std::vector<WString> AnswersInAdvance(IfExists ifExists)
{
    switch (ifExists) {
    case IfExists::Overwrite: return {FileChoiceKeyword(FileChoiceOverwrite)};
    case IfExists::Append: return {FileChoiceKeyword(FileChoiceAppend)};
    case IfExists::Cancel: return {FileChoiceKeyword(FileChoiceCancel)};
    case IfExists::Ask: break;
    }
    return {};
}

// Where the shim's recordings stood before the job, to tell afterwards what the job asked.
struct RecordingsBefore {
    std::size_t alerts = CadShim::RecordedAlerts().size();
    std::size_t keywords = CadShim::RecordedKeywords().size();
    std::size_t dialogs = CadShim::RecordedDialogs().size();
};

// True when the job's file question was answered with anything but overwrite or append: in
// the file question's dialog or on the command line, where no answer cancels.
bool FileQuestionCancelled(const RecordingsBefore& before)
{
    const auto& dialogs = CadShim::RecordedDialogs();
    for (std::size_t at = before.dialogs; at < dialogs.size(); ++at) {
        if (dialogs[at].templateId == kFileChoiceDialogId)
            return dialogs[at].result != FileChoiceOverwrite && dialogs[at].result != FileChoiceAppend;
    }
    const auto& keywords = CadShim::RecordedKeywords();
    for (std::size_t at = before.keywords; at < keywords.size(); ++at) {
        if (keywords[at] != FileChoiceKeyword(FileChoiceOverwrite) && keywords[at] != FileChoiceKeyword(FileChoiceAppend))
            return true;
    }
    return false;
}

// The binds and the delimiter of --preset, as if given: each preset column from the input
// field its import target names (positions from the point itself; an elevation from the
// position where the input has no HEIGHT field). A given --bind to the same column wins.
ExportRequest WithPreset(const ExportRequest& request, const ExportInput& input)
{
    if (!request.preset)
        return request;
    const std::vector<SurveyPreset> presets = KnownPresets(std::cerr);
    const SurveyPreset& preset = PresetNamed(presets, *request.preset, "--preset");
    ExportRequest resolved = request;
    resolved.binds.clear();
    for (const PresetColumn& column : preset.columns) {
        const std::string name = ToUtf8(column.name);
        const auto given = std::find_if(request.binds.begin(), request.binds.end(),
                                        [&name](const BindOption& bind) { return bind.target == name; });
        if (given != request.binds.end()) {
            resolved.binds.push_back(*given);
            continue;
        }
        std::string source = ToUtf8(column.target);
        if (source == "NODE_COORDINATE_X")
            source = "@x";
        else if (source == "NODE_COORDINATE_Y")
            source = "@y";
        else if (source == "HEIGHT" && input.FieldIndex(source) < 0)
            source = "@z";
        resolved.binds.push_back({source, name});
    }
    if (!resolved.config.delimiter)
        resolved.config.delimiter = ToUtf8(preset.delimiters.front());
    return resolved;
}

} // namespace

int RunExportCommand(ModuleHost& module, const ExportRequest& given, const GlobalOptions& global)
{
    const auto started = std::chrono::steady_clock::now();
    const InputFormat format = given.inputFormat.value_or(InputFormatForPath(given.input));
    if (given.layer && format != InputFormat::Gdal)
        throw UsageError("--layer: '" + given.input + "' is read as " +
                         (format == InputFormat::GeoJson ? "GeoJSON" : "JSON Lines") +
                         ", which has one layer (--input-format gdal reads it through GDAL)");
    ExportInput input = format == InputFormat::Gdal ? ReadGdalInput(given.input, given.layer)
                                                    : ReadExportInput(given.input, format);
    const ExportRequest request = WithPreset(given, input);
    std::vector<std::string> sources;
    for (const auto* binds : {&request.binds, &request.nodeBinds}) {
        for (const BindOption& bind : *binds)
            sources.push_back(bind.source);
    }
    AddCoordinateFields(input, sources, request.input);
    ExportJob job(module.Exporter(), request, input);
    job.Build(ModuleCodePage());

    // The engine asks about an existing file itself, once, and protects it from a failed write.
    const RecordingsBefore before;
    bool done;
    {
        const bool answered = request.ifExists != IfExists::Ask;
        const CadShim::JobAnswers answers(AnswersInAdvance(request.ifExists), !answered, !answered);
        done = job.Run() == 1;
    }
    if (!done) {
        // Where the engine gave its reason in an alert (a write that failed), that was shown.
        if (CadShim::RecordedAlerts().size() == before.alerts) {
            std::cerr << "tessel export: "
                      << (FileQuestionCancelled(before)
                              ? "'" + request.output + "' exists and was left as it was: the export was cancelled" +
                                    (request.ifExists == IfExists::Ask ? " (answer with --if-exists)" : "")
                              : "the engine wrote nothing to '" + request.output + "'")
                      << std::endl;
        }
        return ExitJobFailed;
    }

    PrintSummary(global, started,
                 "exported " + Counted(job.EntityCount(), "entity", "entities") + " as " + job.EntityName() +
                     " from '" + request.input + "' to '" + request.output + "'");
    return ExitSuccess;
}

} // namespace tessel
