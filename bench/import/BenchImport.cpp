// bench-import: times ImportCloud and ImportPoints of the text import engine on a survey file
// (name x y z code, as tessel-gen-survey writes it) beside the practical limit: a minimal
// two-pass loop that counts the line feeds, then widens every line to UTF-16, splits it and
// converts x and y with the same CUtility::AtoF. Prints lines/s, MB/s, the ratio to the
// limit, peak memory of the cloud import and memory per imported point. Speeds are taken
// from the processor time of the process (the machine is shared); wall time is shown beside.

#include "bench/common/BenchClocks.h"
#include "host/GisUtility.h"
#include "host/ImpexEngines.h"
#include "import/ColumnData.h"
#include "import/ImportEngine_Txt.h"
#include "import/ImportTxtConfiguration.h"
#include "import/ValueFactory.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace VeltoGis::ImportExport;
using VeltoGis::Utility::CUtility;

namespace {

const char kUsage[] =
    "usage: bench-import FILE [--fixed] [--only limit|cloud|points|objects]\n"
    "\n"
    "FILE is a survey file of tessel-gen-survey (space-delimited; with --fixed one written\n"
    "with its --fixed option, read at the positions 10, 22, 35, 45). Runs, in this order, the\n"
    "limit loop, ImportCloud (X and Y bound, the cloud only counting) and ImportPoints (name,\n"
    "X, Y and the attributes z and code bound), each once, warm from the page cache.\n"
    "--only objects (never part of the default run) measures the floor that the host's own\n"
    "objects set for ImportPoints: it builds, without reading the file, one point per line\n"
    "with the name and the values that ImportPoints gives it, the same way (in the arena\n"
    "that the import makes them in).\n";

struct Options {
    std::string path;
    bool fixed = false;
    std::string only;
};

struct Figure {
    double seconds = 0; // processor time of this process: the machine is shared
    unsigned long long lines = 0;
    double wallSeconds = 0;
};

// Kilobytes of a "VmRSS:" or "VmHWM:" line of /proc/self/status.
long StatusKilobytes(const char* key)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, std::strlen(key), key) == 0)
            return std::atol(line.c_str() + std::strlen(key));
    }
    return -1;
}

// Starts a new peak: from now on VmHWM reports the highest resident size reached.
void ResetPeakMemory()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

WString Widen(const std::string& text)
{
    return WString(text.begin(), text.end());
}

// The limit: a 1 MiB read() loop counting line feeds, then a second one that widens each
// line, cuts it into fields (runs of blanks as one; or at the fixed positions) and converts
// fields 1 and 2.
Figure LimitLoop(const Options& options, double& checksum)
{
    const double start = ProcessCpuSeconds();
    const double wallStart = WallSeconds();
    std::vector<char> block(1 << 20);
    Figure figure;
    int file = open(options.path.c_str(), O_RDONLY);
    for (ssize_t got; (got = read(file, block.data(), block.size())) > 0;)
        figure.lines += static_cast<unsigned long long>(std::count(block.data(), block.data() + got, '\n'));
    close(file);

    file = open(options.path.c_str(), O_RDONLY);
    WString line;
    std::vector<WString> fields(8);
    const std::size_t positions[] = {10, 22, 35, 45};
    auto processLine = [&]() {
        std::size_t count = 0;
        if (options.fixed) {
            std::size_t begin = 0;
            for (std::size_t end : positions) {
                fields[count++].assign(line, std::min(begin, line.size()), end - begin);
                begin = end;
            }
        } else {
            for (std::size_t i = 0; i < line.size() && count < fields.size();) {
                while (i < line.size() && line[i] == ' ')
                    ++i;
                const std::size_t begin = i;
                while (i < line.size() && line[i] != ' ')
                    ++i;
                if (i > begin)
                    fields[count++].assign(line, begin, i - begin);
            }
        }
        if (count > 2)
            checksum += CUtility::AtoF(fields[1].c_str()) + CUtility::AtoF(fields[2].c_str());
        line.clear();
    };
    for (ssize_t got; (got = read(file, block.data(), block.size())) > 0;) {
        for (ssize_t i = 0; i < got; ++i) {
            const char c = block[static_cast<std::size_t>(i)];
            if (c == '\n')
                processLine();
            else if (c != '\r')
                line.push_back(static_cast<WChar>(static_cast<unsigned char>(c)));
        }
    }
    if (!line.empty())
        processLine();
    close(file);
    figure.seconds = ProcessCpuSeconds() - start;
    figure.wallSeconds = WallSeconds() - wallStart;
    return figure;
}

WString Configuration(const Options& options)
{
    ImportTxtConfiguration configuration;
    configuration.SetTxtFile(Widen(options.path));
    configuration.SetComments(WTEXT("#"));
    if (options.fixed) {
        configuration.SetMode(1);
        configuration.GetPositions() = {10, 22, 35, 45};
    } else {
        configuration.SetDelimiters({WTEXT(" ")});
    }
    const struct {
        const WChar* name;
        int type;
    } columns[] = {{WTEXT("name"), 5005}, {WTEXT("x"), 5001}, {WTEXT("y"), 5001}, {WTEXT("z"), 5001},
                   {WTEXT("code"), 5005}};
    int no = 0;
    for (const auto& wanted : columns) {
        auto column = boost::make_shared<CColumnData>();
        column->SetNo(no++);
        column->SetName(wanted.name);
        column->SetType(wanted.type);
        column->SetOnOff(1);
        configuration.GetColumns().push_back(column);
    }
    return configuration.ToXml();
}

CImportDefinition Job(const Options& options, const std::vector<std::pair<const WChar*, const WChar*>>& binds)
{
    CImportDefinition job;
    refhost::SetEntityType(job, VeltoGis::EntityTypePoint);
    job.SetImporterConfiguration(Configuration(options).c_str());
    auto collection = boost::make_shared<CDataBindCollection>();
    for (const auto& bind : binds)
        refhost::AddBind(*collection, boost::make_shared<CDataBind>(bind.first, bind.second));
    refhost::SetDBCollection(job, collection);
    return job;
}

unsigned long long CountLineFeeds(const std::string& path)
{
    std::vector<char> block(1 << 20);
    unsigned long long lines = 0;
    const int file = open(path.c_str(), O_RDONLY);
    for (ssize_t got; (got = read(file, block.data(), block.size())) > 0;)
        lines += static_cast<unsigned long long>(std::count(block.data(), block.data() + got, '\n'));
    close(file);
    return lines;
}

// The host objects of ImportPoints alone: a point with room for its values, a name of eight
// characters, that name as a text value, three real values and a short text value.
Figure HostObjects(unsigned long long count, ImpexEntityList& points)
{
    const double start = ProcessCpuSeconds(), wallStart = WallSeconds();
    ValueFactory values;
    points.reserve(count);
    const WString code = WTEXT("WALL");
    WString name = WTEXT("P1234567");
    for (unsigned long long i = 0; i < count; ++i) {
        auto point = values.NewEntity<CImpexPoint>(5);
        name[1] = WChar('1' + i % 9);
        point->SetName(name.c_str());
        point->AddData(values.FieldValue(&name, kColumnText));
        for (double real : {600822.465, 5823673.743, 890.590})
            point->AddData(values.RealValue(real));
        point->AddData(values.FieldValue(&code, kColumnText));
        point->SetPosition(AcGePoint3d(600822.465, 5823673.743, 0.0));
        points.push_back(std::move(point));
    }
    return Figure{ProcessCpuSeconds() - start, count, WallSeconds() - wallStart};
}

void Report(const char* name, const Figure& figure, double megabytes, const Figure* limit)
{
    std::printf("%-14s %7.3f s cpu (%7.3f s wall) %10.0f lines/s %7.1f MB/s", name, figure.seconds,
                figure.wallSeconds, figure.lines / figure.seconds, megabytes / figure.seconds);
    if (limit)
        std::printf("   %5.1f %% of the limit's speed", 100.0 * limit->seconds / figure.seconds);
    std::printf("\n");
}

bool ParseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--fixed")
            options.fixed = true;
        else if (argument == "--only" && i + 1 < argc)
            options.only = argv[++i];
        else if (!argument.empty() && argument[0] != '-' && options.path.empty())
            options.path = argument;
        else
            return false;
    }
    return !options.path.empty();
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    struct stat status;
    if (stat(options.path.c_str(), &status) != 0) {
        std::fprintf(stderr, "bench-import: cannot read %s\n", options.path.c_str());
        return 1;
    }
    const double megabytes = static_cast<double>(status.st_size) / 1e6;
    std::printf("%s: %.1f MB, %s\n", options.path.c_str(), megabytes, options.fixed ? "fixed width" : "delimited");

    if (options.only == "objects") {
        ImpexEntityList points;
        const long before = StatusKilobytes("VmRSS:");
        const Figure figure = HostObjects(CountLineFeeds(options.path), points);
        const long after = StatusKilobytes("VmRSS:");
        Report("host objects", figure, megabytes, nullptr);
        std::printf("               %zu points, %.0f bytes per point\n", points.size(),
                    points.empty() ? 0.0 : (after - before) * 1024.0 / points.size());
        std::fflush(stdout);
        std::_Exit(0);
    }

    CImportEngine_Txt engine;
    Figure limit;
    bool haveLimit = false;
    if (options.only.empty() || options.only == "limit") {
        double checksum = 0;
        limit = LimitLoop(options, checksum);
        haveLimit = true;
        Report("limit loop", limit, megabytes, nullptr);
        std::printf("               checksum %.6g\n", checksum);
    }

    if (options.only.empty() || options.only == "cloud") {
        auto job = Job(options, {{WTEXT("x"), WTEXT("NODE_COORDINATE_X")}, {WTEXT("y"), WTEXT("NODE_COORDINATE_Y")}});
        auto cloud = boost::make_shared<CCloud>(CCloud::Storage::CountOnly);
        ResetPeakMemory();
        const double start = ProcessCpuSeconds(), wallStart = WallSeconds();
        const int result = engine.ImportCloud(&job, cloud);
        Figure figure{ProcessCpuSeconds() - start, refhost::PointCountOf(*cloud), WallSeconds() - wallStart};
        Report("ImportCloud", figure, megabytes, haveLimit ? &limit : nullptr);
        std::printf("               result %d, %zu points, checksum %016llx, peak memory %.1f MB\n", result,
                    refhost::PointCountOf(*cloud), static_cast<unsigned long long>(refhost::ChecksumOf(*cloud)),
                    StatusKilobytes("VmHWM:") / 1024.0);
    }

    if (options.only.empty() || options.only == "points") {
        auto job = Job(options, {{WTEXT("name"), WTEXT("ENTITY_NAME")},
                                 {WTEXT("x"), WTEXT("NODE_COORDINATE_X")},
                                 {WTEXT("y"), WTEXT("NODE_COORDINATE_Y")},
                                 {WTEXT("z"), WTEXT("HEIGHT")},
                                 {WTEXT("code"), WTEXT("CODE")}});
        ImpexEntityList points;
        const long before = StatusKilobytes("VmRSS:");
        const double start = ProcessCpuSeconds(), wallStart = WallSeconds();
        const int result = engine.ImportPoints(&job, points, 0, nullptr);
        Figure figure{ProcessCpuSeconds() - start, points.size(), WallSeconds() - wallStart};
        const long after = StatusKilobytes("VmRSS:");
        Report("ImportPoints", figure, megabytes, haveLimit ? &limit : nullptr);
        std::printf("               result %d, %zu points, %.0f bytes per point (resident growth %.1f MB)\n", result,
                    points.size(), points.empty() ? 0.0 : (after - before) * 1024.0 / points.size(),
                    (after - before) / 1024.0);
        // The points are left to the end of the process: freeing millions of them one by
        // one is not part of the import and would only lengthen the run.
        std::fflush(stdout);
        std::_Exit(0);
    }
    return 0;
}
