#include "tessel/gis/SpatialIndexes.h"

#include "platform/Sse2.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tessel {
namespace {

// Spreads the low 16 bits of value over the even bits.
std::uint32_t Interleave(std::uint32_t value)
{
    value = (value | (value << 8)) & 0x00FF00FF;
    value = (value | (value << 4)) & 0x0F0F0F0F;
    value = (value | (value << 2)) & 0x33333333;
    value = (value | (value << 1)) & 0x55555555;
    return value;
}

// Position along a Hilbert curve over a 65536 x 65536 grid, in the branch-free form of the
// public-domain hilbert_curves (the recursion's quadrant states as a prefix scan over the
// bits): a point costs a few dozen instructions rather than sixteen unpredictable branches.
std::uint32_t HilbertIndex(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t a = x ^ y, b = 0xFFFF ^ a, c = 0xFFFF ^ (x | y), d = x & (y ^ 0xFFFF);
    std::uint32_t nextA = a | (b >> 1), nextB = (a >> 1) ^ a;
    std::uint32_t nextC = ((c >> 1) ^ (b & (d >> 1))) ^ c, nextD = ((a & (c >> 1)) ^ (d >> 1)) ^ d;
    for (const int shift : {2, 4}) {
        a = nextA, b = nextB, c = nextC, d = nextD;
        nextA = (a & (a >> shift)) ^ (b & (b >> shift));
        nextB = (a & (b >> shift)) ^ (b & ((a ^ b) >> shift));
        nextC ^= (a & (c >> shift)) ^ (b & (d >> shift));
        nextD ^= (b & (c >> shift)) ^ ((a ^ b) & (d >> shift));
    }
    a = nextA, b = nextB, c = nextC, d = nextD;
    nextC ^= (a & (c >> 8)) ^ (b & (d >> 8));
    nextD ^= (b & (c >> 8)) ^ ((a ^ b) & (d >> 8));
    a = nextC ^ (nextC >> 1);
    b = nextD ^ (nextD >> 1);
    const std::uint32_t low = x ^ y;
    const std::uint32_t high = b | (0xFFFF ^ (low | a));
    return (Interleave(high) << 1) | Interleave(low);
}

} // namespace

void HilbertOrder(FlatGeobufOrder& order, const FlatGeobufRecords& records, const FlatGeobufExtent& extent)
{
    // A cell of the 65536 x 65536 grid over the extent; a multiplication where a division
    // would cost more than the curve itself.
    const double scaleX = extent.maxX > extent.minX ? 0xFFFF / (extent.maxX - extent.minX) : 0;
    const double scaleY = extent.maxY > extent.minY ? 0xFFFF / (extent.maxY - extent.minY) : 0;
    const auto cell = [](double value, double min, double scale) {
        return std::min(static_cast<std::uint32_t>((value - min) * scale), 0xFFFFu);
    };
    // An entry's upper 33 bits: one bit for "no point", then the place on the curve. The
    // locators below them follow the order written, so a stable sort by the upper bits alone
    // keeps the order written among equal places: three passes of 11 bits, counted while the
    // places are found.
    constexpr int kPlaceShift = FlatGeobufRecords::kLocatorBits, kDigitBits = 11, kPasses = 3;
    constexpr std::size_t kDigits = std::size_t(1) << kDigitBits;
    std::vector<std::size_t> counts(kPasses * kDigits);
    const auto digit = [](std::uint64_t entry, int pass) {
        return static_cast<std::size_t>(entry >> (kPlaceShift + pass * kDigitBits)) & (kDigits - 1);
    };
    // The records lie in the order written: each is fetched a few entries ahead.
    constexpr std::size_t kAhead = 8;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i + kAhead < order.size())
            PrefetchForReading(records.Address(Locator(order[i + kAhead])));
        double x, y;
        std::uint32_t bytes;
        records.PointAndSize(Locator(order[i]), x, y, bytes);
        const std::uint64_t place = std::isnan(x)
                                        ? std::uint64_t(1) << 32
                                        : HilbertIndex(cell(x, extent.minX, scaleX), cell(y, extent.minY, scaleY));
        const std::uint64_t entry = place << kPlaceShift | Locator(order[i]);
        order[i] = entry;
        for (int pass = 0; pass < kPasses; ++pass)
            ++counts[pass * kDigits + digit(entry, pass)];
    }
    FlatGeobufOrder other(order.size());
    for (int pass = 0; pass < kPasses; ++pass) {
        std::size_t* const start = &counts[pass * kDigits];
        // A pass where every entry has the same digit would move them all to where they are.
        if (std::count(start, start + kDigits, std::size_t(0)) == kDigits - 1)
            continue;
        std::size_t at = 0;
        for (std::size_t d = 0; d < kDigits; ++d)
            at += std::exchange(start[d], at);
        for (const std::uint64_t entry : order)
            other[start[digit(entry, pass)]++] = entry;
        order.swap(other);
    }
}

std::vector<FlatGeobufNode> FlatGeobufUpperLevels(const FlatGeobufOrder& order, const FlatGeobufRecords& records)
{
    std::vector<std::size_t> levelNodes{order.size()}; // from the leaves up
    std::size_t total = order.size();
    for (std::size_t n = order.size(); n > 1;) {
        n = (n + kFlatGeobufNodeSize - 1) / kFlatGeobufNodeSize;
        levelNodes.push_back(n);
        total += n;
    }
    std::vector<std::size_t> levelStart; // among all the nodes, leaves included
    for (std::size_t end = total, level = 0; level < levelNodes.size(); ++level)
        levelStart.push_back(end -= levelNodes[level]);
    std::vector<FlatGeobufNode> nodes(total - order.size());
    // The leaves' records lie in the order written: each is fetched a few leaves ahead.
    constexpr std::size_t kAhead = 16;
    const auto box = [&](std::size_t node) -> FlatGeobufNode {
        if (node < nodes.size())
            return nodes[node];
        const std::size_t leaf = node - nodes.size();
        if (leaf + kAhead < order.size())
            PrefetchForReading(records.Address(Locator(order[leaf + kAhead])));
        double x, y;
        std::uint32_t bytes;
        records.PointAndSize(Locator(order[leaf]), x, y, bytes);
        return std::isnan(x) ? FlatGeobufNode{INFINITY, INFINITY, -INFINITY, -INFINITY, 0}
                             : FlatGeobufNode{x, y, x, y, 0};
    };
    for (std::size_t level = 0; level + 1 < levelNodes.size(); ++level) {
        std::size_t child = levelStart[level];
        const std::size_t end = child + levelNodes[level];
        for (std::size_t parent = levelStart[level + 1]; child < end; ++parent) {
            FlatGeobufNode node{INFINITY, INFINITY, -INFINITY, -INFINITY, child};
            for (std::size_t i = 0; i < kFlatGeobufNodeSize && child < end; ++i, ++child) {
                const FlatGeobufNode inner = box(child);
                node.minX = std::min(node.minX, inner.minX);
                node.minY = std::min(node.minY, inner.minY);
                node.maxX = std::max(node.maxX, inner.maxX);
                node.maxY = std::max(node.maxY, inner.maxY);
            }
            nodes[parent] = node;
        }
    }
    return nodes;
}

} // namespace tessel
