#include "platform/CodePageSetting.h"

#include <cstdlib>
#include <cstring>

namespace {

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

unsigned FromEnvironment() { return Parse(std::getenv("TESSEL_CODEPAGE")); }

} // namespace Platform::CodePageSetting
