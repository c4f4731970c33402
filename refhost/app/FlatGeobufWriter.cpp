// FlatGeobuf, written by tessel itself: GDAL 3.6's writer alone costs more per point than all
// of tessel's GeoJSON. Points and cloud points are Point features (x, y: the module's Z is no
// elevation); the header names the fields with their types, the coordinate system, the extent
// and the packed Hilbert R-tree that follows it; then come the features in the tree's order.
// That order is known only once every point is in, so the features wait in memory until End.

#include "refhost/app/AppError.h"
#include "refhost/app/CoordinateSystem.h"
#include "refhost/app/FlatGeobufFeature.h"
#include "refhost/app/RecordWriter.h"
#include "refhost/app/SpatialIndexes.h"
#include "refhost/HostSide.h"
#include "refhost/Utf8.h"
#include "platform/Platform.h"

#include <flatbuffers/flatbuffers.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <optional>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::DataValueList;

// Format version 3.0.1.
constexpr char kMagic[8] = {'f', 'g', 'b', 3, 'f', 'g', 'b', 1};

// The schema's tables, by field number.
enum HeaderField { kLayerName, kEnvelope, kGeometryType, kColumns = 7, kFeaturesCount, kIndexNodeSize, kCrs };
enum ColumnField { kColumnName, kColumnType };
enum CrsField { kCrsOrganisation, kCrsCode, kCrsName, kCrsWkt = 4 };

// Where a field's entry lies in its table's vtable.
flatbuffers::voffset_t Slot(int field)
{
    return flatbuffers::FieldIndexToOffset(static_cast<flatbuffers::voffset_t>(field));
}

constexpr std::uint8_t kPointGeometry = 1;
enum class ColumnType : std::uint8_t { Int = 5, Double = 10, String = 11 };

ColumnType ColumnTypeOf(FieldType type)
{
    switch (type) {
    case FieldType::Integer: return ColumnType::Int;
    case FieldType::Real: return ColumnType::Double;
    case FieldType::Text: break;
    }
    return ColumnType::String;
}

template <typename Value>
void Append(std::string& out, Value value)
{
    out.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// The features' properties, kept whole in the platform's memory blocks (a feature's longer
// than a block gets one of its own) until they are written in the index's order. The blocks
// have large pages where the system offers them: read out of order, ordinary pages would miss
// the address-translation cache on nearly every feature.
class PropertyStore {
public:
    PropertyStore() = default;
    ~PropertyStore()
    {
        for (const Block& block : blocks_) {
            if (block.own)
                delete[] block.data;
            else if (block.data)
                Platform::FreeBlock(block.data);
        }
    }
    PropertyStore(const PropertyStore&) = delete;
    PropertyStore& operator=(const PropertyStore&) = delete;

    // Keeps the properties; where they are (null for none). The first four bytes there
    // tell how many follow.
    const char* Add(const std::string& properties)
    {
        if (properties.empty())
            return nullptr;
        const std::size_t size = sizeof(std::uint32_t) + properties.size();
        char* at;
        // Each block is listed before it is taken, so that nothing taken is lost to a throw.
        if (size > Platform::kMemoryBlockSize) {
            blocks_.push_back({nullptr, true});
            at = blocks_.back().data = new char[size];
        } else {
            if (!current_ || used_ + size > Platform::kMemoryBlockSize) {
                blocks_.push_back({nullptr, false});
                current_ = blocks_.back().data = static_cast<char*>(Platform::AllocateBlock(true));
                if (!current_)
                    throw std::bad_alloc();
                used_ = 0;
            }
            at = current_ + used_;
            used_ += size;
        }
        const auto length = static_cast<std::uint32_t>(properties.size());
        std::memcpy(at, &length, sizeof length);
        std::memcpy(at + sizeof length, properties.data(), properties.size());
        return at;
    }
    static std::size_t SizeAt(const char* place)
    {
        std::uint32_t length;
        std::memcpy(&length, place, sizeof length);
        return length;
    }
    static const char* BytesAt(const char* place) { return place + sizeof(std::uint32_t); }

private:
    struct Block {
        char* data;
        bool own; // from new[], not a platform block
    };
    std::vector<Block> blocks_;
    char* current_ = nullptr; // the platform block being filled
    std::size_t used_ = 0;
};

struct Point {
    double x, y;
};

class FlatGeobufWriter final : public RecordWriter {
public:
    FlatGeobufWriter(TextSink& sink, std::string layerName) : sink_(sink), layerName_(std::move(layerName)) {}

    void Begin(const RecordLayout& layout) override
    {
        layout_ = layout;
        // Properties name their column in 16 bits.
        if (layout.fieldNames.size() > std::numeric_limits<std::uint16_t>::max())
            throw JobError("FlatGeobuf holds at most 65535 fields, and these records have " +
                           std::to_string(layout.fieldNames.size()));
        if (layout.records > kMostFlatGeobufItems)
            throw JobError("tessel writes at most " + std::to_string(kMostFlatGeobufItems) +
                           " features to a FlatGeobuf file, and these are " + std::to_string(layout.records));
        points_.reserve(layout.records);
    }

    void Entity(const EntityRecord& entity) override
    {
        if (entity.position)
            Feature(Point{entity.position->x, entity.position->y}, entity.values);
        else
            Feature(std::nullopt, entity.values);
    }

    void Row(const DataValueList& values) override { Feature(std::nullopt, &values); }

    void CloudPoint(double x, double y) override { Feature(Point{x, y}, nullptr); }

    void End() override
    {
        sink_.Text().append(kMagic, sizeof kMagic);
        WriteHeader();
        SortAlongHilbertCurve(points_);
        WriteIndex();
        // The properties lie scattered in memory now: each is fetched a few features ahead.
        constexpr std::size_t kAhead = 16;
        std::string& out = sink_.Text();
        for (std::size_t k = 0; k < points_.size(); ++k) {
            if (k + kAhead < points_.size())
                __builtin_prefetch(points_[k + kAhead].properties);
            const FlatGeobufItem& item = points_[k];
            const double xy[2] = {item.x, item.y};
            AppendFlatGeobufFeature(out, std::isnan(item.x) ? nullptr : xy,
                                    item.properties ? PropertyStore::BytesAt(item.properties) : nullptr,
                                    item.properties ? PropertyStore::SizeAt(item.properties) : 0);
            sink_.RecordDone();
        }
    }

private:
    FieldType FieldTypeAt(std::size_t index) const
    {
        return index < layout_.fieldTypes.size() ? layout_.fieldTypes[index] : FieldType::Text;
    }

    // A feature: its point and its properties (each value not null: its column's number, then
    // the value). A point at NaN is no place: such a feature has no geometry.
    void Feature(std::optional<Point> point, const DataValueList* values)
    {
        const std::size_t fields = values ? std::min(values->size(), layout_.fieldNames.size()) : 0;
        properties_.clear();
        for (std::size_t i = 0; i < fields; ++i)
            AppendProperty(i, (*values)[i].get());
        const bool located = point && !std::isnan(point->x) && !std::isnan(point->y);
        const auto bytes = static_cast<std::uint32_t>(FlatGeobufFeatureSize(located, properties_.size()));
        const char* kept = featureProperties_.Add(properties_);
        points_.push_back(located ? FlatGeobufItem{0, point->x, point->y, kept, bytes}
                                  : FlatGeobufItem{0, NAN, NAN, kept, bytes});
    }

    void AppendProperty(std::size_t index, const CDataBox* value)
    {
        if (!value || refhost::KindOf(*value) == CDataBox::Kind::Null)
            return;
        Append(properties_, static_cast<std::uint16_t>(index));
        switch (FieldTypeAt(index)) {
        case FieldType::Integer: Append(properties_, static_cast<std::int32_t>(refhost::IntegerOf(*value))); return;
        case FieldType::Real:
            Append(properties_, refhost::KindOf(*value) == CDataBox::Kind::Integer
                                    ? static_cast<double>(refhost::IntegerOf(*value))
                                    : refhost::RealOf(*value));
            return;
        case FieldType::Text: break;
        }
        const std::string text = refhost::ToUtf8(static_cast<WString>(*value));
        Append(properties_, static_cast<std::uint32_t>(text.size()));
        properties_ += text;
    }

    void WriteHeader()
    {
        flatbuffers::FlatBufferBuilder header(4096);
        const CoordinateSystem* crs = layout_.crs.get();
        const std::optional<std::array<double, 4>> extent = Extent();

        const auto name = layerName_.empty() ? 0 : header.CreateString(layerName_);
        const auto envelope = extent ? header.CreateVector(extent->data(), extent->size()) : 0;
        std::vector<flatbuffers::Offset<void>> columns;
        for (std::size_t i = 0; i < layout_.fieldNames.size(); ++i) {
            const auto columnName = header.CreateString(layout_.fieldNames[i]);
            const flatbuffers::uoffset_t column = header.StartTable();
            header.AddOffset(Slot(kColumnName), columnName);
            header.AddElement(Slot(kColumnType), static_cast<std::uint8_t>(ColumnTypeOf(FieldTypeAt(i))));
            columns.push_back(flatbuffers::Offset<void>(header.EndTable(column)));
        }
        const auto columnList = columns.empty() ? 0 : header.CreateVector(columns);
        const flatbuffers::Offset<void> crsTable = crs ? CrsTable(header, *crs) : 0;

        const flatbuffers::uoffset_t table = header.StartTable();
        if (!name.IsNull())
            header.AddOffset(Slot(kLayerName), name);
        if (!envelope.IsNull())
            header.AddOffset(Slot(kEnvelope), envelope);
        header.AddElement(Slot(kGeometryType), kPointGeometry);
        if (!columnList.IsNull())
            header.AddOffset(Slot(kColumns), columnList);
        header.AddElement(Slot(kFeaturesCount), static_cast<std::uint64_t>(points_.size()));
        // Node size 0 says that no index follows: there is none of no features.
        header.AddElement(Slot(kIndexNodeSize), points_.size() ? kFlatGeobufNodeSize : std::uint16_t(0),
                          kFlatGeobufNodeSize);
        if (!crsTable.IsNull())
            header.AddOffset(Slot(kCrs), crsTable);
        header.FinishSizePrefixed(flatbuffers::Offset<void>(header.EndTable(table)));
        sink_.Text().append(reinterpret_cast<const char*>(header.GetBufferPointer()), header.GetSize());
        sink_.RecordDone();
    }

    // As GDAL writes it: the authority and its code where there is one, the name and the WKT.
    static flatbuffers::Offset<void> CrsTable(flatbuffers::FlatBufferBuilder& header, const CoordinateSystem& crs)
    {
        const auto organisation = crs.AuthorityName().empty() ? 0 : header.CreateString(crs.AuthorityName());
        const auto name = crs.Name().empty() ? 0 : header.CreateString(crs.Name());
        const auto wkt = crs.Wkt().empty() ? 0 : header.CreateString(crs.Wkt());
        const flatbuffers::uoffset_t table = header.StartTable();
        if (!organisation.IsNull()) {
            header.AddOffset(Slot(kCrsOrganisation), organisation);
            header.AddElement(Slot(kCrsCode), static_cast<std::int32_t>(crs.AuthorityCode()));
        }
        if (!name.IsNull())
            header.AddOffset(Slot(kCrsName), name);
        if (!wkt.IsNull())
            header.AddOffset(Slot(kCrsWkt), wkt);
        return flatbuffers::Offset<void>(header.EndTable(table));
    }

    // minX, minY, maxX, maxY of the points; none without a point.
    std::optional<std::array<double, 4>> Extent() const
    {
        std::array<double, 4> extent{INFINITY, INFINITY, -INFINITY, -INFINITY};
        for (const FlatGeobufItem& point : points_) {
            if (std::isnan(point.x))
                continue;
            extent = {std::min(extent[0], point.x), std::min(extent[1], point.y), std::max(extent[2], point.x),
                      std::max(extent[3], point.y)};
        }
        if (extent[0] > extent[2])
            return std::nullopt;
        return extent;
    }

    // The levels above the leaves, then the leaves: the sorted points, each with its
    // feature's place among the features that follow in the same order.
    void WriteIndex()
    {
        constexpr std::size_t kNodesAtOnce = 16384;
        const std::vector<FlatGeobufNode> upper = FlatGeobufUpperLevels(points_);
        for (std::size_t first = 0; first < upper.size(); first += kNodesAtOnce) {
            const std::size_t count = std::min(kNodesAtOnce, upper.size() - first);
            sink_.Text().append(reinterpret_cast<const char*>(&upper[first]), count * sizeof(FlatGeobufNode));
            sink_.RecordDone();
        }
        std::uint64_t offset = 0;
        for (std::size_t k = 0; k < points_.size(); ++k) {
            const FlatGeobufItem& item = points_[k];
            const FlatGeobufNode leaf = std::isnan(item.x)
                                            ? FlatGeobufNode{INFINITY, INFINITY, -INFINITY, -INFINITY, offset}
                                            : FlatGeobufNode{item.x, item.y, item.x, item.y, offset};
            sink_.Text().append(reinterpret_cast<const char*>(&leaf), sizeof leaf);
            offset += item.bytes;
            if (k % kNodesAtOnce == kNodesAtOnce - 1)
                sink_.RecordDone();
        }
        sink_.RecordDone();
    }

    TextSink& sink_;
    std::string layerName_;
    RecordLayout layout_;
    FlatGeobufItems points_; // each feature's, in the order written until End
    PropertyStore featureProperties_;
    std::string properties_; // the feature's being made
};

} // namespace

std::unique_ptr<RecordWriter> MakeFlatGeobufWriter(TextSink& sink, const std::string& layerName)
{
    return std::make_unique<FlatGeobufWriter>(sink, layerName);
}

} // namespace tessel
