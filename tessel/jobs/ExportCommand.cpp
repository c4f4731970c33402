#include "refhost/CadShimAnswers.h"
#include "host/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/GdalInput.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ExportJob.h"
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

} // namespace

int RunExportCommand(ModuleHost& module, const ExportRequest& request, const GlobalOptions& global)
{
    const auto started = std::chrono::steady_clock::now();
    const InputFormat format = request.inputFormat.value_or(InputFormatForPath(request.input));
    if (request.layer && format != InputFormat::Gdal)
        throw UsageError("--layer: '" + request.input + "' is read as " +
                         (format == InputFormat::GeoJson ? "GeoJSON" : "JSON Lines") +
                         ", which has one layer (--input-format gdal reads it through GDAL)");
    ExportInput input = format == InputFormat::Gdal ? ReadGdalInput(request.input, request.layer)
                                                    : ReadExportInput(request.input, format);
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
