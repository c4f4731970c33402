#pragma once
// An export job as the GIS framework builds and runs it: the definition with both
// configurations and their binds, the entities (or, for lines, the drawing's entities) whose
// values the binds name, and the one writer the kind calls for.

#include "host/ImpexEngines.h"
#include "tessel/core/Requests.h"
#include "tessel/text/ExportInput.h"

#include <boost/shared_ptr.hpp>
#include <string>

namespace tessel {

class ExportJob {
public:
    ExportJob(VeltoGis::ImportExport::IExportEngine& engine, const ExportRequest& request, const ExportInput& input)
        : engine_(engine), request_(request), input_(input)
    {}
    ~ExportJob();
    ExportJob(const ExportJob&) = delete;
    ExportJob& operator=(const ExportJob&) = delete;

    // Builds the definition and the entities. Throws a usage AppError for a configuration
    // that is none, a bind whose source is not a field of the input, an unknown transform.
    void Build(unsigned codePage);

    // Points the configuration the writer reads at the requested output (through the
    // engine's path setter), lets the engine check the job, and runs the writer. The
    // engine's result.
    int Run();

    std::size_t EntityCount() const { return input_.records.size(); }
    // The name the engine exports this kind of entity under ("points", "lines", "polygons").
    std::string EntityName();

private:
    bool WriterReadsNodeSide() const;
    boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection> MakeBinds(const std::vector<BindOption>& binds,
                                                                             const char* option) const;
    void BuildEntities();

    VeltoGis::ImportExport::IExportEngine& engine_;
    const ExportRequest& request_;
    const ExportInput& input_;
    VeltoGis::ImportExport::CExportDefinition definition_;
    VeltoGis::ImportExport::ImpexEntityList entities_;
    boost::shared_ptr<VeltoGis::Topology::CEntityContainer> drawingEntities_;
};

// The entity type whose main configuration a writer reads: points 1, lines 2, polygons 16.
int WriterEntityType(ExportKind kind);

} // namespace tessel
