#include "tessel/jobs/Commands.h"

#include <cstdio>
#include <iostream>

namespace tessel {

std::string Counted(std::size_t count, const std::string& singular, const std::string& plural)
{
    std::string digits = std::to_string(count);
    for (auto at = digits.size(); at > 3; at -= 3)
        digits.insert(at - 3, ",");
    return digits + " " + (count == 1 ? singular : plural);
}

void PrintSummary(const GlobalOptions& global, std::chrono::steady_clock::time_point started, const std::string& what)
{
    if (global.quiet)
        return;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    char time[32];
    std::snprintf(time, sizeof time, "%.2f s", seconds);
    std::cerr << "tessel: " << what << " in " << time << std::endl;
}

} // namespace tessel
