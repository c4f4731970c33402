// Large memory on POSIX systems: anonymous mappings. Large pages are asked for with madvise,
// which transparent huge pages honour when set to "madvise" as well as "always"; elsewhere the
// memory simply has ordinary pages. A huge page covers an aligned 2 MB, so a block is aligned
// to its size.
// Under the address sanitizer the memory comes from its heap instead, where it checks every
// access and finds what nobody frees.

#include "tessel/system/LargeMemory.h"

#include "platform/AddressSanitizer.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

namespace tessel::memory {

#ifdef TESSEL_ADDRESS_SANITIZER

void* AllocateLarge(std::size_t bytes) { return std::calloc(1, bytes); }

void FreeLarge(void* memory, std::size_t) { std::free(memory); }

void* AllocateBlock()
{
    void* block = std::aligned_alloc(kBlockSize, kBlockSize);
    if (block)
        std::memset(block, 0, kBlockSize);
    return block;
}

void FreeBlock(void* block) { std::free(block); }

#else

namespace {

void AskForLargePages(void* memory, std::size_t bytes)
{
#ifdef MADV_HUGEPAGE
    ::madvise(memory, bytes, MADV_HUGEPAGE);
#else
    (void)memory, (void)bytes;
#endif
}

} // namespace

void* AllocateLarge(std::size_t bytes)
{
    void* memory = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
    AskForLargePages(memory, bytes);
    return memory;
}

void FreeLarge(void* memory, std::size_t bytes)
{
    if (memory)
        ::munmap(memory, bytes);
}

// Maps one block more than needed and unmaps what lies before and after the aligned part.
void* AllocateBlock()
{
    void* mapped = ::mmap(nullptr, 2 * kBlockSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        return nullptr;
    auto* raw = static_cast<unsigned char*>(mapped);
    const std::size_t head = (kBlockSize - reinterpret_cast<std::uintptr_t>(raw) % kBlockSize) % kBlockSize;
    if (head > 0)
        ::munmap(raw, head);
    ::munmap(raw + head + kBlockSize, kBlockSize - head);
    AskForLargePages(raw + head, kBlockSize);
    return raw + head;
}

void FreeBlock(void* block)
{
    if (block)
        ::munmap(block, kBlockSize);
}

#endif

} // namespace tessel::memory
