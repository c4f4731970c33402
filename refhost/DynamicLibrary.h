#pragma once
// A shared library loaded at run time the way the CAD application loads a module: dlopen and
// dlsym on Linux, LoadLibraryW and GetProcAddress on Windows. Paths are UTF-8.

#include <string>

namespace refhost {

class DynamicLibrary {
public:
    DynamicLibrary() = default;
    ~DynamicLibrary() = default; // deliberately never unloads: the host keeps the module's engines
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    // Loads the library with every symbol resolved now; false (and ErrorText says why) when
    // it cannot be loaded.
    bool Load(const std::string& path);
    bool IsLoaded() const { return handle_ != nullptr; }
    // The system's handle (void* on Linux, HMODULE on Windows).
    void* Handle() const { return handle_; }
    // The address of an exported function, or null.
    void* Symbol(const char* name) const;
    const std::string& ErrorText() const { return error_; }

private:
    void* handle_ = nullptr;
    std::string error_;
};

// The file name of a module built from name: VeltoXTessel.dll, libVeltoXTessel.so.
std::string ModuleFileName(const std::string& name);

// The folder of the running program, in UTF-8 ("." when the system cannot tell).
std::string ProgramFolder();

} // namespace refhost
