#pragma once
// An import job as the GIS framework builds and runs it: the definition with both
// configurations, the binds checked against the source fields the engine offers, the
// engine's own checks, and the one builder the kind calls for.

#include "host/ImpexEngines.h"
#include "import/ImportSides.h"
#include "tessel/core/Requests.h"
#include "tessel/text/RecordWriter.h"

#include <boost/shared_ptr.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tessel {

class ImportJob {
public:
    ImportJob(VeltoGis::ImportExport::IImportEngine& engine, const ImportRequest& request)
        : engine_(engine), request_(request)
    {}

    // Builds the definition: configurations (read or composed), the file path through the
    // engine's path setter, the binds and their transforms, the job flags. Throws a usage
    // AppError for anything the job cannot be built from.
    void Build(unsigned codePage);

    // PrepareImport, then ValidateDefinition. The text of a failed validation ("the job
    // does not validate" when the engine gives none), or nothing when the job passes. Data
    // tables are not checked: their operations take a configuration, not a job.
    std::optional<std::string> Check();

    // Runs the builder; the engine's result (1 done, 0 refused).
    int Run();

    // Hands every record to the writer, in file order, with the coordinate system the user
    // gave the positions (null: none).
    void Write(RecordWriter& writer, std::shared_ptr<const CoordinateSystem> crs = nullptr) const;

    // Hands the records to the end of the process instead of freeing them with the job: for
    // files of millions of lines, freeing every entity and value one by one costs a third
    // of the whole run, and the process ends right after the output is in place. The
    // records stay reachable, so leak checkers do not count them.
    void KeepRecordsUntilExit();

    // What the run produced and what it read, for the summary line.
    std::size_t RecordCount() const;
    // The lines the builder read, comments and skipped lines included (0 before a run).
    std::size_t LinesRead() const { return linesRead_; }
    // What one record is called: "point", "line", "polygon", "row", "cloud point".
    std::string RecordNoun() const;
    // The configuration the builder reads, as the engine wrote it.
    WString ConfigurationString() const;

private:
    ImportSides Sides() const;
    boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection> MakeBinds(const std::vector<BindOption>& binds,
                                                                             int secondary, const char* option);
    int RunBuilder();
    RecordLayout ComputeLayout();
    std::vector<FieldType> FieldTypes(std::size_t fields) const;

    VeltoGis::ImportExport::IImportEngine& engine_;
    const ImportRequest& request_;
    VeltoGis::ImportExport::CImportDefinition definition_;
    std::vector<std::string> composedColumnNames_;
    RecordLayout layout_;
    std::size_t linesRead_ = 0;

    VeltoGis::ImportExport::ImpexEntityList entities_;
    boost::shared_ptr<VeltoGis::ImportExport::CDBTable> table_;
    boost::shared_ptr<VeltoGis::ImportExport::CCloud> cloud_;
};

// The default entity type of a kind: points and clouds 1, lines 2, polygons 16, tables 0.
int DefaultEntityType(ImportKind kind);

} // namespace tessel
