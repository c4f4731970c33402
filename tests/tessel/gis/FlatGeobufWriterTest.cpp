// tessel's FlatGeobuf writer, read with FlatBuffers' own verifier and accessors (no GDAL, so
// this runs where tessel is built without it): every buffer sound and aligned, the header's
// fields, the index over the features, each feature's point and properties.

#include "refhost/testing/TestText.h"
#include "tessel/gis/FlatGeobufWriter.h"

#include <boost/make_shared.hpp>
#include <flatbuffers/flatbuffers.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <set>
#include <vector>

namespace tessel {
namespace {

using flatbuffers::Table;
using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::DataValueList;

flatbuffers::voffset_t Slot(int field)
{
    return flatbuffers::FieldIndexToOffset(static_cast<flatbuffers::voffset_t>(field));
}

template <typename Value>
Value ReadAt(const std::string& bytes, std::size_t at)
{
    Value value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

// One size-prefixed buffer of the file, copied to memory aligned as a reader's would be.
class Buffer {
public:
    Buffer(const std::string& file, std::size_t at)
        : size_(4 + ReadAt<std::uint32_t>(file, at)), words_((size_ + 7) / 8),
          verifier_(Data(), size_, 64, 1000000, true)
    {
        std::memcpy(words_.data(), file.data() + at, size_);
    }
    std::size_t Size() const { return size_; }
    const std::uint8_t* Data() const { return reinterpret_cast<const std::uint8_t*>(words_.data()); }
    const Table* Root() const { return flatbuffers::GetSizePrefixedRoot<Table>(Data()); }

    // A table's start and the offsets of the fields given, verified; null when unsound.
    const Table* Verified(const Table* table, std::initializer_list<int> offsetFields)
    {
        if (!table || !table->VerifyTableStart(verifier_))
            return nullptr;
        for (const int field : offsetFields) {
            if (!table->VerifyOffset(verifier_, Slot(field)))
                return nullptr;
        }
        return verifier_.EndTable() ? table : nullptr;
    }
    template <typename Element>
    const flatbuffers::Vector<Element>* Vector(const Table* table, int field)
    {
        const auto* vector = table->GetPointer<const flatbuffers::Vector<Element>*>(Slot(field));
        if (!vector || !verifier_.VerifyVector(vector))
            return nullptr;
        // The verifier checks the length's alignment; the elements' is checked here.
        const auto place = reinterpret_cast<const std::uint8_t*>(vector->data()) - Data();
        return place % alignof(Element) == 0 ? vector : nullptr;
    }
    std::string String(const Table* table, int field)
    {
        const auto* text = table->GetPointer<const flatbuffers::String*>(Slot(field));
        return text && verifier_.VerifyString(text) ? text->str() : "(unsound)";
    }

private:
    std::size_t size_;
    std::vector<std::uint64_t> words_;
    flatbuffers::Verifier verifier_;
};

struct Feature {
    std::vector<double> xy;
    std::map<int, std::string> properties; // column -> value as text
};

// The properties' encoding: the column's number, then its value by the column's type
// (5 Int, 10 Double, 11 String).
std::map<int, std::string> DecodeProperties(const flatbuffers::Vector<std::uint8_t>* bytes,
                                            const std::vector<int>& types)
{
    std::map<int, std::string> decoded;
    const std::string raw(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    for (std::size_t at = 0; at + 2 <= raw.size();) {
        const int column = ReadAt<std::uint16_t>(raw, at);
        at += 2;
        switch (types.at(static_cast<std::size_t>(column))) {
        case 5: decoded[column] = std::to_string(ReadAt<std::int32_t>(raw, at)), at += 4; break;
        case 10: decoded[column] = std::to_string(ReadAt<double>(raw, at)), at += 8; break;
        default: {
            const auto length = ReadAt<std::uint32_t>(raw, at);
            decoded[column] = raw.substr(at + 4, length);
            at += 4 + length;
        }
        }
    }
    return decoded;
}

TEST(FlatGeobufWriter, EveryBufferIsSoundAndReadsBackThroughTheIndex)
{
    DataValueList values = {boost::make_shared<CDataBox>(), boost::make_shared<CDataBox>(),
                            boost::make_shared<CDataBox>(), boost::make_shared<CDataBox>(WTEXT("x\xE9"))};
    values[0]->SetValue(-7);
    values[1]->SetValue(3); // an integer in a real column
    const DataValueList one = {boost::make_shared<CDataBox>()};
    one[0]->SetValue(1);
    const AcGePoint3d near{1.5, -2, 0}, far{100, 50, 0};
    TextSink sink;
    const auto writer = MakeFlatGeobufWriter(sink, "survey");
    RecordLayout layout;
    layout.fieldNames = {"I", "R", "N", "T"};
    layout.fieldTypes = {FieldType::Integer, FieldType::Real, FieldType::Text, FieldType::Text};
    layout.records = 4;
    writer->Begin(layout);
    EntityRecord record;
    record.values = &values;
    record.position = &far;
    writer->Entity(record);
    record.position = nullptr; // no point: no geometry
    writer->Entity(record);
    record.position = &near;
    record.values = &one;
    writer->Entity(record);
    writer->CloudPoint(1.5, -2); // no values: no properties
    writer->End();
    const std::string& file = sink.Text();

    const char magic[] = {'f', 'g', 'b', 3, 'f', 'g', 'b', 1};
    ASSERT_EQ(file.substr(0, 8), std::string(magic, 8));
    Buffer headerBuffer(file, 8);
    const Table* header = headerBuffer.Verified(headerBuffer.Root(), {0, 1, 7});
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(headerBuffer.String(header, 0), "survey");
    EXPECT_EQ(header->GetField<std::uint8_t>(Slot(2), 0), 1); // Point
    EXPECT_EQ(header->GetField<std::uint64_t>(Slot(8), 0), 4u);
    EXPECT_EQ(header->GetField<std::uint16_t>(Slot(9), 16), 16);
    const auto* envelope = headerBuffer.Vector<double>(header, 1);
    ASSERT_NE(envelope, nullptr);
    EXPECT_EQ(std::vector<double>(envelope->begin(), envelope->end()), (std::vector<double>{1.5, -2, 100, 50}));
    const auto* columns = headerBuffer.Vector<flatbuffers::Offset<Table>>(header, 7);
    ASSERT_NE(columns, nullptr);
    std::vector<std::string> names;
    std::vector<int> types;
    for (const Table* column : *columns) {
        ASSERT_NE(headerBuffer.Verified(column, {0}), nullptr);
        names.push_back(headerBuffer.String(column, 0));
        types.push_back(column->GetField<std::uint8_t>(Slot(1), 0));
    }
    EXPECT_EQ(names, layout.fieldNames);
    EXPECT_EQ(types, (std::vector<int>{5, 10, 11, 11}));

    // The index: a root over four leaves, each leaf at its feature; the root encloses the points.
    const std::size_t index = 8 + headerBuffer.Size();
    const std::size_t features = index + 5 * 40;
    EXPECT_EQ((std::vector<double>{ReadAt<double>(file, index), ReadAt<double>(file, index + 8),
                                   ReadAt<double>(file, index + 16), ReadAt<double>(file, index + 24)}),
              (std::vector<double>{1.5, -2, 100, 50}));
    EXPECT_EQ(ReadAt<std::uint64_t>(file, index + 32), 1u); // its first child
    std::vector<Feature> read;
    std::size_t end = features;
    for (int leaf = 0; leaf < 4; ++leaf) {
        const std::size_t node = index + 40 * static_cast<std::size_t>(leaf + 1);
        const std::size_t at = features + ReadAt<std::uint64_t>(file, node + 32);
        ASSERT_LT(at, file.size());
        Buffer buffer(file, at);
        end = std::max(end, at + buffer.Size());
        const Table* feature = buffer.Verified(buffer.Root(), {0, 1});
        ASSERT_NE(feature, nullptr) << "feature " << leaf;
        Feature decoded;
        if (const Table* geometry = buffer.Verified(feature->GetPointer<const Table*>(Slot(0)), {1})) {
            const auto* xy = buffer.Vector<double>(geometry, 1);
            ASSERT_NE(xy, nullptr) << "feature " << leaf;
            decoded.xy.assign(xy->begin(), xy->end());
            EXPECT_EQ(decoded.xy, std::vector<double>({ReadAt<double>(file, node), ReadAt<double>(file, node + 8)}));
        } else {
            EXPECT_TRUE(std::isinf(ReadAt<double>(file, node))); // nothing to find it by
        }
        if (feature->GetPointer<const void*>(Slot(1))) {
            const auto* properties = buffer.Vector<std::uint8_t>(feature, 1);
            ASSERT_NE(properties, nullptr) << "feature " << leaf;
            decoded.properties = DecodeProperties(properties, types);
        }
        read.push_back(decoded);
    }
    EXPECT_EQ(end, file.size()); // nothing after the features
    const std::map<int, std::string> properties = {{0, "-7"}, {1, "3.000000"}, {3, "x\xC3\xA9"}};
    // Along the curve: the two points at (1.5, -2) first, in the order written, then the far
    // one; the feature without a point last.
    ASSERT_EQ(read.size(), 4u);
    EXPECT_EQ(read[0].xy, (std::vector<double>{1.5, -2}));
    EXPECT_EQ(read[0].properties, (std::map<int, std::string>{{0, "1"}}));
    EXPECT_EQ(read[1].xy, (std::vector<double>{1.5, -2}));
    EXPECT_TRUE(read[1].properties.empty());
    EXPECT_EQ(read[2].xy, (std::vector<double>{100, 50}));
    EXPECT_EQ(read[2].properties, properties);
    EXPECT_TRUE(read[3].xy.empty());
    EXPECT_EQ(read[3].properties, properties);
}

// Bytes of a value as the file holds it.
template <typename Value>
std::string Bytes(Value value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// Every kind of value through the writer, each compared byte for byte: reals that repeat the
// point's x or y (or each other's), that nearly do, -0.0 at x = 0, integers in a real column,
// text past 255 bytes, text beyond ASCII (a surrogate pair, an unpaired surrogate), a number
// in a text column, nulls between values, and a feature whose values are all null.
TEST(FlatGeobufWriter, EveryValueComesBackExactly)
{
    using refhost::testing::W;
    const auto integer = [](int value) {
        auto box = boost::make_shared<CDataBox>();
        box->SetValue(value);
        return box;
    };
    const auto real = [](double value) {
        auto box = boost::make_shared<CDataBox>();
        box->SetValue(value);
        return box;
    };
    const auto text = [](const WString& value) { return boost::make_shared<CDataBox>(value.c_str()); };
    const auto null = [] { return boost::make_shared<CDataBox>(); };
    const std::string longText = std::string(300, 'a') + "\xC3\xA9";
    WString pairs = W("\xF0\x9F\x98\x80");       // U+1F600, a surrogate pair
    pairs.push_back(static_cast<WChar>(0xD800)); // unpaired: U+FFFD
    struct Case {
        AcGePoint3d point;
        DataValueList values; // ID, E (real), N (real), T (text), H (real)
        std::map<int, std::string> expected;
    };
    const std::vector<Case> cases = {
        {{10.5, 20.25, 0},
         {integer(1), real(10.5), real(20.25), text(W("short")), real(-0.0)},
         {{0, Bytes(std::int32_t(1))}, {1, Bytes(10.5)}, {2, Bytes(20.25)}, {3, "short"}, {4, Bytes(-0.0)}}},
        {{10.5, 20.25, 0},
         {integer(2), real(20.25), real(10.5), text(W(longText)), integer(7)},
         {{0, Bytes(std::int32_t(2))}, {1, Bytes(20.25)}, {2, Bytes(10.5)}, {3, longText}, {4, Bytes(7.0)}}},
        {{0, 1, 0},
         {integer(3), real(-0.0), null(), text(pairs), real(std::nextafter(1.0, 2.0))},
         {{0, Bytes(std::int32_t(3))},
          {1, Bytes(-0.0)},
          {3, "\xF0\x9F\x98\x80\xEF\xBF\xBD"},
          {4, Bytes(std::nextafter(1.0, 2.0))}}},
        {{-3, -3, 0},
         {integer(4), real(-3), null(), integer(42), null()},
         {{0, Bytes(std::int32_t(4))}, {1, Bytes(-3.0)}, {3, "42"}}},
        {{5, 5, 0}, {null(), null(), null(), null(), null()}, {}},
    };
    TextSink sink;
    const auto writer = MakeFlatGeobufWriter(sink, "");
    RecordLayout layout;
    layout.fieldNames = {"ID", "E", "N", "T", "H"};
    layout.fieldTypes = {FieldType::Integer, FieldType::Real, FieldType::Real, FieldType::Text, FieldType::Real};
    layout.records = cases.size();
    writer->Begin(layout);
    for (const Case& each : cases) {
        EntityRecord record;
        record.position = &each.point;
        record.values = &each.values;
        writer->Entity(record);
    }
    writer->End();
    const std::string& file = sink.Text();

    // Five leaves under one root, then the features one after the other.
    std::size_t at = 8 + Buffer(file, 8).Size() + 6 * 40;
    std::map<int, std::map<int, std::string>> found; // by ID (0 for none)
    while (at < file.size()) {
        Buffer buffer(file, at);
        const Table* feature = buffer.Verified(buffer.Root(), {0, 1});
        ASSERT_NE(feature, nullptr);
        std::map<int, std::string> properties;
        if (feature->GetPointer<const void*>(Slot(1))) {
            const auto* vector = buffer.Vector<std::uint8_t>(feature, 1);
            ASSERT_NE(vector, nullptr);
            const std::string raw(reinterpret_cast<const char*>(vector->data()), vector->size());
            for (std::size_t p = 0; p < raw.size();) {
                const int column = ReadAt<std::uint16_t>(raw, p);
                p += 2;
                const std::size_t length = column == 0 ? 4 : column == 3 ? ReadAt<std::uint32_t>(raw, p) : 8;
                if (column == 3)
                    p += 4;
                ASSERT_LE(p + length, raw.size());
                properties[column] = raw.substr(p, length);
                p += length;
            }
        }
        const int id = properties.count(0) ? ReadAt<std::int32_t>(properties[0], 0) : 0;
        found[id] = properties;
        at += buffer.Size();
    }
    EXPECT_EQ(at, file.size());
    ASSERT_EQ(found.size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i)
        EXPECT_EQ(found[i + 1 < cases.size() ? static_cast<int>(i + 1) : 0], cases[i].expected) << "case " << i + 1;
}

// Enough points for a tree of six levels, each with one node more than fills its parents (and
// arrays past a megabyte, which come from the platform's large-array memory): every node
// encloses its children, nodes are small as the curve makes them, the leaves hold every point
// once and lead to the features in order, one after the other to the end of the file.
TEST(FlatGeobufWriter, ATreeOfManyLevelsEnclosesEveryPoint)
{
    constexpr std::size_t kPoints = 65537; // levels of 65537, 4097, 257, 17, 2 and 1 nodes
    TextSink sink;
    const auto writer = MakeFlatGeobufWriter(sink, "");
    RecordLayout layout;
    layout.kind = RecordKind::Cloud;
    layout.records = kPoints;
    writer->Begin(layout);
    std::multiset<std::pair<double, double>> written;
    for (std::size_t i = 0; i < kPoints; ++i) {
        const double x = static_cast<double>((i * 7919) % 1000), y = static_cast<double>((i * 104729) % 997) / 8;
        writer->CloudPoint(x, y);
        written.insert({x, y});
    }
    writer->End();
    const std::string& file = sink.Text();

    const std::size_t index = 8 + Buffer(file, 8).Size();
    const std::size_t levels[] = {1, 2, 17, 257, 4097, kPoints}; // root first
    std::size_t nodes = 0;
    for (const std::size_t count : levels)
        nodes += count;
    const std::size_t features = index + 40 * nodes;
    const auto box = [&](std::size_t node) {
        const std::size_t at = index + 40 * node;
        return std::array<double, 4>{ReadAt<double>(file, at), ReadAt<double>(file, at + 8),
                                     ReadAt<double>(file, at + 16), ReadAt<double>(file, at + 24)};
    };
    const auto encloses = [](const std::array<double, 4>& outer, const std::array<double, 4>& inner) {
        return outer[0] <= inner[0] && outer[1] <= inner[1] && outer[2] >= inner[2] && outer[3] >= inner[3];
    };
    // Each node above the leaves: its children are the next ones from its first child on.
    for (std::size_t node = 0, levelEnd = 1, level = 0; node < nodes - kPoints; ++node) {
        if (node == levelEnd)
            levelEnd += levels[++level];
        const auto first = static_cast<std::size_t>(ReadAt<std::uint64_t>(file, index + 40 * node + 32));
        const std::size_t children = node + 1 == levelEnd ? (levels[level + 1] - 1) % 16 + 1 : 16;
        for (std::size_t child = first; child < first + children; ++child)
            ASSERT_TRUE(encloses(box(node), box(child))) << "node " << node << ", child " << child;
    }
    // Along the curve, the leaves of one parent lie close together: their boxes take a small
    // share of the extent (in any other order they would span most of it).
    double parentArea = 0;
    for (std::size_t node = nodes - kPoints - 4097; node < nodes - kPoints; ++node) {
        const std::array<double, 4> parent = box(node);
        parentArea += (parent[2] - parent[0]) * (parent[3] - parent[1]);
    }
    const std::array<double, 4> root = box(0);
    EXPECT_LT(parentArea / 4097, (root[2] - root[0]) * (root[3] - root[1]) / 100);
    std::multiset<std::pair<double, double>> found;
    std::size_t expected = features;
    for (std::size_t leaf = nodes - kPoints; leaf < nodes; ++leaf) {
        const std::size_t at = features + ReadAt<std::uint64_t>(file, index + 40 * leaf + 32);
        ASSERT_EQ(at, expected) << "leaf " << leaf;
        Buffer buffer(file, at);
        const Table* feature = buffer.Verified(buffer.Root(), {0});
        ASSERT_NE(feature, nullptr);
        const Table* geometry = buffer.Verified(feature->GetPointer<const Table*>(Slot(0)), {1});
        ASSERT_NE(geometry, nullptr);
        const auto* xy = buffer.Vector<double>(geometry, 1);
        ASSERT_TRUE(xy && xy->size() == 2);
        EXPECT_EQ(box(leaf), (std::array<double, 4>{xy->Get(0), xy->Get(1), xy->Get(0), xy->Get(1)}));
        found.insert({xy->Get(0), xy->Get(1)});
        expected = at + buffer.Size();
    }
    EXPECT_EQ(expected, file.size());
    EXPECT_EQ(found, written);
}

} // namespace
} // namespace tessel
