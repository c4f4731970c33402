#include "host/ImpexModule_Txt.h"

#include "export/ExportEngine_Txt.h"
#include "import/ImportEngine_Txt.h"

#include <new>

using VeltoGis::ImportExport::CImpexManager;
using VeltoGis::ImportExport::IExportEngine;
using VeltoGis::ImportExport::IImportEngine;

// An engine that cannot be allocated is passed on as an empty pointer.
void CImpexModule_Txt::RegisterEngines()
{
    boost::shared_ptr<IImportEngine> importer(new (std::nothrow) CImportEngine_Txt());
    CImpexManager::Instance()->RegisterImporter(importer);
    boost::shared_ptr<IExportEngine> exporter(new (std::nothrow) CExportEngine_Txt());
    CImpexManager::Instance()->RegisterExporter(exporter);
}

CImpexModule_Txt* CImpexModule_Txt::Instance()
{
    static CImpexModule_Txt* instance = nullptr;
    if (!instance)
        instance = new CImpexModule_Txt();
    return instance;
}
