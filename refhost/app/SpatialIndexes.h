#pragma once
// Spatial indexes built in one go once every feature is in: a GeoPackage's, which GDAL wrote
// without one, and FlatGeobuf's, which tessel's own writer lays out. GDAL 3.6 inserts each
// point into a GeoPackage's SQLite R-tree as it comes (12 of the 15 s that a million points
// cost) and spends 5 s of every million on FlatGeobuf's index; packing either tree from the
// sorted points takes a fraction of that. Each index is the one GDAL itself would have made,
// so every reader uses it.

#include "refhost/app/LargeArrayAllocator.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tessel {

// A feature's point; x and y are NaN for a feature without one.
struct IndexedPoint {
    std::int64_t fid;
    double x, y;
};

// Adds the R-tree extension's index of table's geometry column, holding points (by the
// table's feature id column), to the GeoPackage at path: the virtual table, its triggers and
// the extension's row. Nobody else may have the file open, and the table has no index yet.
// Throws JobError.
void AddGpkgSpatialIndex(const std::string& path, const std::string& table, const std::string& geometryColumn,
                         const std::string& fidColumn, std::vector<IndexedPoint> points);

// FlatGeobuf's packed Hilbert R-tree, which its files keep between the header and the
// features: every level from the root down, the leaves last, each node enclosing its
// children. A node's offset is, in a leaf, its feature's byte offset from the first feature
// (size prefix included) and, above, the index of its first child among all the nodes.
constexpr std::uint16_t kFlatGeobufNodeSize = 16; // children per node, as GDAL writes it
struct FlatGeobufNode {
    double minX, minY, maxX, maxY;
    std::uint64_t offset;
};
static_assert(sizeof(FlatGeobufNode) == 40, "index nodes are 40 bytes in the file");

// A feature on its way into the index: its point (x and y NaN for a feature without one), its
// size in the file (size prefix included) and where its writer keeps the rest of it. All
// that the writing needs travels with the item: after the sort, nothing is looked up out of
// order but the properties themselves.
struct FlatGeobufItem {
    std::uint64_t sortKey; // set by SortAlongHilbertCurve
    double x, y;
    const char* properties;
    std::uint32_t bytes;
};
constexpr std::size_t kMostFlatGeobufItems = std::size_t(1) << 31;
using FlatGeobufItems = std::vector<FlatGeobufItem, LargeArrayAllocator<FlatGeobufItem>>;

// Sorts the items, given in the order written (at most kMostFlatGeobufItems), in place along
// a Hilbert curve through their points' extent: items on one place of the curve keep the
// order written, items without a point go last. Sorted in place because there may be
// hundreds of millions: no second array is made.
void SortAlongHilbertCurve(FlatGeobufItems& items);
// A sorted item's place in the order written.
inline std::size_t WrittenIndex(const FlatGeobufItem& item)
{
    return static_cast<std::size_t>(item.sortKey & (kMostFlatGeobufItems - 1));
}

// The levels of the index above its leaves, root first, where the leaves are the sorted
// items: the nodes the file holds before the leaves. Empty for at most one item.
std::vector<FlatGeobufNode> FlatGeobufUpperLevels(const FlatGeobufItems& sorted);

} // namespace tessel
