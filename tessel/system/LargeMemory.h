#pragma once
// Memory straight from the system for what tessel keeps by the million and then sorts or
// reads out of order: backed by large pages where the system offers them, so that it costs
// far fewer page faults and address-translation (TLB) misses than the heap's small pages.
// One implementation per system: LargeMemoryPosix.cpp (mmap, madvise(MADV_HUGEPAGE)) and
// LargeMemoryWindows.cpp (VirtualAlloc, MEM_LARGE_PAGES where the account may lock pages).

#include <cstddef>

namespace tessel::memory {

// One large array (megabytes to gigabytes), zero-filled. Null when the system has no memory
// left. FreeLarge takes the size that was asked for.
void* AllocateLarge(std::size_t bytes);
void FreeLarge(void* memory, std::size_t bytes);

// A block of kBlockSize bytes, aligned to that size where that lets the system back it with
// one large page. Null when the system has no memory left.
constexpr std::size_t kBlockSize = std::size_t(2) << 20;
void* AllocateBlock();
void FreeBlock(void* block);

} // namespace tessel::memory
