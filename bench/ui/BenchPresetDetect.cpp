// bench-preset-detect: times Detect as the wizard and "tessel --preset auto" run it on a
// file: reading the preview lines (the first 999 that are not comments, never the rest of the
// file), then every shipped preset tried with every delimiter. Prints processor and wall
// seconds of each step, and how many lines and bytes the preview took.

#include "bench/common/BenchClocks.h"
#include "host/Utf8.h"
#include "ui/PresetDetect.h"

#include <cstdio>
#include <cstring>

int main(int argc, char** argv)
{
    if (argc != 2 || std::strcmp(argv[1], "--help") == 0) {
        std::fputs("usage: bench-preset-detect FILE\n\nReads FILE's preview lines and tries every shipped survey "
                   "preset on them.\n",
                   stderr);
        return 2;
    }
    const WString path = FromUtf8(argv[1]);
    std::vector<DetectLine> lines;
    double cpu = ProcessCpuSeconds(), wall = WallSeconds();
    if (!ReadDetectLines(path, WTEXT("#"), lines)) {
        std::fprintf(stderr, "bench-preset-detect: cannot read '%s'\n", argv[1]);
        return 1;
    }
    const double readCpu = ProcessCpuSeconds() - cpu, readWall = WallSeconds() - wall;
    std::size_t bytes = 0;
    for (const DetectLine& line : lines)
        bytes += line.text.size();

    cpu = ProcessCpuSeconds();
    wall = WallSeconds();
    const DetectResult result = DetectPresets(lines, ShippedPresets());
    const double detectCpu = ProcessCpuSeconds() - cpu, detectWall = WallSeconds() - wall;

    std::printf("preview lines  %8.4f s cpu (%8.4f s wall)   %zu lines, %zu characters, last line %llu\n", readCpu,
                readWall, lines.size(), bytes, lines.empty() ? 0ULL : static_cast<unsigned long long>(lines.back().number));
    std::printf("detect         %8.4f s cpu (%8.4f s wall)   %zu fitting, %zu rejected, %s\n", detectCpu, detectWall,
                result.fitting.size(), result.rejected.size(), result.decided ? "decided" : "not decided");
    std::printf("total          %8.4f s cpu (%8.4f s wall)\n", readCpu + detectCpu, readWall + detectWall);
    for (const DetectCandidate& candidate : result.fitting)
        std::printf("  fits: %s (%s)\n", ToUtf8(candidate.preset->name).c_str(),
                    ToUtf8(DelimiterName(candidate.delimiter)).c_str());
    return 0;
}
