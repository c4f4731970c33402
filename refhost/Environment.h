#pragma once
// The few process and folder services that tests and the host application need and that
// POSIX and Windows spell differently, behind one spelling.

#include <string>
#include <vector>

namespace refhost {

// Sets an environment variable of this process (value null: removes it). The C runtime's
// getenv and, on Windows, GetEnvironmentVariable see the change at once.
void SetEnvironment(const char* name, const char* value);

// Creates a new, empty folder with a unique name beginning with prefix under the system's
// temporary folder and returns its path in UTF-8; "" when none could be created.
std::string MakeTempFolder(const std::string& prefix);

// True when file permissions cannot keep this process from reading a file: root on POSIX,
// and Windows, where a file mode never denies reading.
bool ReadsEveryFile();

// True where files carry POSIX permission bits that a copy can keep (not on Windows).
bool KeepsPermissionBits();

// The device that swallows whatever is written to it: /dev/null, or NUL on Windows.
std::string NullDevice();

// The program's command-line arguments in UTF-8, whatever the system's code page (on Windows
// from the wide command line; elsewhere argv as it is).
std::vector<std::string> CommandLineArguments(int argc, char** argv);

// Standard output and error pass bytes unchanged (Windows would turn LF into CR LF).
void UseBinaryStandardStreams();

// True when this Windows program runs under Wine, whose conversions differ from Windows in a
// few known places (tests leave those out there); false on Linux.
bool RunsUnderWine();

} // namespace refhost
