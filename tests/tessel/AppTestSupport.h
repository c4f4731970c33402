#pragma once
// Running the real tessel binary, and the module loaded into the test process the way tessel
// loads it.

#include "tessel/jobs/ModuleHost.h"

#include <string>
#include <vector>

namespace tessel {
namespace testing {

struct TesselRun {
    int status = -1;
    std::string out;
    std::string err;
};

// Runs tessel with the arguments in the folder, standard input from /dev/null (NUL).
TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& folder);

// The module, loaded once for the whole test program.
ModuleHost& LoadedModule();

// The bytes of a UTF-16LE file with its byte-order mark.
std::string Utf16LeWithMark(const WString& text);

// The text cut at line feeds (a last line without one included).
std::vector<std::string> Lines(const std::string& text);

} // namespace testing
} // namespace tessel
