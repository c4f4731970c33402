// bench-textfile: how fast TextFile reads a file, alone and with the per-line work of a
// delimited (or fixed-width) import, beside a plain read() loop over the same bytes.

#include "bench/common/BenchClocks.h"
#include "textfile/FieldSplit.h"
#include "textfile/TextFile.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const char kUsage[] =
    "usage: bench-textfile FILE [--delimiter C]... [--positions P,P,...] [--comments S] [--repeat N]\n"
    "\n"
    "Reads FILE (warm, from the page cache) and reports MB/s and lines/s, in CPU time of the\n"
    "process (user + system; wall time beside it), for:\n"
    "  plain        a 4 KiB read() loop counting line feed bytes\n"
    "  count        TextFile::CountLines (the import's counting pass)\n"
    "  readline     TextFile::ReadLine alone\n"
    "  split        ReadLine + comment test + NormalizeDelimitedLine (or the fixed-width\n"
    "               cut at --positions, computing only the fields up to the last position)\n"
    "Delimiters default to one space; --delimiter may be given several times ('\\t' for tab).\n"
    "Comments default to '#'. The passes run in turn, --repeat rounds (default 3), and each\n"
    "figure is the pass's best round.\n";

struct Options {
    std::string path;
    DelimiterList delimiters;
    PositionList positions;
    bool fixed = false;
    WString comments = WTEXT("#");
    int repeat = 3;
};

struct Result {
    double seconds = 0; // CPU time of the process (user + system)
    double wall = 0;
    unsigned long long lines = 0;
    unsigned long long check = 0; // keeps the work from being optimised away
};

struct Stopwatch {
    double cpu = ProcessCpuSeconds();
    double wall = WallSeconds();

    void Stop(Result& result) const
    {
        result.seconds = ProcessCpuSeconds() - cpu;
        result.wall = WallSeconds() - wall;
    }
};

WString Widen(const std::string& text)
{
    WString out;
    for (unsigned char c : text)
        out += static_cast<WChar>(c);
    return out;
}

Result PlainLoop(const std::string& path)
{
    Result result;
    const Stopwatch watch;
    const int fd = ::open(path.c_str(), O_RDONLY);
    if (fd < 0)
        return result;
    char buffer[4096];
    for (ssize_t n; (n = ::read(fd, buffer, sizeof(buffer))) > 0;)
        result.lines += static_cast<unsigned long long>(std::count(buffer, buffer + n, '\n'));
    ::close(fd);
    watch.Stop(result);
    return result;
}

bool OpenForReading(TextFile& file, const Options& options)
{
    if (file.Open(Widen(options.path), TextFileMode::Read, TextEncoding::Detect, 0) != TextFileResult::Ok) {
        std::fprintf(stderr, "bench-textfile: cannot open %s\n", options.path.c_str());
        return false;
    }
    return true;
}

// One timed pass: opens the file and lets work read it.
template <class Work>
Result TimedPass(const Options& options, Work work)
{
    Result result;
    const Stopwatch watch;
    TextFile file;
    if (!OpenForReading(file, options))
        std::exit(1);
    work(file, result);
    watch.Stop(result);
    return result;
}

Result CountPass(const Options& options)
{
    return TimedPass(options, [](TextFile& file, Result& result) {
        std::uint64_t lines = 0;
        file.CountLines(&lines);
        result.lines = lines;
    });
}

Result ReadLinePass(const Options& options)
{
    return TimedPass(options, [](TextFile& file, Result& result) {
        WString line;
        while (file.ReadLine(nullptr, line) == TextFileResult::Ok) {
            ++result.lines;
            result.check += line.size();
        }
    });
}

// The per-line work of an import: the comment test, then the delimited preparation or the
// fixed-width cut (whose position list grows by a line length per line, as the import's does).
Result SplitPass(const Options& options)
{
    return TimedPass(options, [&options](TextFile& file, Result& result) {
        const WString markers = CommentMarkersOf(options.comments);
        PositionList positions = options.positions;
        const std::size_t fieldsUsed = options.positions.size() + 1;
        WString line;
        FieldList fields;
        while (file.ReadLine(nullptr, line) == TextFileResult::Ok) {
            ++result.lines;
            if (IsCommentLine(line, markers))
                continue;
            if (options.fixed)
                SplitAtPositions(line, positions, fields, fieldsUsed);
            else
                NormalizeDelimitedLine(line, options.delimiters, fields);
            for (const WString& field : fields)
                result.check += field.size();
        }
    });
}

// Runs every pass once per round, so that each round sees the machine in the same state
// for all of them, and keeps each pass's best round.
std::vector<Result> BestOfRounds(const std::vector<std::function<Result()>>& passes, int rounds)
{
    std::vector<Result> best(passes.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < passes.size(); ++i) {
            const Result next = passes[i]();
            if (round == 0 || next.seconds < best[i].seconds)
                best[i] = next;
        }
    }
    return best;
}

long PeakRssKiB()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void Report(const char* name, const Result& result, double megabytes, double plainRate)
{
    const double rate = megabytes / result.seconds;
    std::printf("%-9s %7.3f s cpu %7.3f s wall %8.1f MB/s %11.0f lines/s %10llu lines %5.2f x plain  peak RSS %ld KiB\n",
                name, result.seconds, result.wall, rate, result.lines / result.seconds, result.lines, rate / plainRate,
                PeakRssKiB());
}

bool ParseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--delimiter" && hasValue) {
            const std::string value = argv[++i];
            options.delimiters.push_back(value == "\\t" ? WString(1, WTEXT('\t')) : Widen(value));
        } else if (arg == "--positions" && hasValue) {
            options.fixed = true;
            for (const char* p = argv[++i]; *p;) {
                char* end = nullptr;
                options.positions.push_back(static_cast<std::uint32_t>(std::strtoul(p, &end, 10)));
                p = *end == ',' ? end + 1 : end;
                if (end == p && *p)
                    return false;
            }
        } else if (arg == "--comments" && hasValue) {
            options.comments = Widen(argv[++i]);
        } else if (arg == "--repeat" && hasValue) {
            options.repeat = std::max(1, std::atoi(argv[++i]));
        } else if (options.path.empty() && arg[0] != '-') {
            options.path = arg;
        } else {
            return false;
        }
    }
    if (options.delimiters.empty())
        options.delimiters.push_back(WTEXT(" "));
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
    struct stat info;
    if (::stat(options.path.c_str(), &info) != 0) {
        std::fprintf(stderr, "bench-textfile: cannot read %s\n", options.path.c_str());
        return 1;
    }
    const double megabytes = static_cast<double>(info.st_size) / 1e6;
    PlainLoop(options.path); // warm the page cache

    TextFile probe;
    if (!OpenForReading(probe, options))
        return 1;
    static const char* const kEncodings[] = {"empty", "ANSI", "UTF-16LE", "UTF-16BE", "UTF-8"};
    std::printf("%s: %.1f MB, %s, %s\n", options.path.c_str(), megabytes, kEncodings[probe.Encoding() % 5],
                options.fixed ? "fixed width" : "delimited");
    probe.Close();

    const std::vector<Result> best = BestOfRounds({[&] { return PlainLoop(options.path); },
                                                   [&] { return CountPass(options); },
                                                   [&] { return ReadLinePass(options); },
                                                   [&] { return SplitPass(options); }},
                                                  options.repeat);
    const Result& split = best[3];
    const double plainRate = megabytes / best[0].seconds;
    Report("plain", best[0], megabytes, plainRate);
    Report("count", best[1], megabytes, plainRate);
    Report("readline", best[2], megabytes, plainRate);
    Report("split", split, megabytes, plainRate);
    const double ratio = (megabytes / split.seconds) / plainRate;
    std::printf("split at %.2f of the plain loop's speed (target 0.20): %s\n", ratio, ratio >= 0.2 ? "met" : "MISSED");
    return 0;
}
