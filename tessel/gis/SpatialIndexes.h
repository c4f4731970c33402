#pragma once
// Spatial indexes built in one go once every feature is in: a GeoPackage's, which GDAL wrote
// without one, and FlatGeobuf's, which tessel's own writer lays out. GDAL 3.6 inserts each
// point into a GeoPackage's SQLite R-tree as it comes (12 of the 15 s that a million points
// cost) and spends 5 s of every million on FlatGeobuf's index; packing either tree from the
// sorted points takes a fraction of that. Each index is the one GDAL itself would have made,
// so every reader uses it.

#include "tessel/gis/FlatGeobufRecords.h"
#include "tessel/system/LargeArrayAllocator.h"

#include <algorithm>
#include <cmath>
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

// The points' extent: minX, minY, maxX, maxY (minX > maxX when there is no point).
struct FlatGeobufExtent {
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    void Add(double x, double y)
    {
        minX = std::min(minX, x), minY = std::min(minY, y), maxX = std::max(maxX, x), maxY = std::max(maxY, y);
    }
    bool Empty() const { return minX > maxX; }
};

// FlatGeobuf's features in the order written, then along a Hilbert curve: one entry per
// feature, whose low bits are its locator among the records kept (FlatGeobufRecords), and
// whose high bits HilbertOrder fills in.
using FlatGeobufOrder = std::vector<std::uint64_t, LargeArrayAllocator<std::uint64_t>>;
constexpr std::size_t kMostFlatGeobufFeatures = std::size_t(1) << 31;
inline std::uint32_t Locator(std::uint64_t entry)
{
    return static_cast<std::uint32_t>(entry & ((std::uint64_t(1) << FlatGeobufRecords::kLocatorBits) - 1));
}

// Sorts the entries along a Hilbert curve through the extent (which encloses every point):
// features on one place of the curve keep the order written, features without a point go
// last. At most kMostFlatGeobufFeatures entries.
void HilbertOrder(FlatGeobufOrder& order, const FlatGeobufRecords& records, const FlatGeobufExtent& extent);

// The levels of the index above its leaves, root first, where the leaves are the features in
// that order: the nodes the file holds before the leaves. Empty for at most one feature.
std::vector<FlatGeobufNode> FlatGeobufUpperLevels(const FlatGeobufOrder& order, const FlatGeobufRecords& records);

} // namespace tessel
