#include "host/TesselApp.h"

namespace {

// The module contributes its work through the GIS framework's engines, not through the CAD
// application: it has no runtime classes, no commands and no scripting functions.
constexpr AcRxTable<AcRxClassEntry> kClasses{};
constexpr AcRxTable<AcRxCommandEntry> kCommands{};
constexpr AcRxTable<AcRxFunctionEntry> kFunctions{};

CTesselApp theApp;

} // namespace

CTesselApp::CTesselApp() : AcRxArxApp(kClasses, kCommands, kFunctions)
{
    unlocked_ = true;
    mdiAware_ = true;
}

AcRx::AppRetCode CTesselApp::On_kInitAppMsg(void* appData) { return AcRxArxApp::On_kInitAppMsg(appData); }

AcRx::AppRetCode CTesselApp::On_kUnloadAppMsg(void* appData) { return AcRxArxApp::On_kUnloadAppMsg(appData); }

void CTesselApp::RegisterServerComponents() {}

CTesselApp& CTesselApp::Instance() { return theApp; }
