#pragma once
// The properties of FlatGeobuf features from the time their records are written until the
// features go out in the index's order, packed: each value behind a one-byte tag, its column
// given by its place, text with a one-byte length where it is short. A real value that
// repeats the feature's x or y (binds to the coordinates put them among the values) is its
// tag alone. Survey points keep about half of what FlatGeobuf's own encoding takes, and what
// is kept is written once and read once, in large pages.

#include "host/ImpexData.h"
#include "refhost/app/RecordWriter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tessel {

class FlatGeobufProperties {
public:
    // types: each column's, as the file declares them.
    explicit FlatGeobufProperties(std::vector<FieldType> types);
    ~FlatGeobufProperties();
    FlatGeobufProperties(const FlatGeobufProperties&) = delete;
    FlatGeobufProperties& operator=(const FlatGeobufProperties&) = delete;

    // Keeps the properties of a feature at (x, y) (NaN: none) from its values, count of them
    // from first on (at most one per column). Returns where they are kept, and sets encodedBytes
    // to what FlatGeobuf's encoding of them takes (0: the feature has no properties).
    const unsigned char* Keep(const boost::shared_ptr<VeltoGis::Data::CDataBox>* first, std::size_t count, double x,
                              double y, std::size_t& encodedBytes);

    // Writes FlatGeobuf's encoding of properties kept for (x, y) from count values to [to, end):
    // each value that is not null, its column's number, then the value as its column types it.
    // False when that is not exactly what the encoding takes (nothing is written past end).
    static bool Encode(char* to, char* end, const unsigned char* kept, std::size_t count, double x, double y);

private:
    void Pack(const VeltoGis::Data::CDataBox& value, FieldType type, double x, double y, std::size_t& encodedBytes);
    unsigned char* Room(std::size_t bytes);

    std::vector<FieldType> types_;
    std::string packed_; // the feature's being kept
    struct Block {
        unsigned char* data;
        bool own; // from new[], not a platform block
    };
    std::vector<Block> blocks_;
    unsigned char* current_ = nullptr; // the platform block being filled
    std::size_t used_ = 0;
};

} // namespace tessel
