// The host's icons for the module's dialogs on Windows: ICON resources of this library
// (refhost/resources/), named as the host names them ("IDI_OPEN", "IDI_DELETE"). Each is
// loaded from the library's own instance once per size asked for and kept for the life of the
// process; an unknown name has none (null). Images are icons whatever the type asked for.

#include "host/GisUtility.h"

#include <windows.h>

#include <map>
#include <mutex>
#include <tuple>

namespace VeltoGis {
namespace {

HMODULE ThisLibrary()
{
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ThisLibrary), &library);
    return library;
}

HostIcon FindIcon(const WChar* name, int cx, int cy)
{
    if (!name || !*name)
        return nullptr;
    static std::mutex guard;
    static std::map<std::tuple<WString, int, int>, HICON> loaded;
    const std::lock_guard<std::mutex> lock(guard);
    const auto [entry, isNew] = loaded.try_emplace({WString(name), cx, cy}, nullptr);
    if (isNew) {
        HMODULE library = ThisLibrary();
        if (library && FindResourceW(library, name, MAKEINTRESOURCEW(14))) // RT_GROUP_ICON
            entry->second = static_cast<HICON>(LoadImageW(library, name, IMAGE_ICON, cx, cy, LR_DEFAULTCOLOR));
    }
    return entry->second;
}

} // namespace

HostIcon CModuleConfiguration::GetIcon(const WChar* name) const { return FindIcon(name, 16, 16); }

HostIcon CModuleConfiguration::LoadImageW(const WChar* name, unsigned int /*type*/, int cx, int cy,
                                          unsigned int /*flags*/) const
{
    return FindIcon(name, cx, cy);
}

} // namespace VeltoGis
