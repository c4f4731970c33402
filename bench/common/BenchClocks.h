#pragma once
// The clocks of the benchmark programs. On a machine shared with other work, wall time
// mostly measures the others: figures are taken in the process's processor time (user and
// system, so that copying in the kernel counts), with wall time printed beside it.

#include <chrono>
#include <ctime>

inline double ProcessCpuSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

inline double WallSeconds()
{
    using Clock = std::chrono::steady_clock;
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}
