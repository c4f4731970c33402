// tessel-gen-survey: writes a deterministic survey file of point records for benchmarks and
// tests. The same options and seed always give the same bytes.

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

const char kUsage[] =
    "usage: tessel-gen-survey --lines N [options] -o FILE\n"
    "\n"
    "Writes N point records, one per line, like\n"
    "  P1234567 456789.123 5123456.789 301.250 CODE\n"
    "(name, easting, northing, height, code; survey-sized coordinates in metres).\n"
    "\n"
    "options:\n"
    "  --lines N          number of records (required); header and comment lines are extra\n"
    "  --comma            separate fields by ',' instead of ' '\n"
    "  --fixed            fixed-width columns instead of delimiters: name 0-9, easting\n"
    "                     10-21, northing 22-34, height 35-43, code from 45\n"
    "                     (import positions 10, 22, 35, 45)\n"
    "  --header           start with the comment line '# name x y z code'\n"
    "  --comment-every N  put a comment line '# block K' before every N-th record\n"
    "  --utf16            UTF-16LE with the mark FF FE (default: ASCII without a mark,\n"
    "                     which reads as ANSI)\n"
    "  --utf8             UTF-8 with the mark EF BB BF\n"
    "  --crlf             end lines with CR LF (default: LF)\n"
    "  --seed S           seed of the coordinates (default 1)\n"
    "  -o FILE            output file ('-' for standard output)\n";

const char* const kCodes[] = {"CODE", "TREE", "KERB", "MH", "FENCE", "WALL", "POST", "GATE"};

// splitmix64: small, fast and the same on every platform.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next()
    {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    std::uint64_t Below(std::uint64_t bound) { return Next() % bound; }

private:
    std::uint64_t state_;
};

struct Options {
    long long lines = -1;
    bool comma = false;
    bool fixed = false;
    bool header = false;
    long long commentEvery = 0;
    bool utf16 = false;
    bool utf8 = false;
    bool crlf = false;
    std::uint64_t seed = 1;
    const char* output = nullptr;
};

// Buffered output of ASCII text, widened to UTF-16LE when asked, after the mark if any.
class Output {
public:
    Output(std::FILE* file, bool utf16, bool utf8) : file_(file), utf16_(utf16)
    {
        if (utf16)
            Raw("\xFF\xFE", 2);
        if (utf8)
            Raw("\xEF\xBB\xBF", 3);
    }
    ~Output() { Flush(); }

    void Text(const char* text, std::size_t length)
    {
        if (!utf16_)
            return Raw(text, length);
        for (std::size_t i = 0; i < length; ++i) {
            const char unit[2] = {text[i], '\0'};
            Raw(unit, 2);
        }
    }
    bool Flush()
    {
        if (used_ > 0 && std::fwrite(buffer_, 1, used_, file_) != used_)
            failed_ = true;
        used_ = 0;
        return !failed_;
    }

private:
    void Raw(const char* bytes, std::size_t length)
    {
        if (used_ + length > sizeof(buffer_))
            Flush();
        std::memcpy(buffer_ + used_, bytes, length);
        used_ += length;
    }

    std::FILE* file_;
    bool utf16_;
    char buffer_[1 << 20];
    std::size_t used_ = 0;
    bool failed_ = false;
};

bool ParseCount(const char* text, long long& value)
{
    char* end = nullptr;
    errno = 0;
    value = std::strtoll(text, &end, 10);
    return text && *text && *end == '\0' && errno == 0 && value >= 0;
}

bool ParseOptions(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        long long number = 0;
        if (arg == "--comma") {
            options.comma = true;
        } else if (arg == "--fixed") {
            options.fixed = true;
        } else if (arg == "--header") {
            options.header = true;
        } else if (arg == "--utf16") {
            options.utf16 = true;
        } else if (arg == "--utf8") {
            options.utf8 = true;
        } else if (arg == "--crlf") {
            options.crlf = true;
        } else if (arg == "--lines" && hasValue && ParseCount(argv[++i], number)) {
            options.lines = number;
        } else if (arg == "--comment-every" && hasValue && ParseCount(argv[++i], number) && number > 0) {
            options.commentEvery = number;
        } else if (arg == "--seed" && hasValue && ParseCount(argv[++i], number)) {
            options.seed = static_cast<std::uint64_t>(number);
        } else if (arg == "-o" && hasValue) {
            options.output = argv[++i];
        } else {
            std::fprintf(stderr, "tessel-gen-survey: bad option '%s'\n", arg.c_str());
            return false;
        }
    }
    if (options.lines < 0 || !options.output) {
        std::fprintf(stderr, "tessel-gen-survey: --lines and -o are required\n");
        return false;
    }
    if (options.utf8 && options.utf16) {
        std::fprintf(stderr, "tessel-gen-survey: --utf8 and --utf16 exclude each other\n");
        return false;
    }
    if (options.comma && options.fixed) {
        std::fprintf(stderr, "tessel-gen-survey: --comma and --fixed exclude each other\n");
        return false;
    }
    return true;
}

// One record: "P1234567 456789.123 5123456.789 301.250 CODE".
std::size_t FormatRecord(char* out, std::size_t size, long long index, Random& random, const Options& options)
{
    const long long name = 1000000 + index % 9000000;
    const std::uint64_t east = 400000000 + random.Below(300000000);   // 400000.000 .. 699999.999
    const std::uint64_t north = 5000000000 + random.Below(999999999); // 5000000.000 .. 5999999.998
    const std::uint64_t height = 100000 + random.Below(900000);       // 100.000 .. 999.999
    const char* code = kCodes[random.Below(sizeof(kCodes) / sizeof(kCodes[0]))];
    const auto part = [](std::uint64_t value) { return static_cast<unsigned long long>(value); };
    if (options.fixed)
        return static_cast<std::size_t>(std::snprintf(out, size, "P%-9lld%8llu.%03llu%9llu.%03llu%5llu.%03llu %s", name,
                                                      part(east / 1000), part(east % 1000), part(north / 1000),
                                                      part(north % 1000), part(height / 1000), part(height % 1000), code));
    const char sep = options.comma ? ',' : ' ';
    return static_cast<std::size_t>(std::snprintf(out, size, "P%lld%c%llu.%03llu%c%llu.%03llu%c%llu.%03llu%c%s", name, sep,
                                                  part(east / 1000), part(east % 1000), sep, part(north / 1000),
                                                  part(north % 1000), sep, part(height / 1000), part(height % 1000), sep,
                                                  code));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && (std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0)) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const bool toStdout = std::strcmp(options.output, "-") == 0;
    std::FILE* file = toStdout ? stdout : std::fopen(options.output, "wb");
    if (!file) {
        std::fprintf(stderr, "tessel-gen-survey: cannot create %s: %s\n", options.output, std::strerror(errno));
        return 1;
    }
    bool ok;
    {
        Output out(file, options.utf16, options.utf8);
        const char* lineEnd = options.crlf ? "\r\n" : "\n";
        const std::size_t lineEndLength = options.crlf ? 2 : 1;
        if (options.header) {
            const char* header = options.comma ? "# name,x,y,z,code" : "# name x y z code";
            out.Text(header, std::strlen(header));
            out.Text(lineEnd, lineEndLength);
        }
        Random random(options.seed);
        char record[128];
        for (long long i = 0; i < options.lines; ++i) {
            if (options.commentEvery > 0 && i % options.commentEvery == 0) {
                const int length = std::snprintf(record, sizeof(record), "# block %lld", i / options.commentEvery + 1);
                out.Text(record, static_cast<std::size_t>(length));
                out.Text(lineEnd, lineEndLength);
            }
            out.Text(record, FormatRecord(record, sizeof(record), i, random, options));
            out.Text(lineEnd, lineEndLength);
        }
        ok = out.Flush();
    }
    if (!toStdout && std::fclose(file) != 0)
        ok = false;
    if (!ok) {
        std::fprintf(stderr, "tessel-gen-survey: cannot write %s: %s\n", options.output, std::strerror(errno));
        return 1;
    }
    return 0;
}
