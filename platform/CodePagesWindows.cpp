// Windows code pages through MultiByteToWideChar and WideCharToMultiByte. Code page 0 is
// handed to the system as CP_ACP (the system's ANSI code page) unless the process's
// environment chose another (CodePageSetting.h). A single-byte code page is also asked of the
// system once, byte by byte, for the tables that hot loops convert with.

#include "platform/CodePageSetting.h"
#include "platform/Platform.h"
#include "platform/Windows.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace {

constexpr unsigned kThreadAnsiCodePage = CP_THREAD_ACP;

// WC_NO_BEST_FIT_CHARS: a character the code page lacks becomes the default character, never
// a look-alike (Ł as L, ∞ as 8), so that Windows writes the same bytes as the other systems.
DWORD FromWideFlags(unsigned codePage)
{
    // These code pages take no flags at all.
    const bool flagless = codePage == CP_UTF7 || codePage == CP_UTF8 || codePage == 42 || codePage == 52936 ||
                          codePage == 54936 || (codePage >= 50220 && codePage <= 50229) ||
                          (codePage >= 57002 && codePage <= 57011);
    return flagless ? 0 : WC_NO_BEST_FIT_CHARS;
}

// UTF-7 and UTF-8 have no default character: the system refuses one.
bool TakesDefaultCharacter(unsigned codePage) { return codePage != CP_UTF7 && codePage != CP_UTF8; }

// The process environment's value of name (Windows' own, whatever C runtime set it); null
// when it has none or one too long to name a code page.
const char* EnvironmentValue(const char* name, char (&value)[32])
{
    const DWORD length = ::GetEnvironmentVariableA(name, value, sizeof value);
    return length > 0 && length < sizeof value ? value : nullptr;
}

// The number handed to the system: code page 0 and the thread's ANSI code page stay CP_ACP
// and CP_THREAD_ACP unless another was chosen.
unsigned Resolve(unsigned codePage)
{
    if (codePage != CP_ACP && codePage != kThreadAnsiCodePage)
        return codePage;
    const unsigned chosen = Platform::CodePageSetting::Choice();
    return chosen != 0 ? chosen : codePage;
}

std::unique_ptr<SingleByteCodePage> BuildTable(unsigned codePage)
{
    CPINFO info;
    if (!::GetCPInfo(codePage, &info) || info.MaxCharSize != 1)
        return nullptr;
    WChar units[256];
    for (int b = 0; b < 256; ++b) {
        const char byte = static_cast<char>(b);
        if (::MultiByteToWideChar(codePage, 0, &byte, 1, &units[b], 1) != 1)
            units[b] = static_cast<WChar>(b);
    }
    return std::make_unique<SingleByteCodePage>(codePage, units);
}

class TableRegistry {
public:
    static TableRegistry& Instance()
    {
        static TableRegistry registry;
        return registry;
    }

    const SingleByteCodePage* Find(unsigned codePage)
    {
        std::lock_guard<std::mutex> lock(mutex_);
        auto found = tables_.find(codePage);
        if (found == tables_.end())
            found = tables_.emplace(codePage, BuildTable(codePage)).first;
        return found->second.get();
    }

private:
    std::mutex mutex_;
    std::map<unsigned, std::unique_ptr<SingleByteCodePage>> tables_;
};

} // namespace

namespace Platform::CodePageSetting {

unsigned ReadFromEnvironment()
{
    char value[32];
    if (const unsigned chosen = Parse(EnvironmentValue(kProcessVariable, value)))
        return chosen;
    const unsigned named = Parse(EnvironmentValue(kUserVariable, value));
    return named != 0 && ::IsValidCodePage(named) ? named : 0;
}

void WriteToEnvironment(unsigned codePage)
{
    ::SetEnvironmentVariableA(kProcessVariable, codePage != 0 ? std::to_string(codePage).c_str() : nullptr);
}

} // namespace Platform::CodePageSetting

namespace Platform {

unsigned AnsiCodePage()
{
    const unsigned chosen = CodePageSetting::Choice();
    return chosen != 0 ? chosen : ::GetACP();
}

void SetAnsiCodePage(unsigned codePage) { CodePageSetting::SetChoice(codePage); }

bool IsConvertibleCodePage(unsigned codePage)
{
    return codePage != CP_ACP && codePage != kThreadAnsiCodePage && ::IsValidCodePage(codePage);
}

const SingleByteCodePage* FindSingleByteCodePage(unsigned codePage)
{
    const unsigned resolved = codePage == CP_ACP || codePage == kThreadAnsiCodePage ? AnsiCodePage() : codePage;
    return TableRegistry::Instance().Find(resolved);
}

int MultiByteToWide(unsigned codePage, const char* bytes, int byteCount, WChar* out, int outCapacity)
{
    if (!bytes || byteCount == 0 || byteCount < -1 || outCapacity < 0 || (outCapacity > 0 && !out))
        return 0;
    return ::MultiByteToWideChar(Resolve(codePage), 0, bytes, byteCount, out, outCapacity);
}

int WideToMultiByte(unsigned codePage, const WChar* text, int count, char* out, int outCapacity,
                    const char* defaultChar, bool* usedDefault)
{
    if (!text || count == 0 || count < -1 || outCapacity < 0 || (outCapacity > 0 && !out))
        return 0;
    const unsigned resolved = Resolve(codePage);
    const bool withDefault = TakesDefaultCharacter(resolved);
    BOOL defaultUsed = FALSE;
    const int written = ::WideCharToMultiByte(resolved, FromWideFlags(resolved), text, count, out, outCapacity,
                                              withDefault && defaultChar && *defaultChar ? defaultChar : nullptr,
                                              withDefault && usedDefault ? &defaultUsed : nullptr);
    if (usedDefault && defaultUsed)
        *usedDefault = true;
    return written;
}

} // namespace Platform
