#pragma once
// The allocator of the arrays of millions of items that tessel's writers keep and sort: an
// array of a megabyte or more comes from the system's large-array memory (large pages where
// the system offers them, so that sorting it costs few page faults and address-translation
// misses); a smaller one from the heap.

#include "tessel/system/LargeMemory.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <new>

namespace tessel {

template <typename Item>
class LargeArrayAllocator {
public:
    using value_type = Item;

    LargeArrayAllocator() = default;
    template <typename Other>
    LargeArrayAllocator(const LargeArrayAllocator<Other>&)
    {}

    Item* allocate(std::size_t count)
    {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(Item))
            throw std::bad_array_new_length();
        if (!IsLarge(count))
            return std::allocator<Item>().allocate(count);
        void* memory = memory::AllocateLarge(count * sizeof(Item));
        if (!memory)
            throw std::bad_alloc();
        return static_cast<Item*>(memory);
    }

    void deallocate(Item* items, std::size_t count)
    {
        if (IsLarge(count))
            memory::FreeLarge(items, count * sizeof(Item));
        else
            std::allocator<Item>().deallocate(items, count);
    }

    template <typename Other>
    bool operator==(const LargeArrayAllocator<Other>&) const
    {
        return true;
    }
    template <typename Other>
    bool operator!=(const LargeArrayAllocator<Other>&) const
    {
        return false;
    }

private:
    static bool IsLarge(std::size_t count) { return count * sizeof(Item) >= (std::size_t(1) << 20); }
};

} // namespace tessel
