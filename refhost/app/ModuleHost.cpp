#include "refhost/app/ModuleHost.h"

#include "host/CadPlatform.h"
#include "refhost/HostSide.h"
#include "refhost/Utf8.h"
#include "refhost/app/AppError.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>

namespace tessel {
namespace {

using ApiVersionFunction = void (*)(int*, int*, int*, int*);
using EntryPointFunction = int (*)(int, void*);
using CreateModuleObjectFunction = OdRxModule* (*)(const OdRxModuleRecord*);
using PluginInfoFunction = VeltoGis::ImportExport::IImpexPluginInfo* (*)();

constexpr int kHostApiMajor = 3;
constexpr char kModuleFileName[] = "libVeltoXTessel.so";

std::string ProgramFolder()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length <= 0)
        return ".";
    const std::string program(path, static_cast<std::size_t>(length));
    const auto slash = program.rfind('/');
    return slash == std::string::npos ? "." : program.substr(0, slash);
}

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

void* Symbol(void* library, const char* name, const std::string& path)
{
    void* symbol = dlsym(library, name);
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
    const std::string folder = ProgramFolder();
    const std::string besideBin = folder + "/../lib/" + kModuleFileName;
    if (Exists(besideBin))
        return besideBin;
    return folder + "/" + kModuleFileName;
}

void ModuleHost::Load(const std::string& path)
{
    library_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library_) {
        const char* reason = dlerror();
        throw JobError("module: cannot load " + path + ": " + (reason ? reason : "unknown reason") +
                       " (point --module or TESSEL_MODULE at libVeltoXTessel.so)");
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
    const WString moduleName = refhost::FromUtf8(path);
    const OdRxModuleRecord record{moduleName.c_str(), library_};
    CallEngine([&] { return createModuleObject(&record); });
    CallEngine([&] { return entryPoint_(AcRx::kInitAppMsg, library_); });
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
}

// The module is told to stop, and the engines it registered are released while their code
// is still loaded. The library itself stays mapped until the process ends, as in the CAD
// application, so that nothing the framework still holds can point into unmapped code.
void ModuleHost::Unload()
{
    if (!library_)
        return;
    if (entryPoint_)
        entryPoint_(AcRx::kUnloadAppMsg, library_);
    refhost::ClearEngines();
    importer_ = nullptr;
    exporter_ = nullptr;
    library_ = nullptr;
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
