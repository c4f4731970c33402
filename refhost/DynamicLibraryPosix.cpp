// Libraries loaded with dlopen and dlsym; the program's folder from /proc/self/exe.

#include "refhost/DynamicLibrary.h"

#include "refhost/FilePath.h"

#include <dlfcn.h>

#include <filesystem>

namespace refhost {

bool DynamicLibrary::Load(const std::string& path)
{
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    const char* reason = handle_ ? nullptr : ::dlerror();
    error_ = handle_ ? "" : reason ? reason : "unknown reason";
    return handle_ != nullptr;
}

void* DynamicLibrary::Symbol(const char* name) const { return handle_ ? ::dlsym(handle_, name) : nullptr; }

std::string ModuleFileName(const std::string& name) { return "lib" + name + ".so"; }

std::string ProgramFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? "." : PathToUtf8(program.parent_path());
}

} // namespace refhost
