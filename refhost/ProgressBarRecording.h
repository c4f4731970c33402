#pragma once
// The reference host's progress bar as the host application and tests see it beyond the
// framework's interface: what the bar was told, its state, and drawing on the terminal.

#include "host/HostApi.h"
#include "host/Text.h"

#include <vector>

namespace refhost {

enum class ProgressCallKind { SaveState, Show, SetPosition, Hide, RestoreState };

struct ProgressCall {
    ProgressCallKind kind;
    int value = 0; // the position of SetPosition; the lower bound of Show
    int upper = 0; // the upper bound of Show
    WString text;  // the text of Show
};

// Recording is off until started; while it is off nothing accumulates. Starting forgets
// what an earlier recording kept.
VELTOGIS_CORE_API void StartProgressRecording();
VELTOGIS_CORE_API void StopProgressRecording();
VELTOGIS_CORE_API const std::vector<ProgressCall>& RecordedProgressCalls();

VELTOGIS_CORE_API bool ProgressBarShown();
VELTOGIS_CORE_API int ProgressBarPosition();
// The upper bound of the last Show, which RestoreState leaves alone: how many steps the last
// run announced (for an import, the lines of its file).
VELTOGIS_CORE_API int LastShownProgressUpper();

// Draws the bar on stderr when it is a terminal (the host application enables it unless told
// to be quiet).
VELTOGIS_CORE_API void EnableProgressDrawing(bool enable);

} // namespace refhost
