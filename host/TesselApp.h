#pragma once
// The module's application object: what the CAD application talks to through acrxEntryPoint.

#include "host/AcRxApp.h"

class CTesselApp : public AcRxArxApp {
public:
    // Unlocked (the module may be unloaded while the CAD application runs) and MDI aware.
    CTesselApp();

    AcRx::AppRetCode On_kInitAppMsg(void* appData) override;
    AcRx::AppRetCode On_kUnloadAppMsg(void* appData) override;
    // The module has no server components.
    void RegisterServerComponents() override;

    // The one application object of the module.
    static CTesselApp& Instance();
};
