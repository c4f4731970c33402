// The process services of Environment.h on POSIX systems, where most of them are what a
// program gets anyway.

#include "refhost/Environment.h"

#include <cstdlib>

#include <unistd.h>

namespace refhost {

void SetEnvironment(const char* name, const char* value)
{
    if (value)
        ::setenv(name, value, 1);
    else
        ::unsetenv(name);
}

bool ReadsEveryFile() { return ::geteuid() == 0; }

bool KeepsPermissionBits() { return true; }

std::string NullDevice() { return "/dev/null"; }

std::vector<std::string> CommandLineArguments(int argc, char** argv) { return std::vector<std::string>(argv, argv + argc); }

void UseBinaryStandardStreams() {}

bool RunsUnderWine() { return false; }

} // namespace refhost
