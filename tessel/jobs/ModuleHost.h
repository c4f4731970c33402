#pragma once
// Loads the plug-in module the way the CAD application does and keeps it loaded: the
// runtime's version check and module object, the initialisation message, the plug-in info
// object and its engine registration. The engines are then found by id in the framework's
// engine manager and driven only through their interfaces.

#include "host/ImpexEngines.h"
#include "import/LastImportAccount.h"
#include "refhost/DynamicLibrary.h"

#include <string>

namespace tessel {

// Where the module is looked for: the path given, else the environment variable
// TESSEL_MODULE, else libVeltoXTessel.so (VeltoXTessel.dll on Windows) in the lib folder
// beside the program's bin folder (the build's layout), else beside the program itself.
std::string ResolveModulePath(const std::string& given);

class ModuleHost {
public:
    ModuleHost() = default;
    ~ModuleHost();
    ModuleHost(const ModuleHost&) = delete;
    ModuleHost& operator=(const ModuleHost&) = delete;

    // Loads and starts the module and registers its engines. Throws a job AppError naming the
    // path and the cause when the library does not load, lacks an entry point, has an API
    // version this host does not speak, or registers no text engines.
    void Load(const std::string& path);

    VeltoGis::ImportExport::IImportEngine& Importer() const { return *importer_; }
    VeltoGis::ImportExport::IExportEngine& Exporter() const { return *exporter_; }
    // The module's record of its last import run; null when the module keeps none.
    const TxtImport::CImportAccount* LastImportAccount() const
    {
        return lastImportAccount_ ? lastImportAccount_() : nullptr;
    }

private:
    void Unload();

    refhost::DynamicLibrary library_;
    int (*entryPoint_)(int, void*) = nullptr;
    VeltoGis::ImportExport::IImportEngine* importer_ = nullptr;
    VeltoGis::ImportExport::IExportEngine* exporter_ = nullptr;
    LastImportAccountFunction lastImportAccount_ = nullptr;
};

} // namespace tessel
