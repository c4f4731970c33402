#pragma once
// FlatGeobuf features from the time their records are written until they go out in the
// index's order, each kept as its point, its size in the file and its properties, packed:
// each value behind a one-byte tag, its column given by its place, text with a one-byte length
// where it is short. A real value that repeats the feature's x or y (binds to the coordinates
// put them among the values) is its tag alone. A survey point takes about 48 bytes where
// FlatGeobuf's own encoding of its properties alone takes 58, and what is kept is written once
// and read once, in large pages.
// A feature is found by its locator, 31 bits, so that the index's sort key can carry it.

#include "host/ImpexData.h"
#include "tessel/system/LargeMemory.h"
#include "tessel/text/RecordWriter.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace tessel {

class FlatGeobufRecords {
public:
    static constexpr int kLocatorBits = 31;

    // types: each column's, as the file declares them.
    explicit FlatGeobufRecords(std::vector<FieldType> types);
    ~FlatGeobufRecords();
    FlatGeobufRecords(const FlatGeobufRecords&) = delete;
    FlatGeobufRecords& operator=(const FlatGeobufRecords&) = delete;

    // Keeps a feature: its point (x and y NaN for none) and the properties of its values,
    // count of them from first on (at most one per column). Returns its locator; throws
    // JobError when the features kept pass 16 GB.
    std::uint32_t Keep(double x, double y, const boost::shared_ptr<VeltoGis::Data::CDataBox>* first, std::size_t count);

    // Where a kept feature lies, to fetch it ahead.
    const void* Address(std::uint32_t locator) const
    {
        return blocks_[locator >> kUnitBits].data + (std::size_t(locator) & (kUnitsPerBlock - 1)) * kUnit;
    }
    // A kept feature's point (NaN for none) and its size in the file, size prefix included.
    void PointAndSize(std::uint32_t locator, double& x, double& y, std::uint32_t& bytes) const
    {
        const auto* at = static_cast<const unsigned char*>(Address(locator));
        std::memcpy(&x, at, sizeof x);
        std::memcpy(&y, at + sizeof x, sizeof y);
        std::memcpy(&bytes, at + 2 * sizeof x, sizeof bytes);
    }
    // Writes the kept feature's PointAndSize bytes at feature. Throws JobError should its
    // properties come out at another size than they were kept.
    void Write(std::uint32_t locator, char* feature) const;

private:
    static constexpr std::size_t kUnit = 8; // features start on 8-byte boundaries
    static constexpr int kUnitBits = 18;    // a 2 MB block in units
    static constexpr std::size_t kUnitsPerBlock = std::size_t(1) << kUnitBits;
    static_assert(kUnitsPerBlock * kUnit == memory::kBlockSize, "a locator's units span a block");
    static constexpr std::size_t kMostBlocks = std::size_t(1) << (kLocatorBits - kUnitBits);

    void Pack(const VeltoGis::Data::CDataBox& value, FieldType type, double x, double y, std::size_t& encodedBytes);
    std::uint32_t Room(std::size_t bytes, unsigned char*& room);

    std::vector<FieldType> types_;
    std::string packed_; // the properties of the feature being kept
    struct Block {
        unsigned char* data;
        bool own; // from new[], not a system block
    };
    std::vector<Block> blocks_;
    std::size_t current_ = 0; // the system block being filled, when used_ > 0
    std::size_t used_ = kUnitsPerBlock;
};

} // namespace tessel
