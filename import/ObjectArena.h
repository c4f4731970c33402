#pragma once
// Makes the objects that an import hands over to the host (entities and their values) in
// large blocks instead of one heap allocation each: millions of them are made in a run and
// kept together. To the host they are ordinary shared pointers. A block goes back to the
// system once the arena has moved on from it and its last object (and control block) has
// been released, on whatever thread; one long-lived object therefore keeps its whole block.

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <new>

// One block of the system's block size and alignment: its header at the start, objects
// after it, so that every object's address leads to its block.
class ArenaBlock {
public:
    // Null when the system has no memory left.
    static ArenaBlock* Create(bool largePages);
    // Blocks of the process not yet given back to the system.
    static std::size_t BlocksInUse();

    // True when bytes fit behind what has been taken, alignment padding included.
    bool HasRoom(std::size_t bytes) const;
    // Room for bytes at the given alignment, or null when the block is too full.
    void* Take(std::size_t bytes, std::size_t alignment);
    // A piece of bytes taken from some block is given back; the last one of a retired block
    // frees the block.
    static void GiveBack(void* piece, std::size_t bytes);
    // Nothing more is taken from the block; frees it when all its pieces are back.
    void Retire();

private:
    ArenaBlock();
    static ArenaBlock* Of(const void* piece);
    void Release();
    void Free();

    // While the block is current it counts down from kHeld with every release, so that no
    // release can reach zero; Retire takes away what was never handed out, leaving the
    // number of pieces still in use.
    static constexpr std::uint64_t kHeld = std::uint64_t(1) << 62;
    std::atomic<std::uint64_t> outstanding_{kHeld};
    std::uint64_t handedOut_ = 0;
    std::size_t used_;
};

// Destroys an arena object and gives its memory back to its block.
struct ArenaDeleter {
    template <class T>
    void operator()(T* object) const
    {
        object->~T();
        ArenaBlock::GiveBack(object, sizeof(T));
    }
};

// Places a shared pointer's control block in the block that ObjectArena::Make has chosen for
// this thread's object at hand; stateless, so that the control block stays small.
template <class T>
class ArenaControlAllocator {
public:
    using value_type = T;

    ArenaControlAllocator() = default;
    template <class U>
    ArenaControlAllocator(const ArenaControlAllocator<U>&)
    {
    }

    T* allocate(std::size_t count);
    void deallocate(T* memory, std::size_t count) { ArenaBlock::GiveBack(memory, count * sizeof(T)); }

    template <class U>
    bool operator==(const ArenaControlAllocator<U>&) const { return true; }
    template <class U>
    bool operator!=(const ArenaControlAllocator<U>&) const { return false; }
};

class ObjectArena {
public:
    ObjectArena() = default;
    ~ObjectArena();
    ObjectArena(const ObjectArena&) = delete;
    ObjectArena& operator=(const ObjectArena&) = delete;

    // A new value-initialised T. Falls back to the heap when the system gives no block.
    template <class T>
    boost::shared_ptr<T> Make()
    {
        static_assert(alignof(T) <= alignof(std::max_align_t), "arena objects need no extended alignment");
        static_assert(sizeof(T) <= 4096, "arena objects are small beside a block");
        ArenaBlock* block = BlockWithRoom(sizeof(T) + kControlBlockBytes);
        if (!block)
            return boost::make_shared<T>();
        // BlockWithRoom has made sure that the object and its control block fit.
        void* memory = block->Take(sizeof(T), alignof(T));
        T* object = nullptr;
        try {
            object = new (memory) T();
        } catch (...) {
            ArenaBlock::GiveBack(memory, sizeof(T));
            throw;
        }
        controlBlockHome = block;
        return boost::shared_ptr<T>(object, ArenaDeleter(), ArenaControlAllocator<T>());
    }

private:
    template <class T>
    friend class ArenaControlAllocator;

    // Hands Make's chosen block to the control-block allocator, which boost constructs
    // without state: the block for the control block being made on this thread.
    static thread_local ArenaBlock* controlBlockHome;

    // Room kept for a control block beside its object and the padding of both: boost's with
    // a stateless deleter and allocator takes 32 bytes on 64-bit systems.
    static constexpr std::size_t kControlBlockBytes = 64;

    ArenaBlock* BlockWithRoom(std::size_t bytes);

    ArenaBlock* current_ = nullptr;
    int blocksMade_ = 0;
};

template <class T>
T* ArenaControlAllocator<T>::allocate(std::size_t count)
{
    ArenaBlock* block = ObjectArena::controlBlockHome;
    if (void* memory = block ? block->Take(count * sizeof(T), alignof(T)) : nullptr)
        return static_cast<T*>(memory);
    throw std::bad_alloc();
}
