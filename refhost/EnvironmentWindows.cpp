// The process services of Environment.h on Windows: the C runtime's environment, the wide
// command line, binary standard streams, and Wine told apart from Windows.

#include "refhost/Environment.h"

#include "platform/Windows.h"
#include "host/Utf8.h"

#include <shellapi.h>

#include <cstdlib>

#include <fcntl.h>
#include <io.h>

namespace refhost {

// Both the C runtime's copy, which getenv reads, and the process's own, which every other
// C runtime in the process and the system's calls read.
void SetEnvironment(const char* name, const char* value)
{
    _putenv_s(name, value ? value : "");
    ::SetEnvironmentVariableA(name, value && *value ? value : nullptr); // as _putenv_s: empty removes it
}

// A file mode never denies reading on Windows.
bool ReadsEveryFile() { return true; }

bool KeepsPermissionBits() { return false; }

std::string NullDevice() { return "NUL"; }

// argv holds the arguments in the ANSI code page, which cannot hold every name: the wide
// command line can.
std::vector<std::string> CommandLineArguments(int argc, char** argv)
{
    int count = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    if (!wide)
        return std::vector<std::string>(argv, argv + argc);
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(ToUtf8(wide[i]));
    ::LocalFree(wide);
    return arguments;
}

void UseBinaryStandardStreams()
{
    ::_setmode(1, _O_BINARY);
    ::_setmode(2, _O_BINARY);
}

bool RunsUnderWine()
{
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll && ::GetProcAddress(ntdll, "wine_get_version");
}

} // namespace refhost
