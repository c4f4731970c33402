#include "platform/Platform.h"
#include "platform/PlatformFaults.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

// Set and consumed from one thread (the test's); when no fault is planned the checks only
// read, so other threads may use the platform layer meanwhile. The slow reads are the
// exception: they slow down work on other threads, so their setting is atomic.
namespace {

// Some calls that still succeed, then some that fail.
struct PlannedFailures {
    int goodCalls = 0;
    int failures = 0;

    void Plan(int count, int good)
    {
        failures = std::max(count, 0);
        goodCalls = std::max(good, 0);
    }
    bool NextCallFails()
    {
        if (failures == 0)
            return false;
        if (goodCalls > 0) {
            --goodCalls;
            return false;
        }
        --failures;
        return true;
    }
};

PlannedFailures openPlan;
PlannedFailures readPlan;
PlannedFailures closePlan;
PlannedFailures replacePlan;
std::atomic<int> readDelayMicroseconds{0};
bool writeBudgetSet = false;
std::uint64_t writeBudget = 0;

} // namespace

namespace Platform::Faults {

void FailOpens(int count, int goodOpens) { openPlan.Plan(count, goodOpens); }

void FailReads(int count, int goodReads) { readPlan.Plan(count, goodReads); }

void FailWritesAfter(std::uint64_t byteBudget)
{
    writeBudgetSet = true;
    writeBudget = byteBudget;
}

void FailCloses(int count, int goodCloses) { closePlan.Plan(count, goodCloses); }

void FailReplaces(int count) { replacePlan.Plan(count, 0); }

void SlowReads(int microseconds) { readDelayMicroseconds = std::max(microseconds, 0); }

void ClearFaults()
{
    openPlan = PlannedFailures();
    readPlan = PlannedFailures();
    closePlan = PlannedFailures();
    replacePlan = PlannedFailures();
    writeBudgetSet = false;
    writeBudget = 0;
    readDelayMicroseconds = 0;
}

} // namespace Platform::Faults

namespace Platform::FaultPoint {

bool OpenFails() { return openPlan.NextCallFails(); }

bool ReadFails()
{
    if (const int delay = readDelayMicroseconds.load())
        std::this_thread::sleep_for(std::chrono::microseconds(delay));
    return readPlan.NextCallFails();
}

bool CloseFails() { return closePlan.NextCallFails(); }

bool ReplaceFails() { return replacePlan.NextCallFails(); }

std::uint32_t WritableBytes(std::uint32_t size)
{
    if (!writeBudgetSet)
        return size;
    const auto taken = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, writeBudget));
    writeBudget -= taken;
    return taken;
}

} // namespace Platform::FaultPoint
