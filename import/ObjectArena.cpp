#include "import/ObjectArena.h"

#include "platform/AddressSanitizer.h"
#include "platform/Platform.h"

#include <cstdint>

// Under the address sanitizer every piece is poisoned until it is taken and again once it is
// given back, so that a use after release is caught in the block as on the heap.

namespace {

// The first block of a run has ordinary pages, so that a small import takes only what it
// fills; a run that needs more blocks is a large one.
constexpr int kBlocksBeforeLargePages = 1;

std::atomic<std::size_t> blocksInUse{0};

std::size_t AlignUp(std::size_t value, std::size_t alignment) { return (value + alignment - 1) / alignment * alignment; }

} // namespace

thread_local ArenaBlock* ObjectArena::controlBlockHome = nullptr;

ArenaBlock::ArenaBlock() : used_(AlignUp(sizeof(ArenaBlock), alignof(std::max_align_t))) {}

ArenaBlock* ArenaBlock::Create(bool largePages)
{
    void* memory = Platform::AllocateBlock(largePages);
    if (!memory)
        return nullptr;
    blocksInUse.fetch_add(1, std::memory_order_relaxed);
    auto* block = new (memory) ArenaBlock();
    TESSEL_POISON(static_cast<unsigned char*>(memory) + block->used_, Platform::kMemoryBlockSize - block->used_);
    return block;
}

std::size_t ArenaBlock::BlocksInUse() { return blocksInUse.load(std::memory_order_relaxed); }

ArenaBlock* ArenaBlock::Of(const void* piece)
{
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(piece);
    return reinterpret_cast<ArenaBlock*>(address - address % Platform::kMemoryBlockSize);
}

bool ArenaBlock::HasRoom(std::size_t bytes) const { return Platform::kMemoryBlockSize - used_ >= bytes; }

void* ArenaBlock::Take(std::size_t bytes, std::size_t alignment)
{
    const std::size_t start = AlignUp(used_, alignment);
    if (start > Platform::kMemoryBlockSize || Platform::kMemoryBlockSize - start < bytes)
        return nullptr;
    used_ = start + bytes;
    ++handedOut_;
    unsigned char* piece = reinterpret_cast<unsigned char*>(this) + start;
    TESSEL_UNPOISON(piece, bytes);
    return piece;
}

void ArenaBlock::GiveBack(void* piece, std::size_t bytes)
{
    TESSEL_POISON(piece, bytes);
    Of(piece)->Release();
}

void ArenaBlock::Release()
{
    if (outstanding_.fetch_sub(1, std::memory_order_acq_rel) == 1)
        Free();
}

void ArenaBlock::Retire()
{
    const std::uint64_t neverHandedOut = kHeld - handedOut_;
    if (outstanding_.fetch_sub(neverHandedOut, std::memory_order_acq_rel) == neverHandedOut)
        Free();
}

void ArenaBlock::Free()
{
    this->~ArenaBlock();
    // The addresses may later be mapped again for something else.
    TESSEL_UNPOISON(this, Platform::kMemoryBlockSize);
    Platform::FreeBlock(this);
    blocksInUse.fetch_sub(1, std::memory_order_relaxed);
}

ObjectArena::~ObjectArena()
{
    if (current_)
        current_->Retire();
}

ArenaBlock* ObjectArena::BlockWithRoom(std::size_t bytes)
{
    if (current_ && current_->HasRoom(bytes))
        return current_;
    ArenaBlock* fresh = ArenaBlock::Create(blocksMade_ >= kBlocksBeforeLargePages);
    if (!fresh)
        return nullptr;
    ++blocksMade_;
    if (current_)
        current_->Retire();
    current_ = fresh;
    return current_;
}
