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

    // Reference host: what the bar was told, for tests.
    enum class CallKind { SaveState, Show, SetPosition, Hide, RestoreState };
    struct Call {
        CallKind kind;
        int value = 0;  // the position of SetPosition; the lower bound of Show
        int upper = 0;  // the upper bound of Show
        WString text;   // the text of Show
    };
    // Recording is off until a test starts it; while it is off nothing accumulates.
    void StartRecording();
    void StopRecording();
    const std::vector<Call>& RecordedCalls() const { return calls_; }
    bool IsShown() const { return shown_; }
    int Position() const { return position_; }
    // The upper bound of the last Show, which RestoreState leaves alone: how many steps the
    // last run announced (for an import, the lines of its file).
    int LastShownUpper() const { return lastShownUpper_; }
    // Draws on stderr when it is a terminal and drawing is enabled (the host application
    // enables it unless told to be quiet).
    void EnableDrawing(bool enable);

private:
    CCoreProgressBar();
    void Draw(bool final);

    std::vector<Call> calls_;
    bool recording_ = false;
    bool drawing_ = false;
    bool terminal_ = false;
    bool shown_ = false;
    bool savedShown_ = false;
    int lower_ = 0;
    int upper_ = 0;
    int position_ = 0;
    int lastShownUpper_ = 0;
    int nextDrawPosition_ = 0;
    long long lastDrawMicroseconds_ = 0;
    WString text_;
    // The bar as SaveState found it, for RestoreState.
    WString savedText_;
    int savedLower_ = 0;
    int savedUpper_ = 0;
    int savedPosition_ = 0;
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
