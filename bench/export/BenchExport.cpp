// bench-export: how fast CExportEngine_Txt::ExportPoints writes point entities with five
// values each (text, reals, an integer), in ANSI and UTF-16LE, beside a plain write() loop
// of the very bytes the export wrote, in the same run. Also reports the memory the export
// takes beyond the entities, and the heap allocations it makes.

#include "bench/common/BenchClocks.h"
#include "export/EntityExport.h"
#include "export/ExportEngine_Txt.h"
#include "host/GisUtility.h"
#include "refhost/HostSide.h"
#include "ui/DialogFactory.h"

#include <boost/make_shared.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <new>
#include <string>

// Every heap allocation of the process is counted.
namespace {
unsigned long long allocations = 0;
}

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace {

using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;

const char kUsage[] = "usage: bench-export [--entities N] [--dir FOLDER] [--repeat N]\n"
                      "\n"
                      "Exports N point entities (default 1000000) with five values each through\n"
                      "ExportPoints into FOLDER (default $TMPDIR or /tmp), in ANSI and in UTF-16LE,\n"
                      "then writes the same bytes with a plain 4 KiB write() loop, and times the host's\n"
                      "own part alone (walking the entities, every value to text). Each time is the\n"
                      "best of --repeat runs (default 3), the three taken side by side in every run.\n";

struct Options {
    long entities = 1000000;
    std::string dir;
    int repeat = 3;
};

WString Widen(const std::string& text) { return WString(text.begin(), text.end()); }

// A survey point: name, easting, northing, height, code.
ImpexEntityList MakeEntities(long count)
{
    ImpexEntityList entities;
    entities.reserve(static_cast<std::size_t>(count));
    char name[32];
    for (long i = 0; i < count; ++i) {
        auto point = boost::make_shared<CImpexPoint>();
        std::snprintf(name, sizeof name, "P%07ld", i);
        const WString wideName = Widen(name);
        auto value = [&point](auto set) {
            auto box = boost::make_shared<CDataBox>();
            set(*box);
            point->AddData(box);
        };
        value([&](CDataBox& box) { box.SetValue(wideName.c_str()); });
        value([&](CDataBox& box) { box.SetValue((456789123.0 + 7.0 * static_cast<double>(i % 100000)) / 1000.0); });
        value([&](CDataBox& box) { box.SetValue((5123456789.0 + 3.0 * static_cast<double>(i % 100000)) / 1000.0); });
        value([&](CDataBox& box) { box.SetValue(static_cast<int>(300 + i % 50)); });
        value([&](CDataBox& box) { box.SetValue(i % 3 ? WTEXT("FENCE") : WTEXT("MANHOLE")); });
        entities.push_back(point);
    }
    return entities;
}

CExportDefinition MakeJob(const WString& path, int format)
{
    CExportDefinition definition;
    refhost::SetEntityType(definition, VeltoGis::EntityTypePoint);
    const WString configuration = WTEXT("<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"") + path +
                                  WTEXT("\" comment=\"#\" delimiter=\";\" header=\"1\" format=\"") +
                                  (format ? WTEXT("1") : WTEXT("0")) + WTEXT("\"/>");
    definition.SetExporterConfiguration(configuration.c_str());
    auto binds = boost::make_shared<CDataBindCollection>();
    for (const WChar* target : {WTEXT("NAME"), WTEXT("X"), WTEXT("Y"), WTEXT("H"), WTEXT("CODE")})
        refhost::AddBind(*binds, boost::make_shared<CDataBind>(target, target));
    refhost::SetDBCollection(definition, binds);
    return definition;
}

// A memory figure of /proc/self/status in KiB: "VmRSS" now, "VmHWM" the peak since the
// last reset (Linux: clear_refs 5); -1 when the system has none.
long StatusKiB(const std::string& field)
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind(field + ":", 0) == 0)
            return std::atol(line.c_str() + field.size() + 1);
    }
    return -1;
}
long ResidentKiB() { return StatusKiB("VmRSS"); }
long PeakResidentKiB() { return StatusKiB("VmHWM"); }
void ResetPeakResident() { std::ofstream("/proc/self/clear_refs") << "5"; }

std::string ReadBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

double PlainWrite(const std::string& path, const std::string& bytes)
{
    const double start = WallSeconds();
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0)
        return 0;
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = ::write(fd, bytes.data() + done, std::min<std::size_t>(4096, bytes.size() - done));
        if (written <= 0)
            break;
        done += static_cast<std::size_t>(written);
    }
    ::close(fd);
    return WallSeconds() - start;
}

// New files only: the export never has to ask what to do with an existing one.
class NoQuestions final : public DialogFactory {
public:
    int RunImportConfiguration(CImportDefinition*, int, const WChar*) override { return ModalResultCancel; }
    int RunExportConfiguration(CExportDefinition*, int) override { return ModalResultCancel; }
    int RunFileChoice(const WChar*) override { return FileChoiceOverwrite; }
};

// Values whose text form is too long for the string's inline storage: the host allocates
// for each of them when it turns the value into text.
unsigned long long HostTextAllocations(const ImpexEntityList& entities)
{
    const std::size_t inlineCapacity = WString().capacity();
    unsigned long long count = 0;
    for (const auto& entity : entities) {
        for (const auto& value : *entity->GetData())
            count += static_cast<WString>(*value).size() > inlineCapacity ? 1 : 0;
    }
    return count;
}

// The entities' values as the export reads them, fetching ahead the same way.
class ValuesInOrder final : public ImpexEntityValues {
public:
    using ImpexEntityValues::ImpexEntityValues;
    bool CanServe(const ExportBindList&) const override { return true; }
    CDataBox* ValueOf(std::size_t entity, std::size_t column, const CDataBind*) override
    {
        return (*ValuesOf(entity))[column].get();
    }
};

// What every export of these entities must do whatever it writes: walk the entities, read
// each value and have the host turn it into text. In seconds.
double HostFloor(ImpexEntityList& entities)
{
    ValuesInOrder source(entities);
    std::size_t units = 0;
    const double start = WallSeconds();
    for (std::size_t entity = 0; entity < source.EntityCount(); ++entity) {
        for (std::size_t column = 0; column < 5; ++column) {
            CDataBox* value = source.ValueOf(entity, column, nullptr);
            if (value->IsNotNull())
                units += static_cast<WString>(*value).size();
        }
    }
    const double seconds = WallSeconds() - start;
    return units > 0 ? seconds : 0;
}

bool ParseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 < argc && arg == "--entities")
            options.entities = std::atol(argv[++i]);
        else if (i + 1 < argc && arg == "--dir")
            options.dir = argv[++i];
        else if (i + 1 < argc && arg == "--repeat")
            options.repeat = std::max(1, std::atoi(argv[++i]));
        else
            return false;
    }
    if (options.dir.empty()) {
        const char* tmp = std::getenv("TMPDIR");
        options.dir = tmp && *tmp ? tmp : "/tmp";
    }
    return options.entities > 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    NoQuestions answers;
    InstallDialogFactory(&answers);

    const long residentBefore = ResidentKiB();
    const double buildStart = WallSeconds();
    const ImpexEntityList entities = MakeEntities(options.entities);
    ImpexEntityList& input = const_cast<ImpexEntityList&>(entities);
    std::printf("entities: %ld points, 5 values each, built in %.2f s, %ld MiB resident for them\n", options.entities,
                WallSeconds() - buildStart, (ResidentKiB() - residentBefore) / 1024);

    const unsigned long long hostAllocations = HostTextAllocations(entities);
    std::printf("host: %llu of the values' texts need the heap\n\n", hostAllocations);

    std::printf("%-8s %-8s %10s %12s %10s %8s\n", "format", "writer", "MB", "lines/s", "MB/s", "of plain");
    for (const int format : {0, 1}) {
        const std::string exported = options.dir + "/bench-export-" + std::to_string(getpid()) + ".txt";
        const std::string plain = exported + ".plain";
        CExportEngine_Txt engine;
        double best = 1e9, hostFloor = 1e9, plainBest = 1e9;
        unsigned long long exportAllocations = 0;
        long peakGrowth = 0;
        std::string bytes;
        // The three are taken side by side in every run, so that all see the machine alike.
        for (int run = 0; run < options.repeat; ++run) {
            hostFloor = std::min(hostFloor, HostFloor(input));
            ::unlink(exported.c_str());
            CExportDefinition job = MakeJob(Widen(exported), format);
            const long resident = ResidentKiB();
            ResetPeakResident();
            const unsigned long long allocationsBefore = allocations;
            const double start = WallSeconds();
            if (engine.ExportPoints(&job, input) != 1) {
                std::fprintf(stderr, "bench-export: the export to %s failed\n", exported.c_str());
                return 1;
            }
            best = std::min(best, WallSeconds() - start);
            exportAllocations = allocations - allocationsBefore;
            peakGrowth = PeakResidentKiB() - resident;
            if (bytes.empty())
                bytes = ReadBytes(exported);
            plainBest = std::min(plainBest, PlainWrite(plain, bytes));
        }
        ::unlink(exported.c_str());
        ::unlink(plain.c_str());

        const double megabytes = static_cast<double>(bytes.size()) / 1e6;
        const double lines = static_cast<double>(options.entities + 1);
        const char* name = format ? "UTF-16LE" : "ANSI";
        std::printf("%-8s %-8s %10.1f %12.0f %10.1f %7.0f%%\n", name, "export", megabytes, lines / best,
                    megabytes / best, 100.0 * plainBest / best);
        std::printf("%-8s %-8s %10.1f %12.0f %10.1f\n", name, "write()", megabytes, lines / plainBest,
                    megabytes / plainBest);
        // One thread does both one after the other; a second one could at best hide the write.
        std::printf("         host floor (walk the entities, every value to text, nothing written) %.3f s;\n"
                    "         the most an export can reach: %.0f%% of the plain write's speed on one thread,"
                    " %.0f%% with the writing on another\n",
                    hostFloor, 100.0 * plainBest / (hostFloor + plainBest),
                    100.0 * plainBest / std::max(hostFloor, plainBest));
        std::printf("         memory: peak resident growth during the export %ld KiB\n", peakGrowth);
        std::printf("         heap: %llu allocations in the export, %llu of them the host's value texts, "
                    "%lld others\n",
                    exportAllocations, hostAllocations,
                    static_cast<long long>(exportAllocations) - static_cast<long long>(hostAllocations));
    }
    InstallDialogFactory(nullptr);
    return 0;
}
