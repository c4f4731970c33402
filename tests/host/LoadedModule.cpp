#include "LoadedModule.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <cstdio>

namespace {

template <class Function>
void Resolve(void* library, const char* name, Function& function)
{
    void* address = dlsym(library, name);
    if (!address)
        ADD_FAILURE() << "the module does not export " << name;
    function = reinterpret_cast<Function>(address);
}

LoadedModule Load()
{
    LoadedModule module{};
    void* library = dlopen(TESSEL_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        ADD_FAILURE() << "dlopen: " << dlerror();
        return module;
    }
    Resolve(library, "acrxEntryPoint", module.acrxEntryPoint);
    Resolve(library, "acrxGetApiVersion", module.acrxGetApiVersion);
    Resolve(library, "odrxGetAPIVersion", module.odrxGetAPIVersion);
    Resolve(library, "odrxCreateModuleObject", module.odrxCreateModuleObject);
    Resolve(library, "GetVeltoImpexPluginInfo", module.GetVeltoImpexPluginInfo);
    return module;
}

} // namespace

const LoadedModule& Module()
{
    static const LoadedModule module = Load();
    if (!module.acrxEntryPoint)
        ADD_FAILURE() << "the module is not loaded";
    return module;
}

// Asks the binary tools, as a person checking the library would.
std::vector<std::string> ExportedSymbols(const std::string& path)
{
    std::vector<std::string> names;
    FILE* listing = popen(("nm -D --defined-only --format=just-symbols '" + path + "'").c_str(), "r");
    if (!listing) {
        ADD_FAILURE() << "cannot run nm";
        return names;
    }
    char line[4096];
    while (std::fgets(line, sizeof line, listing))
        names.emplace_back(line, std::strcspn(line, "\n"));
    if (pclose(listing) != 0)
        ADD_FAILURE() << "nm failed on " << path;
    return names;
}
