// bench-import-preview: times the import wizard's preview as the user meets it, through the
// wizard's model without a display: opening on a file (the read-through of the whole file,
// then the first 999 lines cut into rows and the column list built), then reloads after
// delimiter changes (space on and off, alternately), and, with --fixed, after ruler clicks.
// Prints processor and wall seconds of each step and the process's peak memory.

#include "bench/common/BenchClocks.h"
#include "host/ImpexDefinitions.h"
#include "host/Utf8.h"
#include "ui/ImportConfigurationModel.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace {

const char kUsage[] =
    "usage: bench-import-preview FILE [--fixed] [--reloads N]\n"
    "\n"
    "Opens the import wizard's model on FILE (tab ticked), then reloads the preview N times\n"
    "(default 5) after ticking or unticking space. With --fixed the wizard is switched to\n"
    "fixed width and every reload follows a click on the ruler instead.\n";

struct Step {
    double cpu;
    double wall;
};

template <class Work>
Step Timed(Work work)
{
    const double cpu = ProcessCpuSeconds();
    const double wall = WallSeconds();
    work();
    return {ProcessCpuSeconds() - cpu, WallSeconds() - wall};
}

// The process's peak resident memory in MB (VmHWM).
double PeakMegabytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0)
            return std::stod(line.substr(6)) / 1024.0;
    }
    return 0;
}

void Print(const char* what, const Step& step, const ImportConfigurationModel& model)
{
    std::printf("%-28s %8.3f s cpu %8.3f s wall   %4zu rows %5zu columns\n", what, step.cpu, step.wall,
                model.Preview().Rows().size(), model.columns.size());
}

} // namespace

int main(int argc, char** argv)
{
    std::string path;
    bool fixed = false;
    int reloads = 5;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--fixed") == 0)
            fixed = true;
        else if (std::strcmp(argv[i], "--reloads") == 0 && i + 1 < argc)
            reloads = std::atoi(argv[++i]);
        else if (argv[i][0] != '-' && path.empty())
            path = argv[i];
        else
            return std::fputs(kUsage, stderr), 2;
    }
    if (path.empty())
        return std::fputs(kUsage, stderr), 2;

    VeltoGis::ImportExport::CImportDefinition definition;
    ImportConfigurationModel model(definition, false);
    const WString file = FromUtf8(path);
    Print("open", Timed([&] { model.Open(file.c_str()); }), model);
    if (model.Preview().LineCount() == 0) {
        std::fprintf(stderr, "bench-import-preview: %s: nothing to preview\n", path.c_str());
        return 1;
    }
    if (fixed)
        model.SetMode(ImportConfigurationModel::ModeFixedWidth);
    double worst = 0;
    for (int i = 0; i < reloads; ++i) {
        const Step step = Timed([&] {
            if (fixed) {
                model.ToggleBreakAt(10 + 10 * i);
            } else {
                model.space = !model.space;
                model.DelimitersChanged();
            }
        });
        worst = std::max(worst, step.wall);
        Print(fixed ? "reload after a ruler click" : "reload after a delimiter", step, model);
    }
    std::printf("slowest reload %.3f s wall; peak memory %.1f MB\n", worst, PeakMegabytes());
    return 0;
}
