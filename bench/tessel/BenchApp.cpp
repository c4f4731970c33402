// bench-app: runs the tessel binary as a user runs it on a survey file of tessel-gen-survey
// (name x y z code) and reports records per second of processor time (user + system of the
// child: the machine is shared), wall time and peak memory, beside the engine's own speed as
// bench-import measures it on the same file. tessel's figure includes everything the user
// waits for: starting, loading the module, the engine's two passes, writing the output.

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

const char kUsage[] = "usage: bench-app FILE [--tessel PATH] [--bench-import PATH] [--no-engine] [--gis FOLDER]\n"
                      "                 [--repeat N]\n"
                      "\n"
                      "FILE is a space-delimited survey file of tessel-gen-survey. Runs, each once:\n"
                      "  bench-import FILE --only points, and --only cloud (the engine's figures)\n"
                      "  tessel import points FILE ... -o /dev/null                  (JSON Lines)\n"
                      "  tessel import points FILE ... -o /dev/null --format geojson (GeoJSON)\n"
                      "  tessel import cloud FILE ... -o /dev/null                   (JSON Lines)\n"
                      "With --gis, writes into FOLDER (files, as GIS datasets need them):\n"
                      "  tessel import points FILE ... -o FOLDER/bench.geojson, .fgb, .gpkg (--crs EPSG:25833)\n"
                      "  tessel import points FILE ... -o FOLDER/bench.csv, then ogr2ogr of that CSV to GeoPackage\n"
                      "and compares GeoPackage with ogr2ogr, FlatGeobuf with GeoJSON (the medians of N runs\n"
                      "each, 3 unless given, in turn and in alternating order).\n"
                      "tessel and bench-import are looked for beside bench-app unless given.\n";

struct Run {
    double cpuSeconds = 0; // user and system
    double systemSeconds = 0;
    double wallSeconds = 0;
    long peakKilobytes = 0;
    int status = -1;
    std::string output;
};

// The folder bench-app was started from, where the build puts tessel and bench-import too.
std::string ProgramFolder(const char* program)
{
    const std::string path = program;
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, slash);
}

double Seconds(const timeval& time) { return static_cast<double>(time.tv_sec) + time.tv_usec * 1e-6; }

// Runs the program with its standard output captured in a file and its standard error
// passed through; processor time and peak memory are the child's own.
Run Spawn(const std::vector<std::string>& words)
{
    char outputPath[] = "/tmp/bench-app-XXXXXX";
    const int outputFile = mkstemp(outputPath);
    std::vector<char*> argv;
    std::vector<std::string> copy = words;
    for (std::string& word : copy)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, outputFile, STDOUT_FILENO);
    Run run;
    const auto started = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0) {
        int status = 0;
        rusage usage{};
        wait4(child, &status, 0, &usage);
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        run.cpuSeconds = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
        run.systemSeconds = Seconds(usage.ru_stime);
        run.peakKilobytes = usage.ru_maxrss;
    }
    run.wallSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    posix_spawn_file_actions_destroy(&actions);
    lseek(outputFile, 0, SEEK_SET);
    char block[4096];
    for (ssize_t got; (got = read(outputFile, block, sizeof block)) > 0;)
        run.output.append(block, static_cast<std::size_t>(got));
    close(outputFile);
    unlink(outputPath);
    return run;
}

// Records: lines that are not comments ('#' first), as the engine counts points.
unsigned long long CountRecords(const std::string& path, double& megabytes)
{
    const int file = open(path.c_str(), O_RDONLY);
    if (file < 0)
        return 0;
    std::vector<char> block(1 << 20);
    unsigned long long records = 0, bytes = 0;
    bool lineStart = true, comment = false;
    for (ssize_t got; (got = read(file, block.data(), block.size())) > 0;) {
        bytes += static_cast<unsigned long long>(got);
        for (ssize_t i = 0; i < got; ++i) {
            if (lineStart)
                comment = block[i] == '#';
            lineStart = block[i] == '\n';
            if (lineStart && !comment)
                ++records;
        }
    }
    close(file);
    megabytes = static_cast<double>(bytes) / 1e6;
    return records;
}

// The "lines/s" figure of one bench-import report line ("ImportPoints ... 534309 lines/s").
double EngineLinesPerSecond(const std::string& report, const char* name)
{
    const auto line = report.find(name);
    if (line == std::string::npos)
        return 0;
    const auto unit = report.find(" lines/s", line);
    if (unit == std::string::npos)
        return 0;
    const auto start = report.rfind(' ', unit - 1);
    return std::atof(report.substr(start + 1, unit - start - 1).c_str());
}

// Runs bench-import on one builder and prints its figure; the lines/s it reports.
double EngineFigure(const std::string& benchImport, const std::string& file, const char* only, const char* name)
{
    const Run run = Spawn({benchImport, file, "--only", only});
    const double speed = EngineLinesPerSecond(run.output, name);
    const std::string label = std::string("engine ") + name + " (bench-import)";
    std::printf("%-38s %7.3f s cpu in all %24.0f lines/s  peak %7.1f MB\n", label.c_str(), run.cpuSeconds, speed,
                run.peakKilobytes / 1024.0);
    return speed;
}

void Report(const char* name, const Run& run, unsigned long long records, double engine)
{
    if (run.status != 0) {
        std::printf("%-38s failed with status %d\n", name, run.status);
        return;
    }
    const double speed = records / run.cpuSeconds;
    std::printf("%-38s %7.3f s cpu (%6.3f system, %7.3f s wall) %10.0f lines/s  peak %7.1f MB", name, run.cpuSeconds,
                run.systemSeconds, run.wallSeconds, speed, run.peakKilobytes / 1024.0);
    if (engine > 0)
        std::printf("   %5.1f %% of the engine's speed", 100.0 * speed / engine);
    std::printf("\n");
    std::fflush(stdout);
}

// The run of median processor time.
Run Median(std::vector<Run> runs)
{
    std::sort(runs.begin(), runs.end(), [](const Run& a, const Run& b) { return a.cpuSeconds < b.cpuSeconds; });
    return runs[runs.size() / 2];
}

// The same points as GeoJSON, FlatGeobuf and GeoPackage files, and through GDAL's own
// converter from CSV to GeoPackage; figures in processor time, the ratios the targets name.
// GeoJSON and FlatGeobuf are written repeat times each, in turn and in alternating order:
// their system time (the kernel's fresh pages, for the records and the file) swings by
// seconds between identical runs, with how recently the memory a run gets was freed.
int CompareGisOutputs(std::vector<std::string> points, const std::string& folder, unsigned long long records,
                      int repeat)
{
    const auto to = [&points, &folder](const char* name) {
        std::vector<std::string> words = points;
        words.back() = folder + "/" + name;
        words.insert(words.end(), {"--crs", "EPSG:25833"});
        return words;
    };
    std::vector<Run> geoJsonRuns, flatGeobufRuns;
    for (int round = 0; round < repeat; ++round) {
        const bool geoJsonFirst = round % 2 == 0;
        for (const bool writeGeoJson : {geoJsonFirst, !geoJsonFirst}) {
            const std::string label = std::string("tessel import points -> ") + (writeGeoJson ? ".geojson" : ".fgb") +
                                      " (" + std::to_string(round + 1) + ")";
            const Run run = Spawn(to(writeGeoJson ? "bench.geojson" : "bench.fgb"));
            Report(label.c_str(), run, records, 0);
            (writeGeoJson ? geoJsonRuns : flatGeobufRuns).push_back(run);
        }
    }
    const Run geoJson = Median(geoJsonRuns), flatGeobuf = Median(flatGeobufRuns);
    const Run geoPackage = Spawn(to("bench.gpkg"));
    Report("tessel import points -> .gpkg", geoPackage, records, 0);
    std::vector<std::string> csv = to("bench.csv");
    csv.resize(csv.size() - 2);
    Report("tessel import points -> .csv", Spawn(csv), records, 0);
    unlink((folder + "/ogr2ogr.gpkg").c_str());
    const Run converter = Spawn({"/usr/bin/ogr2ogr", "-f", "GPKG", folder + "/ogr2ogr.gpkg", folder + "/bench.csv",
                                 "-oo", "X_POSSIBLE_NAMES=x", "-oo", "Y_POSSIBLE_NAMES=y", "-oo", "AUTODETECT_TYPE=YES",
                                 "-a_srs", "EPSG:25833", "-nln", "bench"});
    Report("ogr2ogr .csv -> .gpkg", converter, records, 0);
    if (geoPackage.status != 0 || converter.status != 0 || flatGeobuf.status != 0 || geoJson.status != 0)
        return 1;
    std::printf("GeoPackage: ogr2ogr takes %.2f x tessel's processor time (%.2f x its wall time)\n",
                converter.cpuSeconds / geoPackage.cpuSeconds, converter.wallSeconds / geoPackage.wallSeconds);
    std::printf("FlatGeobuf: GeoJSON takes %.2f x FlatGeobuf's processor time (%.2f x its wall time), medians of %d\n",
                geoJson.cpuSeconds / flatGeobuf.cpuSeconds, geoJson.wallSeconds / flatGeobuf.wallSeconds, repeat);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string folder = ProgramFolder(argv[0]);
    std::string file, tessel = folder + "/tessel", benchImport = folder + "/bench-import";
    std::string gisFolder;
    bool engine = true;
    int repeat = 3;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--tessel" && i + 1 < argc)
            tessel = argv[++i];
        else if (argument == "--bench-import" && i + 1 < argc)
            benchImport = argv[++i];
        else if (argument == "--gis" && i + 1 < argc)
            gisFolder = argv[++i];
        else if (argument == "--repeat" && i + 1 < argc && std::atoi(argv[i + 1]) > 0)
            repeat = std::atoi(argv[++i]);
        else if (argument == "--no-engine")
            engine = false;
        else if (file.empty() && !argument.empty() && argument[0] != '-')
            file = argument;
        else
            file.clear(), i = argc;
    }
    if (file.empty()) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    double megabytes = 0;
    const unsigned long long records = CountRecords(file, megabytes);
    if (records == 0) {
        std::fprintf(stderr, "bench-app: cannot read %s, or it holds no records\n", file.c_str());
        return 1;
    }
    std::printf("%s: %.1f MB, %llu records\n", file.c_str(), megabytes, records);

    const std::vector<std::string> points = {tessel,
                                             "-q",
                                             "import",
                                             "points",
                                             file,
                                             "--column",
                                             "name",
                                             "--column",
                                             "x:real",
                                             "--column",
                                             "y:real",
                                             "--column",
                                             "z:real",
                                             "--column",
                                             "code",
                                             "--bind",
                                             "name=ENTITY_NAME",
                                             "--bind",
                                             "x=NODE_COORDINATE_X",
                                             "--bind",
                                             "y=NODE_COORDINATE_Y",
                                             "--bind",
                                             "z=HEIGHT",
                                             "--bind",
                                             "code=CODE",
                                             "-o",
                                             "/dev/null"};
    std::vector<std::string> geoJson = points;
    geoJson.insert(geoJson.end(), {"--format", "geojson"});
    const std::vector<std::string> cloud = {tessel,
                                            "-q",
                                            "import",
                                            "cloud",
                                            file,
                                            "--column",
                                            "name",
                                            "--column",
                                            "x:real",
                                            "--column",
                                            "y:real",
                                            "--bind",
                                            "x=NODE_COORDINATE_X",
                                            "--bind",
                                            "y=NODE_COORDINATE_Y",
                                            "-o",
                                            "/dev/null"};

    double enginePoints = 0, engineCloud = 0;
    if (engine)
        enginePoints = EngineFigure(benchImport, file, "points", "ImportPoints");
    Report("tessel import points -> .jsonl", Spawn(points), records, enginePoints);
    Report("tessel import points -> GeoJSON", Spawn(geoJson), records, enginePoints);
    if (engine)
        engineCloud = EngineFigure(benchImport, file, "cloud", "ImportCloud");
    Report("tessel import cloud -> .jsonl", Spawn(cloud), records, engineCloud);
    if (!gisFolder.empty())
        return CompareGisOutputs(points, gisFolder, records, repeat);
    return 0;
}
