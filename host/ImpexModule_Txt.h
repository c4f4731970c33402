#pragma once
// The module's plug-in info object: registers the text import and export engines with the
// GIS framework's engine manager.

#include "host/ImpexEngines.h"

class CImpexModule_Txt : public VeltoGis::ImportExport::IImpexPluginInfo {
public:
    // Creates a fresh import engine and a fresh export engine and hands them, in that order,
    // to CImpexManager, which owns them from then on. Every call registers a new pair.
    void RegisterEngines() override;

    // The one instance of the process, created on the first call and never freed.
    static CImpexModule_Txt* Instance();
};
