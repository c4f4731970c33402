#include "platform/Platform.h"
#include "platform/Windows.h"

void* Platform::ModuleInstance()
{
    // The module that holds this function, whichever program loaded or linked it.
    static HMODULE const instance = [] {
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCWSTR>(&Platform::ModuleInstance), &module);
        return module ? module : GetModuleHandleW(nullptr);
    }();
    return instance;
}
