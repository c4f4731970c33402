#include "textfile/Platform.h"
#include "textfile/PlatformFaults.h"

#include <algorithm>

// Set and consumed from one thread (the test's); when no fault is planned the checks only
// read, so other threads may use the platform layer meanwhile.
namespace {

int openFailures = 0;
int opensBeforeFailure = 0;
int readFailures = 0;
int readsBeforeFailure = 0;
bool writeBudgetSet = false;
std::uint64_t writeBudget = 0;

} // namespace

namespace Platform::Faults {

void FailOpens(int count, int goodOpens)
{
    openFailures = std::max(count, 0);
    opensBeforeFailure = std::max(goodOpens, 0);
}

void FailReads(int count, int goodReads)
{
    readFailures = std::max(count, 0);
    readsBeforeFailure = std::max(goodReads, 0);
}

void FailWritesAfter(std::uint64_t byteBudget)
{
    writeBudgetSet = true;
    writeBudget = byteBudget;
}

void ClearFaults()
{
    openFailures = 0;
    opensBeforeFailure = 0;
    readFailures = 0;
    readsBeforeFailure = 0;
    writeBudgetSet = false;
    writeBudget = 0;
}

} // namespace Platform::Faults

namespace Platform::FaultPoint {

bool OpenFails()
{
    if (openFailures == 0)
        return false;
    if (opensBeforeFailure > 0) {
        --opensBeforeFailure;
        return false;
    }
    --openFailures;
    return true;
}

bool ReadFails()
{
    if (readFailures == 0)
        return false;
    if (readsBeforeFailure > 0) {
        --readsBeforeFailure;
        return false;
    }
    --readFailures;
    return true;
}

std::uint32_t WritableBytes(std::uint32_t size)
{
    if (!writeBudgetSet)
        return size;
    const auto taken = static_cast<std::uint32_t>(std::min<std::uint64_t>(size, writeBudget));
    writeBudget -= taken;
    return taken;
}

} // namespace Platform::FaultPoint
