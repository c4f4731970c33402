#include "platform/CodePageSetting.h"

#include <atomic>
#include <climits>
#include <cstdlib>

namespace {

constexpr unsigned kNotRead = UINT_MAX;

// This copy's last reading of the environment; threads that race to renew it read the same one.
std::atomic<unsigned> reading{kNotRead};

bool StartsWithIgnoringCase(const char* text, const char* prefix)
{
    for (; *prefix; ++text, ++prefix) {
        const char c = *text >= 'A' && *text <= 'Z' ? static_cast<char>(*text - 'A' + 'a') : *text;
        if (c != *prefix)
            return false;
    }
    return true;
}

} // namespace

namespace Platform::CodePageSetting {

unsigned Parse(const char* text)
{
    if (!text)
        return 0;
    if (StartsWithIgnoringCase(text, "windows-"))
        text += 8;
    else if (StartsWithIgnoringCase(text, "cp"))
        text += 2;
    char* end = nullptr;
    const unsigned long number = std::strtoul(text, &end, 10);
    if (end == text || *end != '\0' || number == 0 || number > 0xFFFF)
        return 0;
    return static_cast<unsigned>(number);
}

unsigned Choice()
{
    const unsigned last = reading.load(std::memory_order_relaxed);
    if (last != kNotRead)
        return last;
    ReadAgain();
    return reading.load(std::memory_order_relaxed);
}

void ReadAgain() { reading.store(ReadFromEnvironment(), std::memory_order_relaxed); }

void SetChoice(unsigned codePage)
{
    WriteToEnvironment(codePage);
    ReadAgain();
}

} // namespace Platform::CodePageSetting
