#include "refhost/app/FlatGeobufProperties.h"

#include "platform/Platform.h"
#include "refhost/app/AppError.h"
#include "refhost/HostSide.h"
#include "refhost/Utf8.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
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

} // namespace

FlatGeobufProperties::FlatGeobufProperties(std::vector<FieldType> types) : types_(std::move(types)) {}

FlatGeobufProperties::~FlatGeobufProperties()
{
    for (const Block& block : blocks_) {
        if (block.own)
            delete[] block.data;
        else if (block.data)
            Platform::FreeBlock(block.data);
    }
}

const unsigned char* FlatGeobufProperties::Keep(const boost::shared_ptr<CDataBox>* first, std::size_t count, double x,
                                                double y, std::size_t& encodedBytes)
{
    encodedBytes = 0;
    packed_.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const CDataBox* value = first[i].get();
        if (!value || refhost::KindOf(*value) == CDataBox::Kind::Null)
            packed_.push_back(static_cast<char>(kNull));
        else
            Pack(*value, i < types_.size() ? types_[i] : FieldType::Text, x, y, encodedBytes);
    }
    if (encodedBytes == 0)
        return nullptr;
    unsigned char* kept = Room(packed_.size());
    std::memcpy(kept, packed_.data(), packed_.size());
    return kept;
}

void FlatGeobufProperties::Pack(const CDataBox& value, FieldType type, double x, double y, std::size_t& encodedBytes)
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
    const std::string number = text ? std::string() : refhost::ToUtf8(static_cast<WString>(value));
    const std::size_t length = text ? refhost::Utf8Length(units.data(), units.size()) : number.size();
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
        refhost::AppendUtf8(packed_, units.data(), units.size());
    else
        packed_ += number; // a number in a text column
    encodedBytes += kColumnBytes + sizeof(std::uint32_t) + length;
}

bool FlatGeobufProperties::Encode(char* to, char* const end, const unsigned char* kept, std::size_t count, double x,
                                  double y)
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

// Each block is listed before it is taken, so that nothing taken is lost to a throw. A record
// larger than a block gets one of its own.
unsigned char* FlatGeobufProperties::Room(std::size_t bytes)
{
    if (bytes > Platform::kMemoryBlockSize) {
        blocks_.push_back({nullptr, true});
        return blocks_.back().data = new unsigned char[bytes];
    }
    if (!current_ || used_ + bytes > Platform::kMemoryBlockSize) {
        blocks_.push_back({nullptr, false});
        current_ = blocks_.back().data = static_cast<unsigned char*>(Platform::AllocateBlock(true));
        if (!current_)
            throw std::bad_alloc();
        used_ = 0;
    }
    unsigned char* room = current_ + used_;
    used_ += bytes;
    return room;
}

} // namespace tessel
