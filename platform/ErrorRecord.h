#pragma once
// Inside the platform layer only: where each system implementation records the error of a
// failed call for Platform::LastError().

namespace Platform::ErrorRecord {

// Records error for this thread; returns false, so that a failing call can end with it.
bool Fail(int error);

} // namespace Platform::ErrorRecord
