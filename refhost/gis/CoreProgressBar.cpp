#include "host/GisUtility.h"
#include "refhost/Utf8.h"

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
    std::string line = "\r" + refhost::ToUtf8(text.data(), units) + " [";
    line.append(static_cast<std::size_t>(filled), '#');
    line.append(static_cast<std::size_t>(kBarWidth - filled), '.');
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "] %3d%% %lld/%lld", percent, done, std::max(span, 0LL));
    line += numbers;
    line += "\x1b[K"; // clear what a longer previous line left
    return line;
}

// Out of line, so that SetPosition's path without recording stays a few instructions.
[[gnu::noinline]] void Record(std::vector<CCoreProgressBar::Call>& calls, CCoreProgressBar::CallKind kind,
                              int value, int upper, const WChar* text)
{
    calls.push_back({kind, value, upper, text});
}

void Record(std::vector<CCoreProgressBar::Call>& calls, CCoreProgressBar::CallKind kind, int value = 0)
{
    Record(calls, kind, value, 0, WTEXT(""));
}

void WriteToTerminal(const std::string& bytes)
{
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
    std::fflush(stderr);
}

} // namespace

CCoreProgressBar* CCoreProgressBar::Instance()
{
    static CCoreProgressBar bar;
    return &bar;
}

CCoreProgressBar::CCoreProgressBar() : terminal_(isatty(STDERR_FILENO) == 1), nextDrawPosition_(INT_MAX) {}

void CCoreProgressBar::SaveState()
{
    if (recording_)
        Record(calls_, CallKind::SaveState);
    savedShown_ = shown_;
    savedText_ = text_;
    savedLower_ = lower_;
    savedUpper_ = upper_;
    savedPosition_ = position_;
}

void CCoreProgressBar::Show(const WChar* text, int lower, int upper)
{
    text_.assign(text ? text : WTEXT(""));
    if (recording_)
        Record(calls_, CallKind::Show, lower, upper, text_.c_str());
    lower_ = lower;
    upper_ = upper;
    lastShownUpper_ = upper;
    position_ = lower;
    shown_ = true;
    lastDrawMicroseconds_ = 0; // a new bar is drawn at once
    Draw(false);
}

// Called once per line of files of millions of lines: one store and two compares unless a
// checkpoint is reached.
void CCoreProgressBar::SetPosition(int position)
{
    position_ = position;
    if (recording_)
        Record(calls_, CallKind::SetPosition, position);
    if (position >= nextDrawPosition_)
        Draw(false);
}

void CCoreProgressBar::Hide()
{
    if (recording_)
        Record(calls_, CallKind::Hide);
    if (shown_)
        Draw(true);
    shown_ = false;
    nextDrawPosition_ = INT_MAX;
}

void CCoreProgressBar::RestoreState()
{
    if (recording_)
        Record(calls_, CallKind::RestoreState);
    if (shown_ && !savedShown_)
        Draw(true);
    shown_ = savedShown_;
    text_ = savedText_;
    lower_ = savedLower_;
    upper_ = savedUpper_;
    position_ = savedPosition_;
    lastDrawMicroseconds_ = 0;
    if (shown_)
        Draw(false);
}

void CCoreProgressBar::StartRecording()
{
    calls_.clear();
    recording_ = true;
}

void CCoreProgressBar::StopRecording() { recording_ = false; }

void CCoreProgressBar::EnableDrawing(bool enable)
{
    if (!enable && drawing_ && shown_)
        Draw(true);
    drawing_ = enable;
    lastDrawMicroseconds_ = 0;
    if (shown_)
        Draw(false);
}

// final: the bar is going away, so its line is erased. Otherwise the bar is redrawn when
// the last redraw is long enough ago, and the next checkpoint position is set.
void CCoreProgressBar::Draw(bool final)
{
    if (!drawing_ || !terminal_) {
        nextDrawPosition_ = INT_MAX;
        return;
    }
    if (final) {
        if (lastDrawMicroseconds_ != 0)
            WriteToTerminal("\r\x1b[K");
        lastDrawMicroseconds_ = 0;
        nextDrawPosition_ = INT_MAX;
        return;
    }
    const long long now = NowMicroseconds();
    if (lastDrawMicroseconds_ == 0 || now - lastDrawMicroseconds_ >= kRedrawIntervalMicroseconds) {
        WriteToTerminal(RenderLine(text_, lower_, upper_, position_));
        lastDrawMicroseconds_ = now;
    }
    const long long step = std::max(1LL, (static_cast<long long>(upper_) - lower_) / kCheckpointsPerRun);
    nextDrawPosition_ = static_cast<int>(std::min<long long>(INT_MAX, position_ + step));
}

} // namespace Utility
} // namespace VeltoGis
