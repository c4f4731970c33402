#include "tessel/jobs/ModuleHost.h"

#include "host/CadPlatform.h"
#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"

#include "refhost/DynamicLibrary.h"
#include "refhost/FilePath.h"

#include <cstdlib>

namespace tessel {
namespace {

using ApiVersionFunction = void (*)(int*, int*, int*, int*);
using EntryPointFunction = int (*)(int, void*);
using CreateModuleObjectFunction = OdRxModule* (*)(const OdRxModuleRecord*);
using PluginInfoFunction = VeltoGis::ImportExport::IImpexPluginInfo* (*)();

constexpr int kHostApiMajor = 3;

bool Exists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::exists(refhost::PathFromUtf8(path), error);
}

void* Symbol(const refhost::DynamicLibrary& library, const char* name, const std::string& path)
{
    void* symbol = library.Symbol(name);
    if (!symbol)
        throw JobError("module: " + path + " is not a VeltoXTessel module: it exports no " + name);
    return symbol;
}

} // namespace

std::string ResolveModulePath(const std::string& given)
{
    if (!given.empty())
        return given;
    if (const char* environment = std::getenv("TESSEL_MODULE"); environment && *environment)
        return environment;
    const std::string folder = refhost::ProgramFolder();
    const std::string fileName = refhost::ModuleFileName("VeltoXTessel");
    const std::string besideBin = folder + "/../lib/" + fileName;
    if (Exists(besideBin))
        return besideBin;
    return folder + "/" + fileName;
}

void ModuleHost::Load(const std::string& path)
{
    if (!library_.Load(path)) {
        throw JobError("module: cannot load " + path + ": " + library_.ErrorText() + " (point --module or TESSEL_MODULE at " +
                       refhost::ModuleFileName("VeltoXTessel") + ")");
    }
    const auto apiVersion = reinterpret_cast<ApiVersionFunction>(Symbol(library_, "acrxGetApiVersion", path));
    const auto runtimeVersion = reinterpret_cast<ApiVersionFunction>(Symbol(library_, "odrxGetAPIVersion", path));
    const auto createModuleObject =
        reinterpret_cast<CreateModuleObjectFunction>(Symbol(library_, "odrxCreateModuleObject", path));
    entryPoint_ = reinterpret_cast<EntryPointFunction>(Symbol(library_, "acrxEntryPoint", path));
    const auto pluginInfo = reinterpret_cast<PluginInfoFunction>(Symbol(library_, "GetVeltoImpexPluginInfo", path));

    for (const ApiVersionFunction version : {apiVersion, runtimeVersion}) {
        int major = 0, minor = 0, build = 0, revision = 0;
        version(&major, &minor, &build, &revision);
        if (major != kHostApiMajor)
            throw JobError("module: " + path + " was built for API version " + std::to_string(major) + "." +
                           std::to_string(minor) + "; this host speaks " + std::to_string(kHostApiMajor) + ".x");
    }

    // The runtime announces the module, then the CAD application starts it; the GIS
    // framework then asks for its plug-in info object and lets it register its engines.
    const WString moduleName = FromUtf8(path);
    const OdRxModuleRecord record{moduleName.c_str(), library_.Handle()};
    CallEngine([&] { return createModuleObject(&record); });
    CallEngine([&] { return entryPoint_(AcRx::kInitAppMsg, library_.Handle()); });
    VeltoGis::ImportExport::IImpexPluginInfo* info = CallEngine([&] { return pluginInfo(); });
    if (!info)
        throw JobError("module: " + path + " gave no plug-in info object");
    CallEngine([&] {
        info->RegisterEngines();
        return 0;
    });

    importer_ = refhost::FindImporter(WTEXT("IMPORT_TXT")).get();
    exporter_ = refhost::FindExporter(WTEXT("EXPORT_TXT")).get();
    if (!importer_ || !exporter_)
        throw JobError("module: " + path + " registered no " + (importer_ ? "EXPORT_TXT" : "IMPORT_TXT") + " engine");
    // Optional: a module without it imports all the same, without the account.
    lastImportAccount_ = reinterpret_cast<LastImportAccountFunction>(library_.Symbol(kLastImportAccountExport));
}

// The module is told to stop, and the engines it registered are released while their code
// is still loaded. The library itself stays mapped until the process ends, as in the CAD
// application, so that nothing the framework still holds can point into unmapped code.
void ModuleHost::Unload()
{
    if (!library_.IsLoaded() || !entryPoint_)
        return;
    entryPoint_(AcRx::kUnloadAppMsg, library_.Handle());
    refhost::ClearEngines();
    importer_ = nullptr;
    exporter_ = nullptr;
    entryPoint_ = nullptr;
    lastImportAccount_ = nullptr;
}

ModuleHost::~ModuleHost()
{
    try {
        Unload();
    } catch (...) {
        // Nothing useful can be reported while the program ends.
    }
}

} // namespace tessel
