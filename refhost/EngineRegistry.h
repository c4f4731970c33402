#pragma once
// The reference host's engine registry as the host application and tests see it beyond the
// framework's interface: lookups, every registration in the order it came, and the per-job
// data asked for.

#include "host/HostApi.h"
#include "host/ImpexEngines.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <vector>

namespace refhost {

// The engine registered last under the id, or an empty pointer.
VELTOGIS_IMPEX_API boost::shared_ptr<VeltoGis::ImportExport::IImportEngine> FindImporter(const WString& id);
VELTOGIS_IMPEX_API boost::shared_ptr<VeltoGis::ImportExport::IExportEngine> FindExporter(const WString& id);
VELTOGIS_IMPEX_API const std::vector<boost::shared_ptr<VeltoGis::ImportExport::IImportEngine>>& Importers();
VELTOGIS_IMPEX_API const std::vector<boost::shared_ptr<VeltoGis::ImportExport::IExportEngine>>& Exporters();
// How often CreateUserData was asked for the job.
VELTOGIS_IMPEX_API int UserDataCount(const VeltoGis::ImportExport::CImportDefinition* definition);
// "import:ID" or "export:ID" per registered engine ("import:" alone for an empty engine),
// oldest first.
VELTOGIS_IMPEX_API const std::vector<WString>& EngineRegistrations();
// Forgets every engine, registration and job.
VELTOGIS_IMPEX_API void ClearEngines();

} // namespace refhost
