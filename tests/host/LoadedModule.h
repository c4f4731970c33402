#pragma once
// The module loaded the way the CAD application loads it: dlopen of the shared library (on
// Windows LoadLibraryW of the DLL) and its exported functions looked up by name. Loaded once per test program and never
// unloaded, since the engine manager keeps the module's engines alive to the end.

#include "host/CadPlatform.h"
#include "host/ImpexEngines.h"

#include <string>
#include <vector>

struct LoadedModule {
    int (*acrxEntryPoint)(int message, void* appData);
    void (*acrxGetApiVersion)(int*, int*, int*, int*);
    void (*odrxGetAPIVersion)(int*, int*, int*, int*);
    OdRxModule* (*odrxCreateModuleObject)(const OdRxModuleRecord*);
    VeltoGis::ImportExport::IImpexPluginInfo* (*GetVeltoImpexPluginInfo)();
};

// The loaded module; a failure to load or to find an entry point fails the calling test.
const LoadedModule& Module();

// The names of the defined symbols in a shared library's dynamic symbol table (on Windows:
// the loaded module's export table; other libraries give none).
std::vector<std::string> ExportedSymbols(const std::string& path);
