#pragma once
// One FlatGeobuf feature as the file holds it: a size-prefixed FlatBuffers buffer of the
// Feature table with its Point geometry and its properties. Every feature tessel writes has
// one of the same few shapes, so its bytes are laid out directly rather than built: its size
// is then known before it is written (the index that precedes the features holds each one's
// place), and only its properties need wait in memory until then.

#include <cstddef>
#include <string>

namespace tessel {

// The bytes of a feature, size prefix included; with a point or not, and with properties of
// propertyBytes bytes (none when 0).
std::size_t FlatGeobufFeatureSize(bool withPoint, std::size_t propertyBytes);

// Appends the feature to out. xy: the point's x and y, or null for a feature without one;
// properties: its properties as FlatGeobuf encodes them (each value that is not null: its
// column's number, then the value).
void AppendFlatGeobufFeature(std::string& out, const double* xy, const char* properties, std::size_t propertyBytes);

} // namespace tessel
