#pragma once
// Marks the classes and functions that the host's shared libraries export. The module is
// built with hidden visibility; everything it takes from the host must stay visible so that
// vtables and type information exist once, in the host's libraries.
// On Windows each host library has its own switch: it exports while it is being built (CMake
// defines <library>_EXPORTS then) and every user imports from it.

namespace VeltoGis {
// The framework's own implementation, which reaches the state behind the classes it hands to
// modules; modules see only this declaration.
class HostSide;
} // namespace VeltoGis

#if defined(_WIN32)
#define VELTOGIS_DLL_EXPORT __declspec(dllexport)
#define VELTOGIS_DLL_IMPORT __declspec(dllimport)
#ifdef VeltoXGisCore_EXPORTS
#define VELTOGIS_CORE_API VELTOGIS_DLL_EXPORT
#else
#define VELTOGIS_CORE_API VELTOGIS_DLL_IMPORT
#endif
#ifdef VeltoXImportExportCore_EXPORTS
#define VELTOGIS_IMPEX_API VELTOGIS_DLL_EXPORT
#else
#define VELTOGIS_IMPEX_API VELTOGIS_DLL_IMPORT
#endif
#ifdef VeltoXCadShim_EXPORTS
#define VELTOGIS_CAD_API VELTOGIS_DLL_EXPORT
#else
#define VELTOGIS_CAD_API VELTOGIS_DLL_IMPORT
#endif
#define TESSEL_EXPORT extern "C" __declspec(dllexport)
#else
#define VELTOGIS_CORE_API __attribute__((visibility("default")))
#define VELTOGIS_IMPEX_API VELTOGIS_CORE_API
#define VELTOGIS_CAD_API VELTOGIS_CORE_API
#define TESSEL_EXPORT extern "C" __attribute__((visibility("default")))
#endif
