#include "host/ImpexData.h"

#include <cstring>

namespace VeltoGis {
namespace ImportExport {
namespace {

std::uint64_t Bits(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

// A full-avalanche mix of one word (the finaliser of SplitMix64), so that every bit of a
// coordinate reaches every bit of the checksum.
std::uint64_t Mix(std::uint64_t word)
{
    word ^= word >> 30;
    word *= 0xBF58476D1CE4E5B9ULL;
    word ^= word >> 27;
    word *= 0x94D049BB133111EBULL;
    return word ^ (word >> 31);
}

// Order-sensitive: the running sum is rotated before each coordinate joins it. The offset
// keeps zero coordinates from mixing to zero, so that they still change the sum.
std::uint64_t Fold(std::uint64_t checksum, double coordinate)
{
    return ((checksum << 7) | (checksum >> 57)) ^ Mix(Bits(coordinate) + 0x9E3779B97F4A7C15ULL);
}

} // namespace

CCloud::CCloud(Storage storage) : storage_(storage) {}

CCloud::~CCloud() = default;

void CCloud::AddPoint(const double& x, const double& y)
{
    if (storage_ == Storage::KeepPoints) {
        coordinates_.push_back(x);
        coordinates_.push_back(y);
    }
    ++count_;
    checksum_ = Fold(Fold(checksum_, x), y);
}

} // namespace ImportExport
} // namespace VeltoGis
