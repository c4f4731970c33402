#include "refhost/CadShimRecording.h"
#include "tessel/gis/AreaOfUse.h"
#include "tessel/jobs/ImportAccountReport.h"
#include "tessel/jobs/ImportLayout.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/CoordinateSystem.h"
#include "tessel/jobs/CodePageText.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/ImportJob.h"
#include "tessel/jobs/ImportOutput.h"

#include <chrono>
#include <iostream>

namespace tessel {

int RunImportCommand(ModuleHost& module, const ImportRequest& given, const GlobalOptions& global)
{
    // The coordinate system first: --preset auto orders northing and easting by its area of use.
    const auto crs = given.crs ? CoordinateSystem::Parse(*given.crs) : nullptr;
    const ImportRequest request =
        ResolveImportLayout(given, crs ? AreaOfUseTest(*crs) : std::function<bool(double, double)>(), std::cerr);
    ImportJob job(module.Importer(), request);
    job.Build(ModuleCodePage());
    if (const auto problem = job.Check()) {
        if (request.config.strict)
            throw JobError(*problem + " (--strict)");
        std::cerr << "warning: " << *problem << std::endl;
    }

    // The coordinate system and the output are ready before the engine runs, so that a wrong
    // --crs or an unwritable path costs no import.
    const std::string path = request.output.value_or("-");
    const OutputFormat format = request.format.value_or(FormatForPath(path));
    if (path == "-" && (format == OutputFormat::GeoPackage || format == OutputFormat::Shapefile))
        throw UsageError("--format: a GIS dataset needs an output file (-o FILE)");
    if (format == OutputFormat::FlatGeobuf && request.kind != ImportKind::Points && request.kind != ImportKind::Cloud)
        throw UsageError("FlatGeobuf holds features with a geometry, and only points and cloud points have one: "
                         "write lines, polygons and rows to GeoPackage, Shapefile, CSV or JSON Lines");
    if (crs && (format == OutputFormat::JsonLines || format == OutputFormat::Csv))
        std::cerr << "tessel: warning: " << (format == OutputFormat::Csv ? "CSV" : "JSON Lines")
                  << " carries no coordinate system; --crs is not written" << std::endl;
    if (crs && format == OutputFormat::GeoJson && crs->EpsgUrn().empty())
        std::cerr << "tessel: warning: GeoJSON names a coordinate system by its EPSG code, and GDAL finds none for '"
                  << crs->Text() << "'; the file claims none" << std::endl;
    const auto output = MakeImportOutput(path, format);
    output->Open();
    const auto started = std::chrono::steady_clock::now();
    // The engine says why it stopped in an alert where it has a reason to give (no interface
    // of the job says whether it did); otherwise tessel says what happened.
    const std::size_t alertsBefore = CadShim::RecordedAlerts().size();
    if (job.Run() != 1) {
        if (CadShim::RecordedAlerts().size() == alertsBefore)
            std::cerr << "tessel import: the engine imported nothing from '" << request.file << "'" << std::endl;
        return ExitJobFailed;
    }
    job.Write(*output->MakeWriter(), crs);
    output->Commit();
    static const TxtImport::CImportAccount none;
    const TxtImport::CImportAccount* kept = module.LastImportAccount();
    if (!kept && request.rejects)
        std::cerr << "tessel: warning: the module keeps no account of its imports; '" << *request.rejects
                  << "' lists nothing" << std::endl;
    const TxtImport::CImportAccount& account = kept ? *kept : none;
    if (request.rejects)
        WriteRejects(account, *request.rejects);
    if (const std::string unconverted = UnconvertedSummary(account); !unconverted.empty())
        std::cerr << "tessel: " << unconverted
                  << (request.rejects ? " (listed in '" + *request.rejects + "')" : std::string(" (--rejects FILE lists them)"))
                  << std::endl;
    const std::size_t records = job.RecordCount();
    job.KeepRecordsUntilExit();

    const std::size_t lines = job.LinesRead();
    const std::string noun = job.RecordNoun();
    PrintSummary(global, started,
                 "read " + Counted(lines, "line", "lines") + " of '" + request.file + "', imported " +
                     Counted(records, noun, noun + "s") + " (" +
                     Counted(lines > records ? lines - records : 0, "line", "lines") + " skipped) to " +
                     output->DisplayName());
    return ExitSuccess;
}

} // namespace tessel
