#include "tessel/gis/FlatGeobufFeature.h"

#include <cstdint>
#include <cstring>

namespace tessel {
namespace {

// The layout, in bytes from the size prefix, from which FlatBuffers aligns a size-prefixed
// buffer (doubles on multiples of 8, as its verifiers demand). Numbers are little-endian as
// they lie in memory on every system tessel builds for; offsets count from where they lie.
//   0  the size of what follows
//   4  the root: the Feature table's place (+12)
//   8  Feature vtable: its size (8), the table's size (12), geometry's and properties' places
//      in the table (0 when absent)
//  16  Feature table: the distance back to its vtable (8), at 20 the offset to geometry, at
//      24 the offset to properties
//  28  with a point: the Geometry vtable (8, 8, no ends: 0, xy at 4), at 36 its table (8 back
//      to the vtable, at 40 the offset to xy), at 44 the xy vector: its length (2), at 48 x
//      and at 56 y
//  28 or 64: with properties, their vector: its length, then the bytes
constexpr std::size_t kRoot = 4;
constexpr std::size_t kFeatureVtable = 8;
constexpr std::size_t kFeatureTable = 16;
constexpr std::size_t kGeometryField = 20;
constexpr std::size_t kPropertiesField = 24;
constexpr std::size_t kGeometryVtable = 28;
constexpr std::size_t kGeometryTable = 36;
constexpr std::size_t kXyField = 40;
constexpr std::size_t kXyVector = 44;
constexpr std::size_t kAfterPoint = 64;

void Put(char* at, std::uint32_t value)
{
    std::memcpy(at, &value, sizeof value);
}
void Put16(char* at, std::uint16_t value)
{
    std::memcpy(at, &value, sizeof value);
}

} // namespace

std::size_t FlatGeobufFeatureSize(bool withPoint, std::size_t propertyBytes)
{
    return (withPoint ? kAfterPoint : kGeometryVtable) + (propertyBytes ? 4 + propertyBytes : 0);
}

char* WriteFlatGeobufFeature(char* feature, const double* xy, std::size_t propertyBytes)
{
    const std::size_t size = FlatGeobufFeatureSize(xy != nullptr, propertyBytes);
    Put(feature, static_cast<std::uint32_t>(size - 4));
    Put(feature + kRoot, kFeatureTable - kRoot);
    Put16(feature + kFeatureVtable, 8);
    Put16(feature + kFeatureVtable + 2, 12);
    Put16(feature + kFeatureVtable + 4, xy ? kGeometryField - kFeatureTable : 0);
    Put16(feature + kFeatureVtable + 6, propertyBytes ? kPropertiesField - kFeatureTable : 0);
    Put(feature + kFeatureTable, kFeatureTable - kFeatureVtable);
    Put(feature + kGeometryField, xy ? kGeometryTable - kGeometryField : 0);
    std::size_t next = kGeometryVtable;
    if (xy) {
        Put16(feature + kGeometryVtable, 8);
        Put16(feature + kGeometryVtable + 2, 8);
        Put16(feature + kGeometryVtable + 4, 0);
        Put16(feature + kGeometryVtable + 6, kXyField - kGeometryTable);
        Put(feature + kGeometryTable, kGeometryTable - kGeometryVtable);
        Put(feature + kXyField, kXyVector - kXyField);
        Put(feature + kXyVector, 2);
        std::memcpy(feature + kXyVector + 4, xy, 2 * sizeof(double));
        next = kAfterPoint;
    }
    Put(feature + kPropertiesField, propertyBytes ? static_cast<std::uint32_t>(next - kPropertiesField) : 0);
    if (!propertyBytes)
        return feature + next;
    Put(feature + next, static_cast<std::uint32_t>(propertyBytes));
    return feature + next + 4;
}

} // namespace tessel
