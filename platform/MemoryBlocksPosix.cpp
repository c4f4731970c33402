// Memory blocks on POSIX systems: anonymous mappings. Large pages are asked for with
// madvise, which transparent huge pages honour when set to "madvise" as well as "always";
// elsewhere the block simply has ordinary pages.
// Under the address sanitizer the blocks come from its heap instead: its leak checker then
// sees the heap memory that objects in a block refer to, and the blocks that nobody frees.

#include "platform/AddressSanitizer.h"
#include "platform/Platform.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <sys/mman.h>

namespace Platform {

#ifdef TESSEL_ADDRESS_SANITIZER

void* AllocateBlock(bool)
{
    void* block = std::aligned_alloc(kMemoryBlockSize, kMemoryBlockSize);
    if (block)
        std::memset(block, 0, kMemoryBlockSize);
    return block;
}

void FreeBlock(void* block) { std::free(block); }

#else

// Maps one block more than needed and unmaps what lies before and after the aligned part.
void* AllocateBlock(bool largePages)
{
    void* mapped = ::mmap(nullptr, 2 * kMemoryBlockSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        return nullptr;
    auto* raw = static_cast<unsigned char*>(mapped);
    const std::size_t head = (kMemoryBlockSize - reinterpret_cast<std::uintptr_t>(raw) % kMemoryBlockSize) % kMemoryBlockSize;
    if (head > 0)
        ::munmap(raw, head);
    ::munmap(raw + head + kMemoryBlockSize, kMemoryBlockSize - head);
    unsigned char* block = raw + head;
#ifdef MADV_HUGEPAGE
    if (largePages)
        ::madvise(block, kMemoryBlockSize, MADV_HUGEPAGE);
#else
    (void)largePages;
#endif
    return block;
}

void FreeBlock(void* block)
{
    if (block)
        ::munmap(block, kMemoryBlockSize);
}

#endif

} // namespace Platform
