#pragma once
// The GIS framework's process-wide services (VeltoXGisCore): the progress bar, the module's
// message texts and icons, and static helpers.

#include "host/HostApi.h"
#include "host/Text.h"

#include <vector>

namespace VeltoGis {

using CStringArray = std::vector<WString>;
using HostIcon = void*;

// The host's per-module resources: user-visible texts by number, icons and images by name.
class VELTOGIS_CORE_API CModuleConfiguration {
public:
    static CModuleConfiguration* Instance();
    // The text with that number; "" for a number the host does not know.
    WString GetMsg(unsigned int id) const;
    HostIcon GetIcon(const WChar* name) const;
    HostIcon LoadImageW(const WChar* name, unsigned int type, int cx, int cy, unsigned int flags) const;

private:
    CModuleConfiguration() = default;
};

namespace Utility {

// The host's single progress bar. Not locked: driven from the user-interface thread only.
class VELTOGIS_CORE_API CCoreProgressBar {
public:
    static CCoreProgressBar* Instance();

    void SaveState();
    void Show(const WChar* text, int lower, int upper);
    void SetPosition(int position);
    void Hide();
    void RestoreState();

private:
    CCoreProgressBar() = default;
};

class VELTOGIS_CORE_API CUtility {
public:
    // Converts a field text to a number, without regard to the locale: leading blanks are
    // skipped, then the longest decimal number is read ('.' or ',' as the decimal separator,
    // optional exponent); text without a number gives 0.0. Exact to the last bit.
    static double AtoF(const WChar* text);
    // Non-zero when a file (not a folder) exists at the path.
    static int FileExists(const WChar* path, int flags);
    // Index of the first entry equal to text, or -1.
    static int GetStringIndex(CStringArray& strings, const WChar* text);
};

} // namespace Utility
} // namespace VeltoGis
