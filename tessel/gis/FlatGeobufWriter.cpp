// FlatGeobuf, written by tessel itself: GDAL 3.6's writer alone costs more per point than all
// of tessel's GeoJSON. Points and cloud points are Point features (x, y: the module's Z is no
// elevation); the header names the fields with their types, the coordinate system, the extent
// and the packed Hilbert R-tree that follows it; then come the features in the tree's order.
// That order is known only once every point is in: until End, each feature waits as its
// point, its size and its properties, packed (FlatGeobufRecords).

#include "tessel/gis/FlatGeobufWriter.h"

#include "platform/Sse2.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/CoordinateSystem.h"
#include "tessel/gis/FlatGeobufFeature.h"
#include "tessel/gis/FlatGeobufRecords.h"
#include "tessel/gis/SpatialIndexes.h"
#include "tessel/text/RecordWriter.h"

#include <flatbuffers/flatbuffers.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>

namespace tessel {
namespace {

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
        if (layout.records > kMostFlatGeobufFeatures)
            throw JobError("tessel writes at most " + std::to_string(kMostFlatGeobufFeatures) +
                           " features to a FlatGeobuf file, and these are " + std::to_string(layout.records));
        order_.reserve(layout.records);
        std::vector<FieldType> types;
        for (std::size_t i = 0; i < layout.fieldNames.size(); ++i)
            types.push_back(FieldTypeAt(i));
        records_.emplace(std::move(types));
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
        HilbertOrder(order_, *records_, extent_);
        WriteIndex();
        WriteFeatures();
    }

private:
    FieldType FieldTypeAt(std::size_t index) const
    {
        return index < layout_.fieldTypes.size() ? layout_.fieldTypes[index] : FieldType::Text;
    }

    // A feature: its point and its properties. A point at NaN is no place: such a feature has
    // no geometry.
    void Feature(std::optional<Point> point, const DataValueList* values)
    {
        if (order_.size() == kMostFlatGeobufFeatures)
            throw JobError("tessel writes at most " + std::to_string(kMostFlatGeobufFeatures) +
                           " features to a FlatGeobuf file");
        const bool located = point && !std::isnan(point->x) && !std::isnan(point->y);
        const double x = located ? point->x : NAN, y = located ? point->y : NAN;
        const std::size_t count = values ? std::min(values->size(), layout_.fieldNames.size()) : 0;
        order_.push_back(records_->Keep(x, y, count ? values->data() : nullptr, count));
        if (located)
            extent_.Add(x, y);
    }

    // The features in the tree's order; their records lie in the order written, so each is
    // fetched a few features ahead.
    void WriteFeatures()
    {
        constexpr std::size_t kAhead = 16;
        std::string& out = sink_.Text();
        for (std::size_t k = 0; k < order_.size(); ++k) {
            if (k + kAhead < order_.size())
                PrefetchForReading(records_->Address(Locator(order_[k + kAhead])));
            const std::uint32_t locator = Locator(order_[k]);
            double x, y;
            std::uint32_t bytes;
            records_->PointAndSize(locator, x, y, bytes);
            const std::size_t start = out.size();
            out.resize(start + bytes);
            records_->Write(locator, &out[start]);
            sink_.RecordDone();
        }
    }

    void WriteHeader()
    {
        flatbuffers::FlatBufferBuilder header(4096);
        const CoordinateSystem* crs = layout_.crs.get();
        const std::optional<std::array<double, 4>> extent =
            extent_.Empty()
                ? std::nullopt
                : std::optional<std::array<double, 4>>({extent_.minX, extent_.minY, extent_.maxX, extent_.maxY});

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
        header.AddElement(Slot(kFeaturesCount), static_cast<std::uint64_t>(order_.size()));
        // Node size 0 says that no index follows: there is none of no features.
        header.AddElement(Slot(kIndexNodeSize), order_.size() ? kFlatGeobufNodeSize : std::uint16_t(0),
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

    // The levels above the leaves, then the leaves: the points in the tree's order, each with
    // its feature's place among the features that follow in the same order.
    void WriteIndex()
    {
        constexpr std::size_t kNodesAtOnce = 16384;
        const std::vector<FlatGeobufNode> upper = FlatGeobufUpperLevels(order_, *records_);
        for (std::size_t first = 0; first < upper.size(); first += kNodesAtOnce) {
            const std::size_t count = std::min(kNodesAtOnce, upper.size() - first);
            sink_.Text().append(reinterpret_cast<const char*>(&upper[first]), count * sizeof(FlatGeobufNode));
            sink_.RecordDone();
        }
        // The records lie in the order written: each is fetched a few leaves ahead.
        constexpr std::size_t kAhead = 16;
        std::vector<FlatGeobufNode> leaves(std::min(kNodesAtOnce, order_.size()));
        std::uint64_t offset = 0;
        for (std::size_t first = 0; first < order_.size(); first += kNodesAtOnce) {
            const std::size_t count = std::min(kNodesAtOnce, order_.size() - first);
            for (std::size_t k = first; k < first + count; ++k) {
                if (k + kAhead < order_.size())
                    PrefetchForReading(records_->Address(Locator(order_[k + kAhead])));
                double x, y;
                std::uint32_t bytes;
                records_->PointAndSize(Locator(order_[k]), x, y, bytes);
                leaves[k - first] = std::isnan(x) ? FlatGeobufNode{INFINITY, INFINITY, -INFINITY, -INFINITY, offset}
                                                  : FlatGeobufNode{x, y, x, y, offset};
                offset += bytes;
            }
            sink_.Text().append(reinterpret_cast<const char*>(leaves.data()), count * sizeof(FlatGeobufNode));
            sink_.RecordDone();
        }
    }

    TextSink& sink_;
    std::string layerName_;
    RecordLayout layout_;
    std::optional<FlatGeobufRecords> records_; // the features, for the layout's columns, from Begin
    FlatGeobufOrder order_;                    // the features' entries, in the order written until End
    FlatGeobufExtent extent_;                  // of the points
};

} // namespace

std::unique_ptr<RecordWriter> MakeFlatGeobufWriter(TextSink& sink, const std::string& layerName)
{
    return std::make_unique<FlatGeobufWriter>(sink, layerName);
}

} // namespace tessel
