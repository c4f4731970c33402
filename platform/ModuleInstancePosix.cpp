#include "platform/Platform.h"

#include <dlfcn.h>

void* Platform::ModuleInstance()
{
    // The shared object (or program) that holds this function.
    static void* const base = [] {
        Dl_info info{};
        if (dladdr(reinterpret_cast<void*>(&Platform::ModuleInstance), &info) && info.dli_fbase)
            return info.dli_fbase;
        return reinterpret_cast<void*>(&Platform::ModuleInstance);
    }();
    return base;
}
