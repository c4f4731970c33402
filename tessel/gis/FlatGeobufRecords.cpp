#include "tessel/gis/FlatGeobufRecords.h"

#include "tessel/gis/FlatGeobufFeature.h"

#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;

// What precedes each value kept. A column's number is its place among the tags.
enum Tag : unsigned char {
    kNull,      // no property
    kInteger,   // 4 bytes
    kReal,      // 8 bytes
    kRealIsX,   // the feature's x
    kRealIsY,   // the feature's y
    kShortText, // 1 byte of length, then UTF-8
    kLongText,  // 4 bytes of length, then UTF-8
};

template <typename Value>
void Append(std::string& out, Value value)
{
    out.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <typename Value>
Value Read(const unsigned char*& at)
{
    Value value;
    std::memcpy(&value, at, sizeof value);
    at += sizeof value;
    return value;
}

bool SameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// FlatGeobuf's encoding of one property: the column's number, then the value.
constexpr std::size_t kColumnBytes = sizeof(std::uint16_t);

// A kept feature's x, y and size come before its tags.
constexpr std::size_t kHeaderBytes = 2 * sizeof(double) + sizeof(std::uint32_t);

// Writes FlatGeobuf's encoding of properties packed for (x, y) with count tags to [to, end):
// each value that is not null, its column's number, then the value as its column types it.
// False when that is not exactly what the encoding takes (nothing is written past end).
bool Encode(char* to, char* const end, const unsigned char* kept, std::size_t count, double x, double y)
{
    const auto put = [&to](const void* bytes, std::size_t size) {
        std::memcpy(to, bytes, size);
        to += size;
    };
    const unsigned char* at = kept;
    for (std::size_t i = 0; i < count; ++i) {
        const auto tag = static_cast<Tag>(*at++);
        if (tag == kNull)
            continue;
        const auto column = static_cast<std::uint16_t>(i);
        std::size_t valueBytes = sizeof(double);
        std::uint32_t length = 0;
        if (tag == kInteger)
            valueBytes = sizeof(std::int32_t);
        else if (tag == kShortText || tag == kLongText)
            length = tag == kShortText ? *at++ : Read<std::uint32_t>(at), valueBytes = sizeof length + length;
        if (static_cast<std::size_t>(end - to) < kColumnBytes + valueBytes)
            return false;
        put(&column, sizeof column);
        switch (tag) {
        case kInteger:
        case kReal: put(at, valueBytes), at += valueBytes; break;
        case kRealIsX: put(&x, sizeof x); break;
        case kRealIsY: put(&y, sizeof y); break;
        case kShortText:
        case kLongText: put(&length, sizeof length), put(at, length), at += length; break;
        case kNull: break;
        }
    }
    return to == end;
}

} // namespace

FlatGeobufRecords::FlatGeobufRecords(std::vector<FieldType> types) : types_(std::move(types)) {}

FlatGeobufRecords::~FlatGeobufRecords()
{
    for (const Block& block : blocks_) {
        if (block.own)
            delete[] block.data;
        else if (block.data)
            memory::FreeBlock(block.data);
    }
}

// A feature: x, y, its size in the file, then (when it has properties) a tag for each column,
// each but kNull followed by its value.
std::uint32_t FlatGeobufRecords::Keep(double x, double y, const boost::shared_ptr<CDataBox>* first, std::size_t count)
{
    std::size_t encodedBytes = 0;
    packed_.clear();
    for (std::size_t i = 0; count && i < types_.size(); ++i) {
        const CDataBox* value = i < count ? first[i].get() : nullptr;
        if (!value || refhost::KindOf(*value) == CDataBox::Kind::Null)
            packed_.push_back(static_cast<char>(kNull));
        else
            Pack(*value, types_[i], x, y, encodedBytes);
    }
    const std::size_t bytes = FlatGeobufFeatureSize(!std::isnan(x), encodedBytes);
    // FlatBuffers address a buffer in 31 bits.
    if (bytes > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw JobError("a feature of " + std::to_string(bytes) + " bytes is too large for FlatGeobuf");
    const std::size_t packedBytes = encodedBytes ? packed_.size() : 0;
    unsigned char* room = nullptr;
    const std::uint32_t locator = Room(kHeaderBytes + packedBytes, room);
    const auto size = static_cast<std::uint32_t>(bytes);
    std::memcpy(room, &x, sizeof x);
    std::memcpy(room + sizeof x, &y, sizeof y);
    std::memcpy(room + 2 * sizeof x, &size, sizeof size);
    std::memcpy(room + kHeaderBytes, packed_.data(), packedBytes);
    return locator;
}

void FlatGeobufRecords::Pack(const CDataBox& value, FieldType type, double x, double y, std::size_t& encodedBytes)
{
    const bool integer = refhost::KindOf(value) == CDataBox::Kind::Integer;
    switch (type) {
    case FieldType::Integer:
        packed_.push_back(static_cast<char>(kInteger));
        Append(packed_, static_cast<std::int32_t>(refhost::IntegerOf(value)));
        encodedBytes += kColumnBytes + sizeof(std::int32_t);
        return;
    case FieldType::Real: {
        const double real = integer ? static_cast<double>(refhost::IntegerOf(value)) : refhost::RealOf(value);
        if (SameBits(real, x)) {
            packed_.push_back(static_cast<char>(kRealIsX));
        } else if (SameBits(real, y)) {
            packed_.push_back(static_cast<char>(kRealIsY));
        } else {
            packed_.push_back(static_cast<char>(kReal));
            Append(packed_, real);
        }
        encodedBytes += kColumnBytes + sizeof(double);
        return;
    }
    case FieldType::Text: break;
    }
    const bool text = refhost::KindOf(value) == CDataBox::Kind::Text;
    const std::basic_string_view<WChar> units = refhost::TextViewOf(value);
    const std::string number = text ? std::string() : ToUtf8(static_cast<WString>(value));
    const std::size_t length = text ? Utf8Length(units.data(), units.size()) : number.size();
    if (length > std::numeric_limits<std::uint32_t>::max())
        throw JobError("FlatGeobuf holds no text of more than 4 GB");
    if (length <= std::numeric_limits<std::uint8_t>::max()) {
        packed_.push_back(static_cast<char>(kShortText));
        packed_.push_back(static_cast<char>(length));
    } else {
        packed_.push_back(static_cast<char>(kLongText));
        Append(packed_, static_cast<std::uint32_t>(length));
    }
    if (text)
        AppendUtf8(packed_, units.data(), units.size());
    else
        packed_ += number; // a number in a text column
    encodedBytes += kColumnBytes + sizeof(std::uint32_t) + length;
}

void FlatGeobufRecords::Write(std::uint32_t locator, char* feature) const
{
    double xy[2];
    std::uint32_t bytes = 0;
    PointAndSize(locator, xy[0], xy[1], bytes);
    const bool located = !std::isnan(xy[0]);
    const std::size_t withoutProperties = FlatGeobufFeatureSize(located, 0);
    const std::size_t propertyBytes = bytes > withoutProperties ? bytes - withoutProperties - sizeof(std::uint32_t) : 0;
    char* const properties = WriteFlatGeobufFeature(feature, located ? xy : nullptr, propertyBytes);
    const auto* packed = static_cast<const unsigned char*>(Address(locator)) + kHeaderBytes;
    if (propertyBytes && !Encode(properties, feature + bytes, packed, types_.size(), xy[0], xy[1]))
        throw JobError("a FlatGeobuf feature's properties came out at another size than they were kept");
}

// Each block is listed before it is taken, so that nothing taken is lost to a throw. A feature
// larger than a block gets one of its own.
std::uint32_t FlatGeobufRecords::Room(std::size_t bytes, unsigned char*& room)
{
    const std::size_t units = (bytes + kUnit - 1) / kUnit;
    if (units > kUnitsPerBlock - used_) {
        if (blocks_.size() == kMostBlocks)
            throw JobError("tessel keeps at most " + std::to_string(kMostBlocks * memory::kBlockSize >> 30) +
                           " GB of features for a FlatGeobuf file");
        if (units > kUnitsPerBlock) {
            blocks_.push_back({nullptr, true});
            room = blocks_.back().data = new unsigned char[units * kUnit];
            used_ = kUnitsPerBlock; // what follows goes after it, so that locators keep the order written
            return static_cast<std::uint32_t>((blocks_.size() - 1) << kUnitBits);
        }
        blocks_.push_back({nullptr, false});
        blocks_.back().data = static_cast<unsigned char*>(memory::AllocateBlock());
        if (!blocks_.back().data)
            throw std::bad_alloc();
        current_ = blocks_.size() - 1;
        used_ = 0;
    }
    room = blocks_[current_].data + used_ * kUnit;
    const auto locator = static_cast<std::uint32_t>(current_ << kUnitBits | used_);
    used_ += units;
    return locator;
}

} // namespace tessel
