#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/FilePath.h"
#include "refhost/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/GdalInput.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ExportJob.h"
#include "tessel/system/FileDescriptor.h"
#include "tessel/system/TemporaryFile.h"
#include "ui/DialogFactory.h"

#include <unistd.h> // isatty

#include <cerrno>
#include <chrono>
#include <fstream>
#include <iostream>
#include <optional>

namespace tessel {
namespace {

bool IsRegularFile(const std::string& path) { return files::KindOf(path) == files::Kind::Regular; }

void CopyFileContent(const std::string& from, const TemporaryFile& to)
{
    std::ifstream source(refhost::PathFromUtf8(from), std::ios::binary);
    char block[1 << 16];
    while (source) {
        source.read(block, sizeof block);
        const char* data = block;
        auto left = static_cast<std::size_t>(source.gcount());
        while (left > 0) {
            const long written = files::Write(to.Descriptor(), data, left);
            if (written <= 0)
                ThrowCannotWrite(to.Path(), written < 0 ? errno : ENOSPC);
            data += written;
            left -= static_cast<std::size_t>(written);
        }
    }
    if (source.bad())
        throw UsageError("cannot read '" + from + "' to append to it");
}

int FileChoiceOf(IfExists answer)
{
    switch (answer) {
    case IfExists::Overwrite: return FileChoiceOverwrite;
    case IfExists::Append: return FileChoiceAppend;
    default: return FileChoiceCancel;
    }
}

// The user's answer for an existing target, asked about the target itself (the engine,
// asked later, sees only the temporary file) the way the module asks: in its dialog where
// one can be shown, else on the terminal. Nobody to ask: cancel.
IfExists AskTheUser(const std::string& target)
{
    CadShim::AllowTerminalPrompts(isatty(STDIN_FILENO) == 1);
    const int choice = DefaultDialogs().RunFileChoice(refhost::FromUtf8(target).c_str());
    CadShim::AllowTerminalPrompts(false);
    return choice == FileChoiceOverwrite ? IfExists::Overwrite
           : choice == FileChoiceAppend  ? IfExists::Append
                                         : IfExists::Cancel;
}

// Where the engine writes, and what the user answered for an existing target (none when
// the target was new or is a special file). A regular target is written as a temporary file
// beside it; when the target exists, so does the temporary file, holding the target's bytes
// for "append", so that the engine asks its question, which gets the user's answer.
struct EngineTarget {
    std::string path;
    std::optional<IfExists> answer;
};

EngineTarget PrepareEngineTarget(const ExportRequest& request, TemporaryFile& temporary)
{
    if (IsSpecialFile(request.output))
        return {request.output, std::nullopt};
    temporary.CreateBeside(request.output);
    if (!IsRegularFile(request.output)) {
        temporary.RemoveFileKeepName();
        return {temporary.Path(), std::nullopt};
    }
    const IfExists answer = request.ifExists == IfExists::Ask ? AskTheUser(request.output) : request.ifExists;
    if (answer == IfExists::Append)
        CopyFileContent(request.output, temporary);
    temporary.CloseKeepFile();
    // The engine's own question about the temporary file takes the answer given here, on
    // the command line rather than in a second dialog.
    CadShim::AllowDialogs(false);
    CadShim::QueueKeywordAnswers({FileChoiceKeyword(FileChoiceOf(answer))});
    return {temporary.Path(), answer};
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

    TemporaryFile temporary;
    const EngineTarget target = PrepareEngineTarget(request, temporary);
    if (job.Run(target.path) != 1) {
        std::cerr << "tessel export: "
                  << (target.answer == IfExists::Cancel
                          ? "'" + request.output + "' exists and was left as it was: the export was cancelled" +
                                (request.ifExists == IfExists::Ask ? " (answer with --if-exists)" : "")
                          : "the engine wrote nothing to '" + request.output + "'")
                  << std::endl;
        return ExitJobFailed;
    }
    if (!temporary.Path().empty())
        temporary.Replace(request.output);

    PrintSummary(global, started,
                 "exported " + Counted(job.EntityCount(), "entity", "entities") + " as " + job.EntityName() +
                     " from '" + request.input + "' to '" + request.output + "'");
    return ExitSuccess;
}

} // namespace tessel
