// Memory blocks on Windows: VirtualAlloc. Large pages are used where the
// account holds the right to lock pages in memory and the system's large page fits the block;
// a large-page block is aligned to its own size by the system. Otherwise an aligned range is found by
// reserving twice the size, releasing it and taking the aligned part of it.

#include "platform/Platform.h"
#include "platform/Windows.h"

#include <cstdint>

namespace {

// Asks once whether this process may have large pages: enables the lock-memory privilege
// when the account holds it.
bool LargePagesGranted()
{
    static const bool granted = [] {
        const SIZE_T largePage = ::GetLargePageMinimum();
        if (largePage == 0 || Platform::kMemoryBlockSize % largePage != 0)
            return false;
        HANDLE token = nullptr;
        if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token))
            return false;
        TOKEN_PRIVILEGES privileges = {};
        privileges.PrivilegeCount = 1;
        privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
        bool enabled = ::LookupPrivilegeValueW(nullptr, L"SeLockMemoryPrivilege", &privileges.Privileges[0].Luid) &&
                       ::AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr) &&
                       ::GetLastError() == ERROR_SUCCESS;
        ::CloseHandle(token);
        return enabled;
    }();
    return granted;
}

void* AllocateLargePageBlock()
{
    void* block = ::VirtualAlloc(nullptr, Platform::kMemoryBlockSize, MEM_RESERVE | MEM_COMMIT | MEM_LARGE_PAGES,
                                 PAGE_READWRITE);
    if (block && reinterpret_cast<std::uintptr_t>(block) % Platform::kMemoryBlockSize != 0) {
        ::VirtualFree(block, 0, MEM_RELEASE);
        return nullptr;
    }
    return block;
}

// Another thread may take the released range before it is reserved again; then try anew.
void* AllocateAlignedBlock()
{
    constexpr int kAttempts = 8;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        void* probe = ::VirtualAlloc(nullptr, 2 * Platform::kMemoryBlockSize, MEM_RESERVE, PAGE_NOACCESS);
        if (!probe)
            return nullptr;
        const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(probe);
        const std::uintptr_t aligned = (address + Platform::kMemoryBlockSize - 1) / Platform::kMemoryBlockSize
                                       * Platform::kMemoryBlockSize;
        ::VirtualFree(probe, 0, MEM_RELEASE);
        void* block = ::VirtualAlloc(reinterpret_cast<void*>(aligned), Platform::kMemoryBlockSize,
                                     MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
        if (block)
            return block;
    }
    return nullptr;
}

} // namespace

namespace Platform {

// Committed pages come zero-filled from the system.
void* AllocateBlock(bool largePages)
{
    if (largePages && LargePagesGranted()) {
        if (void* block = AllocateLargePageBlock())
            return block;
    }
    return AllocateAlignedBlock();
}

void FreeBlock(void* block)
{
    if (block)
        ::VirtualFree(block, 0, MEM_RELEASE);
}

} // namespace Platform
