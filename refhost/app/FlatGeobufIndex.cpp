#include "refhost/app/SpatialIndexes.h"

#include <algorithm>
#include <cmath>
#include <limits>

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

void SortAlongHilbertCurve(FlatGeobufItems& items)
{
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (const FlatGeobufItem& item : items) {
        if (std::isnan(item.x))
            continue;
        minX = std::min(minX, item.x), maxX = std::max(maxX, item.x);
        minY = std::min(minY, item.y), maxY = std::max(maxY, item.y);
    }
    const auto cell = [](double value, double min, double max) {
        return max > min ? static_cast<std::uint32_t>(0xFFFF * ((value - min) / (max - min))) : 0u;
    };
    // The key: one bit for "no point", the place on the curve, the place in the order written.
    for (std::size_t i = 0; i < items.size(); ++i) {
        FlatGeobufItem& item = items[i];
        const std::uint64_t place = std::isnan(item.x)
                                        ? std::uint64_t(1) << 32
                                        : HilbertIndex(cell(item.x, minX, maxX), cell(item.y, minY, maxY));
        item.sortKey = place << 31 | i;
    }
    std::sort(items.begin(), items.end(),
              [](const FlatGeobufItem& a, const FlatGeobufItem& b) { return a.sortKey < b.sortKey; });
}

std::vector<FlatGeobufNode> FlatGeobufUpperLevels(const FlatGeobufItems& sorted)
{
    std::vector<std::size_t> levelNodes{sorted.size()}; // from the leaves up
    std::size_t total = sorted.size();
    for (std::size_t n = sorted.size(); n > 1;) {
        n = (n + kFlatGeobufNodeSize - 1) / kFlatGeobufNodeSize;
        levelNodes.push_back(n);
        total += n;
    }
    std::vector<std::size_t> levelStart; // among all the nodes, leaves included
    for (std::size_t end = total, level = 0; level < levelNodes.size(); ++level)
        levelStart.push_back(end -= levelNodes[level]);
    std::vector<FlatGeobufNode> nodes(total - sorted.size());
    const auto box = [&](std::size_t node) -> FlatGeobufNode {
        if (node < nodes.size())
            return nodes[node];
        const FlatGeobufItem& leaf = sorted[node - nodes.size()];
        return std::isnan(leaf.x) ? FlatGeobufNode{INFINITY, INFINITY, -INFINITY, -INFINITY, 0}
                                  : FlatGeobufNode{leaf.x, leaf.y, leaf.x, leaf.y, 0};
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
