#pragma once
// Inside the platform layer only: where each system implementation asks whether a test has
// planned a failure for the call it is about to make (see Platform::Faults).

#include <cstdint>

namespace Platform::FaultPoint {

// True when this open is to fail; consumes one planned failure.
bool OpenFails();
// True when this read is to fail; counts the reads that go through before the failures.
// Waits first when reads are to be slow.
bool ReadFails();
// True when this close is to report a failure; consumes one planned failure.
bool CloseFails();
// True when this replacement is to fail; consumes one planned failure.
bool ReplaceFails();
// How many of size bytes the disk still takes (size when no budget is set); takes them off
// the budget.
std::uint32_t WritableBytes(std::uint32_t size);

} // namespace Platform::FaultPoint
