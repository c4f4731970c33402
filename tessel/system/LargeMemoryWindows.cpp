// Large memory on Windows: VirtualAlloc. Large pages are used where the account holds the
// right to lock pages in memory, in whole large pages (which the system aligns to their size);
// otherwise the memory has ordinary pages, and a block needs no alignment beyond the system's.

#include "tessel/system/LargeMemory.h"

#include "platform/Windows.h"

namespace tessel::memory {
namespace {

// Asks once whether this process may have large pages: enables the lock-memory privilege
// when the account holds it.
bool LargePagesGranted()
{
    static const bool granted = [] {
        if (::GetLargePageMinimum() == 0)
            return false;
        HANDLE token = nullptr;
        if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token))
            return false;
        TOKEN_PRIVILEGES privileges = {};
        privileges.PrivilegeCount = 1;
        privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
        const bool enabled =
            ::LookupPrivilegeValueW(nullptr, L"SeLockMemoryPrivilege", &privileges.Privileges[0].Luid) &&
            ::AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr) && ::GetLastError() == ERROR_SUCCESS;
        ::CloseHandle(token);
        return enabled;
    }();
    return granted;
}

} // namespace

// Committed pages come zero-filled from the system.
void* AllocateLarge(std::size_t bytes)
{
    if (LargePagesGranted()) {
        const SIZE_T largePage = ::GetLargePageMinimum();
        const SIZE_T rounded = (bytes + largePage - 1) / largePage * largePage;
        if (void* memory = ::VirtualAlloc(nullptr, rounded, MEM_RESERVE | MEM_COMMIT | MEM_LARGE_PAGES, PAGE_READWRITE))
            return memory;
    }
    return ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void FreeLarge(void* memory, std::size_t)
{
    if (memory)
        ::VirtualFree(memory, 0, MEM_RELEASE);
}

void* AllocateBlock() { return AllocateLarge(kBlockSize); }

void FreeBlock(void* block) { FreeLarge(block, kBlockSize); }

} // namespace tessel::memory
