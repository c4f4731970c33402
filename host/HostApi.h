#pragma once
// Marks the classes and functions that the host's shared libraries export. The module is
// built with hidden visibility; everything it takes from the host must stay visible so that
// vtables and type information exist once, in the host's libraries.

namespace VeltoGis {
// The framework's own implementation, which reaches the state behind the classes it hands to
// modules; modules see only this declaration.
class HostSide;
} // namespace VeltoGis

#if defined(_WIN32)
#define VELTOGIS_API __declspec(dllimport)
#define TESSEL_EXPORT extern "C" __declspec(dllexport)
#else
#define VELTOGIS_API __attribute__((visibility("default")))
#define TESSEL_EXPORT extern "C" __attribute__((visibility("default")))
#endif
