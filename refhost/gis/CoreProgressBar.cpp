#include "host/GisUtility.h"
#include "host/Utf8.h"
#include "refhost/ProgressBarRecording.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <string>
#include <vector>

namespace VeltoGis {
namespace Utility {
namespace {

// At most this many clock reads per run, and at most one redraw per interval.
constexpr int kCheckpointsPerRun = 200;
constexpr long long kRedrawIntervalMicroseconds = 250000;
constexpr int kBarWidth = 30;
constexpr std::size_t kMaxTextUnits = 40;

long long NowMicroseconds()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

std::string RenderLine(const WString& text, int lower, int upper, int position)
{
    const long long span = static_cast<long long>(upper) - lower;
    const long long done = std::clamp(static_cast<long long>(position) - lower, 0LL, std::max(span, 0LL));
    const int percent = span > 0 ? static_cast<int>(done * 100 / span) : 100;
    const int filled = span > 0 ? static_cast<int>(done * kBarWidth / span) : kBarWidth;

    std::size_t units = std::min(text.size(), kMaxTextUnits);
    if (units > 0 && units < text.size() && text[units - 1] >= 0xD800 && text[units - 1] <= 0xDBFF)
        --units; // never cut a surrogate pair
    std::string line = "\r" + ToUtf8(text.data(), units) + " [";
    line.append(static_cast<std::size_t>(filled), '#');
    line.append(static_cast<std::size_t>(kBarWidth - filled), '.');
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "] %3d%% %lld/%lld", percent, done, std::max(span, 0LL));
    line += numbers;
    line += "\x1b[K"; // clear what a longer previous line left
    return line;
}

void WriteToTerminal(const std::string& bytes)
{
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
    std::fflush(stderr);
}

using refhost::ProgressCall;
using refhost::ProgressCallKind;

// The one bar's state. The bar is a process-wide singleton, so its state lives here rather
// than in the class the modules see.
struct BarState {
    std::vector<ProgressCall> calls;
    bool recording = false;
    bool drawing = false;
    bool terminal = isatty(STDERR_FILENO) == 1;
    bool shown = false;
    int lower = 0;
    int upper = 0;
    int position = 0;
    int lastShownUpper = 0;
    int nextDrawPosition = INT_MAX;
    long long lastDrawMicroseconds = 0;
    WString text;
    // The bar as SaveState found it, for RestoreState.
    bool savedShown = false;
    WString savedText;
    int savedLower = 0;
    int savedUpper = 0;
    int savedPosition = 0;
};

BarState& Bar()
{
    static BarState state;
    return state;
}

// Out of line, so that SetPosition's path without recording stays a few instructions.
[[gnu::noinline]] void Record(ProgressCallKind kind, int value, int upper, const WChar* text)
{
    Bar().calls.push_back({kind, value, upper, text});
}

void Record(ProgressCallKind kind, int value = 0) { Record(kind, value, 0, WTEXT("")); }

// final: the bar is going away, so its line is erased. Otherwise the bar is redrawn when
// the last redraw is long enough ago, and the next checkpoint position is set.
void Draw(BarState& bar, bool final)
{
    if (!bar.drawing || !bar.terminal) {
        bar.nextDrawPosition = INT_MAX;
        return;
    }
    if (final) {
        if (bar.lastDrawMicroseconds != 0)
            WriteToTerminal("\r\x1b[K");
        bar.lastDrawMicroseconds = 0;
        bar.nextDrawPosition = INT_MAX;
        return;
    }
    const long long now = NowMicroseconds();
    if (bar.lastDrawMicroseconds == 0 || now - bar.lastDrawMicroseconds >= kRedrawIntervalMicroseconds) {
        WriteToTerminal(RenderLine(bar.text, bar.lower, bar.upper, bar.position));
        bar.lastDrawMicroseconds = now;
    }
    const long long step = std::max(1LL, (static_cast<long long>(bar.upper) - bar.lower) / kCheckpointsPerRun);
    bar.nextDrawPosition = static_cast<int>(std::min<long long>(INT_MAX, bar.position + step));
}

} // namespace

CCoreProgressBar* CCoreProgressBar::Instance()
{
    static CCoreProgressBar bar;
    return &bar;
}

void CCoreProgressBar::SaveState()
{
    BarState& bar = Bar();
    if (bar.recording)
        Record(ProgressCallKind::SaveState);
    bar.savedShown = bar.shown;
    bar.savedText = bar.text;
    bar.savedLower = bar.lower;
    bar.savedUpper = bar.upper;
    bar.savedPosition = bar.position;
}

void CCoreProgressBar::Show(const WChar* text, int lower, int upper)
{
    BarState& bar = Bar();
    bar.text.assign(text ? text : WTEXT(""));
    if (bar.recording)
        Record(ProgressCallKind::Show, lower, upper, bar.text.c_str());
    bar.lower = lower;
    bar.upper = upper;
    bar.lastShownUpper = upper;
    bar.position = lower;
    bar.shown = true;
    bar.lastDrawMicroseconds = 0; // a new bar is drawn at once
    Draw(bar, false);
}

// Called once per line of files of millions of lines: one store and two compares unless a
// checkpoint is reached.
void CCoreProgressBar::SetPosition(int position)
{
    BarState& bar = Bar();
    bar.position = position;
    if (bar.recording)
        Record(ProgressCallKind::SetPosition, position);
    if (position >= bar.nextDrawPosition)
        Draw(bar, false);
}

void CCoreProgressBar::Hide()
{
    BarState& bar = Bar();
    if (bar.recording)
        Record(ProgressCallKind::Hide);
    if (bar.shown)
        Draw(bar, true);
    bar.shown = false;
    bar.nextDrawPosition = INT_MAX;
}

void CCoreProgressBar::RestoreState()
{
    BarState& bar = Bar();
    if (bar.recording)
        Record(ProgressCallKind::RestoreState);
    if (bar.shown && !bar.savedShown)
        Draw(bar, true);
    bar.shown = bar.savedShown;
    bar.text = bar.savedText;
    bar.lower = bar.savedLower;
    bar.upper = bar.savedUpper;
    bar.position = bar.savedPosition;
    bar.lastDrawMicroseconds = 0;
    if (bar.shown)
        Draw(bar, false);
}

} // namespace Utility
} // namespace VeltoGis

namespace refhost {

using VeltoGis::Utility::Bar;

void StartProgressRecording()
{
    Bar().calls.clear();
    Bar().recording = true;
}

void StopProgressRecording() { Bar().recording = false; }

const std::vector<ProgressCall>& RecordedProgressCalls() { return Bar().calls; }

bool ProgressBarShown() { return Bar().shown; }

int ProgressBarPosition() { return Bar().position; }

int LastShownProgressUpper() { return Bar().lastShownUpper; }

void EnableProgressDrawing(bool enable)
{
    auto& bar = Bar();
    if (!enable && bar.drawing && bar.shown)
        VeltoGis::Utility::Draw(bar, true);
    bar.drawing = enable;
    bar.lastDrawMicroseconds = 0;
    if (bar.shown)
        VeltoGis::Utility::Draw(bar, false);
}

} // namespace refhost
