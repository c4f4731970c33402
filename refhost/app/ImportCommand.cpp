#include "refhost/CadShimRecording.h"
#include "refhost/app/AppError.h"
#include "refhost/app/CodePageText.h"
#include "refhost/app/Commands.h"
#include "refhost/app/ImportJob.h"
#include "refhost/app/OutputFile.h"

#include <chrono>
#include <cstdio>
#include <iostream>

namespace tessel {

int RunImportCommand(ModuleHost& module, const ImportRequest& request, const GlobalOptions& global)
{
    ImportJob job(module.Importer(), request);
    job.Build(ModuleCodePage());
    if (const auto problem = job.Check()) {
        if (request.strict)
            throw JobError(*problem + " (--strict)");
        std::cerr << "warning: " << *problem << std::endl;
    }

    // The output is ready before the engine runs, so that an unwritable path costs no import.
    const std::string path = request.output.value_or("-");
    OutputFile output(path);
    output.Open();
    const auto started = std::chrono::steady_clock::now();
    const std::size_t alertsBefore = CadShim::RecordedAlerts().size();
    if (job.Run() != 1) {
        if (CadShim::RecordedAlerts().size() == alertsBefore)
            std::cerr << "tessel import: the engine imported nothing from '" << request.file << "'" << std::endl;
        return ExitJobFailed;
    }
    const auto writer = MakeRecordWriter(request.format.value_or(FormatForPath(path)), output);
    job.Write(*writer);
    output.Commit();
    const std::size_t records = job.RecordCount();
    job.KeepRecordsUntilExit();

    if (!global.quiet) {
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
        const std::size_t lines = job.LinesRead();
        char time[32];
        std::snprintf(time, sizeof time, "%.2f s", seconds);
        const std::string noun = job.RecordNoun();
        std::cerr << "tessel: read " << Counted(lines, "line", "lines") << " of '" << request.file << "', imported "
                  << Counted(records, noun, noun + "s") << " ("
                  << Counted(lines > records ? lines - records : 0, "line", "lines") << " skipped) to "
                  << output.DisplayName() << " in " << time << std::endl;
    }
    return ExitSuccess;
}

} // namespace tessel
