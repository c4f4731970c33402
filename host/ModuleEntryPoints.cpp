// The exported functions the host calls: the CAD application's entry point and API version,
// the runtime's module object, and the GIS framework's plug-in info object. The record of the
// last import is exported beside them (import/LastImportAccount.h).

#include "host/CadPlatform.h"
#include "host/HostApi.h"
#include "host/ImpexModule_Txt.h"
#include "host/TesselApp.h"

#include <new>

namespace {

constexpr int kApiMajor = 3;
constexpr int kApiMinor = 9;

void WriteApiVersion(int* major, int* minor, int* build, int* revision)
{
    if (major)
        *major = kApiMajor;
    if (minor)
        *minor = kApiMinor;
    if (build)
        *build = 0;
    if (revision)
        *revision = 0;
}

OdRxModule* moduleObject = nullptr;

} // namespace

TESSEL_EXPORT int acrxEntryPoint(int message, void* appData)
{
    return CTesselApp::Instance().Dispatch(message, appData);
}

TESSEL_EXPORT void acrxGetApiVersion(int* major, int* minor, int* build, int* revision)
{
    WriteApiVersion(major, minor, build, revision);
}

TESSEL_EXPORT void odrxGetAPIVersion(int* major, int* minor, int* build, int* revision)
{
    WriteApiVersion(major, minor, build, revision);
}

// The runtime owns the object it asked for; it lives in the runtime's own memory.
TESSEL_EXPORT OdRxModule* odrxCreateModuleObject(const OdRxModuleRecord* record)
{
    if (!moduleObject) {
        void* memory = odrxAlloc(sizeof(OdRxModule));
        if (!memory)
            return nullptr;
        moduleObject = new (memory) OdRxModule(record ? *record : OdRxModuleRecord());
    }
    return moduleObject;
}

TESSEL_EXPORT VeltoGis::ImportExport::IImpexPluginInfo* GetVeltoImpexPluginInfo()
{
    return CImpexModule_Txt::Instance();
}
