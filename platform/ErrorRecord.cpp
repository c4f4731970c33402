#include "platform/ErrorRecord.h"
#include "platform/Platform.h"

namespace {

thread_local int lastError = 0;

} // namespace

namespace Platform::ErrorRecord {

bool Fail(int error)
{
    lastError = error;
    return false;
}

} // namespace Platform::ErrorRecord

namespace Platform {

int LastError() { return lastError; }

} // namespace Platform
