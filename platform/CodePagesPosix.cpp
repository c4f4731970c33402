// Windows code pages on POSIX systems, through iconv. A single-byte code page is asked of
// iconv once, byte by byte, and then converted from its tables; bytes that iconv rejects
// there (0x81, 0x8D, 0x8F, 0x90, 0x9D in 1252) convert to the code unit of the same value,
// as Windows converts them. Multi-byte code pages go through iconv on every call, with
// U+FFFD for malformed input.

#include "platform/CodePageSetting.h"
#include "platform/Platform.h"
#include "host/WideText.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include <iconv.h>

namespace {

constexpr unsigned kDefaultAnsiCodePage = 1252;
constexpr unsigned kUtf8CodePage = 65001;
constexpr unsigned kThreadAnsiCodePage = 3; // CP_THREAD_ACP: the ANSI code page as well
constexpr WChar kReplacementUnit = 0xFFFD;
constexpr char kUtf8ReplacementCharacter[] = {'\xEF', '\xBF', '\xBD'};

// What a malformed or cut sequence of a multi-byte code page becomes: the code page's own
// Unicode default character, as Windows converts it.
WChar MalformedSequenceUnit(unsigned codePage)
{
    switch (codePage) {
    case 932: return 0x30FB; // KATAKANA MIDDLE DOT
    case kUtf8CodePage: return kReplacementUnit;
    default: return '?';
    }
}

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
const char* const kWideName = "UTF-16BE";
#else
const char* const kWideName = "UTF-16LE";
#endif

const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);

std::string IconvName(unsigned codePage)
{
    if (codePage == kUtf8CodePage)
        return "UTF-8";
    if (codePage >= 28591 && codePage <= 28599)
        return "ISO-8859-" + std::to_string(codePage - 28590);
    switch (codePage) {
    case 28603: return "ISO-8859-13";
    case 28605: return "ISO-8859-15";
    case 20866: return "KOI8-R";
    case 21866: return "KOI8-U";
    case 10000: return "MACINTOSH";
    default: return "CP" + std::to_string(codePage);
    }
}

// One code page as the converters found it: a table when it is single-byte, else a pair of
// iconv descriptors kept open (used under the registry's lock).
struct CodePageEntry {
    bool known = false;
    std::unique_ptr<SingleByteCodePage> table;
    iconv_t toWide = kNoConverter;
    iconv_t fromWide = kNoConverter;
};

enum class ByteOutcome { Unit, Undefined, MultiByte };

ByteOutcome ConvertOneByte(iconv_t cd, unsigned char byte, WChar* unit)
{
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char in[1] = {static_cast<char>(byte)};
    WChar out[4];
    char* inPtr = in;
    char* outPtr = reinterpret_cast<char*>(out);
    size_t inLeft = 1;
    size_t outLeft = sizeof(out);
    if (iconv(cd, &inPtr, &inLeft, &outPtr, &outLeft) == static_cast<size_t>(-1))
        return errno == EILSEQ ? ByteOutcome::Undefined : ByteOutcome::MultiByte;
    // Stateful converters (1255, 1258) hold a character back until they are flushed.
    iconv(cd, nullptr, nullptr, &outPtr, &outLeft);
    if (sizeof(out) - outLeft != sizeof(WChar))
        return ByteOutcome::MultiByte;
    *unit = out[0];
    return ByteOutcome::Unit;
}

std::unique_ptr<SingleByteCodePage> BuildTable(unsigned codePage, iconv_t toWide)
{
    WChar units[256];
    for (int b = 0; b < 256; ++b) {
        switch (ConvertOneByte(toWide, static_cast<unsigned char>(b), &units[b])) {
        case ByteOutcome::Unit: break;
        case ByteOutcome::Undefined: units[b] = static_cast<WChar>(b); break;
        case ByteOutcome::MultiByte: return nullptr;
        }
    }
    return std::make_unique<SingleByteCodePage>(codePage, units);
}

class CodePageRegistry {
public:
    static CodePageRegistry& Instance()
    {
        static CodePageRegistry registry;
        return registry;
    }

    std::mutex& Lock() { return mutex_; }

    // The entry of a resolved code page number; call with the lock held.
    CodePageEntry& Entry(unsigned codePage)
    {
        auto found = entries_.find(codePage);
        if (found != entries_.end())
            return found->second;
        CodePageEntry& entry = entries_[codePage];
        const std::string name = IconvName(codePage);
        entry.toWide = iconv_open(kWideName, name.c_str());
        entry.fromWide = iconv_open(name.c_str(), kWideName);
        entry.known = entry.toWide != kNoConverter && entry.fromWide != kNoConverter;
        if (entry.known && codePage != kUtf8CodePage)
            entry.table = BuildTable(codePage, entry.toWide);
        return entry;
    }

private:
    CodePageRegistry() = default;
    ~CodePageRegistry()
    {
        for (auto& item : entries_) {
            if (item.second.toWide != kNoConverter)
                iconv_close(item.second.toWide);
            if (item.second.fromWide != kNoConverter)
                iconv_close(item.second.fromWide);
        }
    }

    std::mutex mutex_;
    std::map<unsigned, CodePageEntry> entries_;
};

unsigned Resolve(unsigned codePage)
{
    return codePage == 0 || codePage == kThreadAnsiCodePage ? Platform::AnsiCodePage() : codePage;
}

// Collects converted output: counts it, copies it while it fits, remembers an overflow.
template <class Unit>
class Sink {
public:
    Sink(Unit* out, int capacity) : out_(out), capacity_(capacity) {}

    void Put(const Unit* data, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i, ++size_)
            if (capacity_ > 0 && size_ < capacity_)
                out_[size_] = data[i];
    }
    void Put(Unit unit) { Put(&unit, 1); }
    // The result of the Windows call: the size needed when only counting, 0 on overflow.
    int Result() const
    {
        if (capacity_ == 0)
            return size_;
        return size_ <= capacity_ ? size_ : 0;
    }

private:
    Unit* out_;
    int capacity_;
    int size_ = 0;
};

// Runs iconv over the input; onBad is called for a malformed or unconvertible sequence at
// the input pointer and returns how many input bytes to skip (after emitting a replacement).
template <class OutUnit, class OnBad>
void ConvertWithIconv(iconv_t cd, const char* input, std::size_t size, Sink<OutUnit>& sink, OnBad onBad)
{
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    char* in = const_cast<char*>(input);
    std::size_t inLeft = size;
    OutUnit chunk[256];
    for (;;) {
        char* out = reinterpret_cast<char*>(chunk);
        std::size_t outLeft = sizeof(chunk);
        const std::size_t result = inLeft > 0 ? iconv(cd, &in, &inLeft, &out, &outLeft)
                                              : iconv(cd, nullptr, nullptr, &out, &outLeft);
        const int error = errno;
        sink.Put(chunk, (sizeof(chunk) - outLeft) / sizeof(OutUnit));
        if (result != static_cast<std::size_t>(-1)) {
            if (inLeft == 0 && out == reinterpret_cast<char*>(chunk))
                return; // flushed, nothing more held back
            continue;
        }
        if (error == E2BIG)
            continue;
        // EINVAL: the input ends inside a sequence; it is replaced as a whole.
        std::size_t skip = onBad(in, inLeft);
        if (error == EINVAL)
            skip = inLeft;
        in += skip;
        inLeft -= skip;
    }
}


// Runs convert(entry) on the code page's entry with the registry locked; 0 for a code page
// the system does not know.
template <class Convert>
int WithCodePage(unsigned codePage, Convert convert)
{
    const unsigned resolved = Resolve(codePage);
    auto& registry = CodePageRegistry::Instance();
    std::lock_guard<std::mutex> lock(registry.Lock());
    const CodePageEntry& entry = registry.Entry(resolved);
    return entry.known ? convert(entry) : 0;
}

} // namespace

namespace Platform::CodePageSetting {

unsigned ReadFromEnvironment()
{
    if (const unsigned chosen = Parse(std::getenv(kProcessVariable)))
        return chosen;
    const unsigned named = Parse(std::getenv(kUserVariable));
    if (named == 0)
        return 0;
    auto& registry = CodePageRegistry::Instance();
    std::lock_guard<std::mutex> lock(registry.Lock());
    return registry.Entry(named).known ? named : 0;
}

void WriteToEnvironment(unsigned codePage)
{
    if (codePage != 0)
        ::setenv(kProcessVariable, std::to_string(codePage).c_str(), 1);
    else
        ::unsetenv(kProcessVariable);
}

} // namespace Platform::CodePageSetting

namespace Platform {

unsigned AnsiCodePage()
{
    const unsigned chosen = CodePageSetting::Choice();
    return chosen != 0 ? chosen : kDefaultAnsiCodePage;
}

void SetAnsiCodePage(unsigned codePage) { CodePageSetting::SetChoice(codePage); }

bool IsConvertibleCodePage(unsigned codePage)
{
    if (codePage == 0 || codePage == kThreadAnsiCodePage)
        return false;
    auto& registry = CodePageRegistry::Instance();
    std::lock_guard<std::mutex> lock(registry.Lock());
    return registry.Entry(codePage).known;
}

const SingleByteCodePage* FindSingleByteCodePage(unsigned codePage)
{
    const unsigned resolved = Resolve(codePage);
    auto& registry = CodePageRegistry::Instance();
    std::lock_guard<std::mutex> lock(registry.Lock());
    return registry.Entry(resolved).table.get();
}

int MultiByteToWide(unsigned codePage, const char* bytes, int byteCount, WChar* out, int outCapacity)
{
    if (!bytes || byteCount == 0 || byteCount < -1 || outCapacity < 0 || (outCapacity > 0 && !out))
        return 0;
    const std::size_t size = byteCount == -1 ? std::strlen(bytes) + 1 : static_cast<std::size_t>(byteCount);
    return WithCodePage(codePage, [&](const CodePageEntry& entry) {
        if (entry.table) {
            if (size > static_cast<std::size_t>(INT32_MAX))
                return 0;
            if (outCapacity == 0)
                return static_cast<int>(size);
            if (static_cast<std::size_t>(outCapacity) < size)
                return 0;
            entry.table->Decode(bytes, size, out);
            return static_cast<int>(size);
        }
        Sink<WChar> sink(out, outCapacity);
        const WChar malformed = MalformedSequenceUnit(Resolve(codePage));
        ConvertWithIconv(entry.toWide, bytes, size, sink, [&sink, malformed](const char*, std::size_t) {
            sink.Put(malformed);
            return std::size_t{1};
        });
        return sink.Result();
    });
}

int WideToMultiByte(unsigned codePage, const WChar* text, int count, char* out, int outCapacity,
                    const char* defaultChar, bool* usedDefault)
{
    if (!text || count == 0 || count < -1 || outCapacity < 0 || (outCapacity > 0 && !out))
        return 0;
    const std::size_t units = count == -1 ? WideLength(text) + 1 : static_cast<std::size_t>(count);
    const char replacement = defaultChar && *defaultChar ? *defaultChar : kDefaultReplacementByte;
    return WithCodePage(codePage, [&](const CodePageEntry& entry) {
        if (entry.table) {
            std::size_t needed = 0;
            for (std::size_t i = 0; i < units; ++i, ++needed)
                if (IsHighSurrogate(text[i]) && i + 1 < units && IsLowSurrogate(text[i + 1]))
                    ++i;
            if (needed > static_cast<std::size_t>(INT32_MAX))
                return 0;
            if (outCapacity == 0)
                return static_cast<int>(needed);
            if (static_cast<std::size_t>(outCapacity) < needed)
                return 0;
            return static_cast<int>(entry.table->Encode(text, units, out, replacement, usedDefault));
        }
        Sink<char> sink(out, outCapacity);
        const char* input = reinterpret_cast<const char*>(text);
        const bool utf8 = Resolve(codePage) == kUtf8CodePage;
        ConvertWithIconv(entry.fromWide, input, units * sizeof(WChar), sink, [&](const char* at, std::size_t left) {
            // UTF-8 holds every character; only a lone surrogate fails, and becomes U+FFFD.
            if (utf8) {
                sink.Put(kUtf8ReplacementCharacter, sizeof kUtf8ReplacementCharacter);
                return sizeof(WChar);
            }
            sink.Put(replacement);
            if (usedDefault)
                *usedDefault = true;
            WChar unit[2];
            std::memcpy(unit, at, left >= sizeof(unit) ? sizeof(unit) : sizeof(WChar));
            const bool pair = left >= sizeof(unit) && IsHighSurrogate(unit[0]) && IsLowSurrogate(unit[1]);
            return pair ? sizeof(unit) : sizeof(WChar);
        });
        return sink.Result();
    });
}

} // namespace Platform
