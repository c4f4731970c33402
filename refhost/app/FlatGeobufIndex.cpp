#include "refhost/app/SpatialIndexes.h"

#include "refhost/app/AppError.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <numeric>

namespace tessel {
namespace {

// The file: 8 bytes of magic, the header (a size-prefixed flatbuffer), the index, then the
// features (each a size-prefixed flatbuffer). All numbers little-endian, as on every system
// tessel builds with GDAL, so numbers are read and written as they lie in memory.
constexpr std::size_t kMagicBytes = 8;
constexpr std::uint16_t kNodeSize = 16; // children per index node, as GDAL writes it
constexpr int kFeaturesCountField = 8;  // fields of the header table
constexpr int kIndexNodeSizeField = 9;

struct NodeItem {
    double minX, minY, maxX, maxY;
    std::uint64_t offset; // leaves: the feature's byte offset among the features; above: the first child's node
};

template <typename Value>
Value Read(const unsigned char* at)
{
    Value value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

[[noreturn]] void Fail(const std::string& path, const std::string& why)
{
    throw JobError("cannot write the spatial index of '" + path + "': " + why);
}

// A read-only view of the whole file.
class MappedFile {
public:
    explicit MappedFile(const std::string& path)
    {
        const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        if (descriptor < 0 || fstat(descriptor, &status) != 0) {
            if (descriptor >= 0)
                close(descriptor);
            Fail(path, std::strerror(errno));
        }
        size_ = static_cast<std::size_t>(status.st_size);
        void* data = size_ ? mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, descriptor, 0) : nullptr;
        close(descriptor);
        if (data == MAP_FAILED)
            Fail(path, std::strerror(errno));
        data_ = static_cast<const unsigned char*>(data);
    }
    ~MappedFile()
    {
        if (data_)
            munmap(const_cast<unsigned char*>(data_), size_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    const unsigned char* Data() const { return data_; }
    std::size_t Size() const { return size_; }

private:
    const unsigned char* data_ = nullptr;
    std::size_t size_ = 0;
};

// Where a field of the header's root table lies in the file; 0 when the table leaves it out.
std::size_t HeaderField(const unsigned char* header, std::size_t headerBytes, int field)
{
    if (headerBytes < 8)
        return 0;
    const std::uint32_t table = Read<std::uint32_t>(header);
    if (table + 4 > headerBytes)
        return 0;
    const std::int64_t vtable = static_cast<std::int64_t>(table) - Read<std::int32_t>(header + table);
    if (vtable < 0 || static_cast<std::size_t>(vtable) + 4 > headerBytes)
        return 0;
    const std::uint16_t vtableBytes = Read<std::uint16_t>(header + vtable);
    const std::size_t entry = static_cast<std::size_t>(vtable) + 4 + 2 * static_cast<std::size_t>(field);
    if (entry + 2 > static_cast<std::size_t>(vtable) + vtableBytes || entry + 2 > headerBytes)
        return 0;
    const std::uint16_t offset = Read<std::uint16_t>(header + entry);
    return offset ? table + offset : 0;
}

// Position along a Hilbert curve over a 65536 x 65536 grid.
std::uint32_t HilbertIndex(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t index = 0;
    for (std::uint32_t step = 1u << 15; step > 0; step >>= 1) {
        const std::uint32_t rx = (x & step) ? 1 : 0;
        const std::uint32_t ry = (y & step) ? 1 : 0;
        index += step * step * ((3 * rx) ^ ry);
        if (ry == 0) {
            if (rx == 1) {
                x = 0xFFFF - x;
                y = 0xFFFF - y;
            }
            std::swap(x, y);
        }
    }
    return index;
}

// The features in the order of the curve through their points' extent; features without a
// point go last, in the order written.
std::vector<std::size_t> CurveOrder(const std::vector<IndexedPoint>& points)
{
    double minX = INFINITY, minY = INFINITY, maxX = -INFINITY, maxY = -INFINITY;
    for (const IndexedPoint& point : points) {
        if (std::isnan(point.x))
            continue;
        minX = std::min(minX, point.x), maxX = std::max(maxX, point.x);
        minY = std::min(minY, point.y), maxY = std::max(maxY, point.y);
    }
    const auto cell = [](double value, double min, double max) {
        return max > min ? static_cast<std::uint32_t>(0xFFFF * ((value - min) / (max - min))) : 0u;
    };
    std::vector<std::uint64_t> keys(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const IndexedPoint& point = points[i];
        keys[i] = std::isnan(point.x) ? std::numeric_limits<std::uint64_t>::max()
                                      : HilbertIndex(cell(point.x, minX, maxX), cell(point.y, minY, maxY));
    }
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    return order;
}

// The packed tree over leaves in curve order: levels stored from the root down, leaves last,
// each node's box enclosing its children's.
std::vector<NodeItem> PackedTree(std::vector<NodeItem> leaves)
{
    std::vector<std::size_t> levelNodes{leaves.size()}; // from the leaves up
    std::size_t total = leaves.size();
    for (std::size_t n = leaves.size(); n != 1;) {
        n = (n + kNodeSize - 1) / kNodeSize;
        levelNodes.push_back(n);
        total += n;
    }
    std::vector<std::size_t> levelStart;
    for (std::size_t end = total, level = 0; level < levelNodes.size(); ++level)
        levelStart.push_back(end -= levelNodes[level]);
    std::vector<NodeItem> nodes(total);
    std::copy(leaves.begin(), leaves.end(), nodes.begin() + static_cast<std::ptrdiff_t>(levelStart[0]));
    for (std::size_t level = 0; level + 1 < levelNodes.size(); ++level) {
        std::size_t child = levelStart[level];
        const std::size_t end = child + levelNodes[level];
        for (std::size_t parent = levelStart[level + 1]; child < end; ++parent) {
            NodeItem node{INFINITY, INFINITY, -INFINITY, -INFINITY, child};
            for (std::size_t i = 0; i < kNodeSize && child < end; ++i, ++child) {
                node.minX = std::min(node.minX, nodes[child].minX);
                node.minY = std::min(node.minY, nodes[child].minY);
                node.maxX = std::max(node.maxX, nodes[child].maxX);
                node.maxY = std::max(node.maxY, nodes[child].maxY);
            }
            nodes[parent] = node;
        }
    }
    return nodes;
}

class OutputStream {
public:
    explicit OutputStream(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "wb"))
    {
        if (!file_)
            Fail(path_, std::strerror(errno));
        std::setvbuf(file_, nullptr, _IOFBF, 1 << 20);
    }
    ~OutputStream()
    {
        if (file_)
            std::fclose(file_);
    }
    OutputStream(const OutputStream&) = delete;
    OutputStream& operator=(const OutputStream&) = delete;

    void Write(const void* data, std::size_t bytes)
    {
        if (bytes && std::fwrite(data, 1, bytes, file_) != bytes)
            Fail(path_, std::strerror(errno));
    }
    void Close()
    {
        const bool closed = std::fclose(file_) == 0;
        file_ = nullptr;
        if (!closed)
            Fail(path_, std::strerror(errno));
    }

private:
    std::string path_;
    std::FILE* file_;
};

} // namespace

void AddFlatGeobufIndex(const std::string& path, const std::vector<IndexedPoint>& points)
{
    const std::string indexed = path + ".indexed";
    {
        const MappedFile file(path);
        const unsigned char* data = file.Data();
        if (file.Size() < kMagicBytes + 4 || std::memcmp(data, "fgb", 3) != 0)
            Fail(path, "not a FlatGeobuf file");
        const std::size_t headerBytes = Read<std::uint32_t>(data + kMagicBytes);
        const unsigned char* header = data + kMagicBytes + 4;
        if (kMagicBytes + 4 + headerBytes > file.Size())
            Fail(path, "its header is cut short");
        const std::size_t count = HeaderField(header, headerBytes, kFeaturesCountField);
        const std::size_t nodeSize = HeaderField(header, headerBytes, kIndexNodeSizeField);
        // GDAL writes the node size 0 when it makes no index; that value is what becomes 16.
        if (!count || !nodeSize || Read<std::uint16_t>(header + nodeSize) != 0 ||
            Read<std::uint64_t>(header + count) != points.size())
            Fail(path, "its header is not that of a FlatGeobuf file without an index of these features");

        // Each feature's place, found by walking their size prefixes.
        const std::size_t featuresStart = kMagicBytes + 4 + headerBytes;
        std::vector<std::size_t> starts(points.size() + 1);
        std::size_t at = featuresStart;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (at + 4 > file.Size())
                Fail(path, "it holds fewer features than its header says");
            starts[i] = at;
            at += 4 + Read<std::uint32_t>(data + at);
        }
        if (at != file.Size())
            Fail(path, "its features do not end where the file does");
        starts[points.size()] = at;

        const std::vector<std::size_t> order = CurveOrder(points);
        std::vector<NodeItem> leaves(points.size());
        std::uint64_t offset = 0;
        for (std::size_t k = 0; k < order.size(); ++k) {
            const IndexedPoint& point = points[order[k]];
            leaves[k] = std::isnan(point.x) ? NodeItem{INFINITY, INFINITY, -INFINITY, -INFINITY, offset}
                                            : NodeItem{point.x, point.y, point.x, point.y, offset};
            offset += starts[order[k] + 1] - starts[order[k]];
        }
        const std::vector<NodeItem> nodes = PackedTree(std::move(leaves));

        OutputStream out(indexed);
        std::vector<unsigned char> head(data, data + featuresStart);
        const std::uint16_t nodeSizeValue = kNodeSize;
        std::memcpy(head.data() + kMagicBytes + 4 + nodeSize, &nodeSizeValue, sizeof nodeSizeValue);
        out.Write(head.data(), head.size());
        static_assert(sizeof(NodeItem) == 40, "index nodes are 40 bytes in the file");
        out.Write(nodes.data(), nodes.size() * sizeof(NodeItem));
        for (const std::size_t feature : order)
            out.Write(data + starts[feature], starts[feature + 1] - starts[feature]);
        out.Close();
    }
    if (std::rename(indexed.c_str(), path.c_str()) != 0) {
        const int error = errno;
        std::remove(indexed.c_str());
        Fail(path, std::strerror(error));
    }
}

} // namespace tessel
