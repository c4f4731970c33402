#include "LoadedModule.h"

#include "refhost/DynamicLibrary.h"

#include <gtest/gtest.h>

#include <cstring>
#include <cstdio>

#ifdef _WIN32
#include "platform/Windows.h"
#endif

namespace {

refhost::DynamicLibrary& Library()
{
    static refhost::DynamicLibrary library;
    return library;
}

template <class Function>
void Resolve(const refhost::DynamicLibrary& library, const char* name, Function& function)
{
    void* address = library.Symbol(name);
    if (!address)
        ADD_FAILURE() << "the module does not export " << name;
    function = reinterpret_cast<Function>(address);
}

LoadedModule Load()
{
    LoadedModule module{};
    refhost::DynamicLibrary& library = Library();
    if (!library.Load(TESSEL_MODULE_PATH)) {
        ADD_FAILURE() << "cannot load " << TESSEL_MODULE_PATH << ": " << library.ErrorText();
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

#ifdef _WIN32

// The export name table of the loaded module, read from its image in memory.
std::vector<std::string> ExportedSymbols(const std::string& path)
{
    std::vector<std::string> names;
    if (path != TESSEL_MODULE_PATH || !Module().acrxEntryPoint)
        return names;
    const auto* image = static_cast<const unsigned char*>(Library().Handle());
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(image);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(image + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    if (directory.Size == 0)
        return names;
    const auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(image + directory.VirtualAddress);
    const auto* nameOffsets = reinterpret_cast<const DWORD*>(image + exports->AddressOfNames);
    for (DWORD i = 0; i < exports->NumberOfNames; ++i)
        names.emplace_back(reinterpret_cast<const char*>(image + nameOffsets[i]));
    return names;
}

#else

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

#endif
