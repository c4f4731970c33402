#pragma once
// One FlatGeobuf feature as the file holds it: a size-prefixed FlatBuffers buffer of the
// Feature table with its Point geometry and its properties. Every feature tessel writes has
// one of the same few shapes, so its bytes are laid out directly rather than built: its size
// is then known before it is written (the index that precedes the features holds each one's
// place), and each can be written straight to its place among the others.

#include <cstddef>

namespace tessel {

// The bytes of a feature, size prefix included; with a point or not, and with properties of
// propertyBytes bytes (none when 0).
std::size_t FlatGeobufFeatureSize(bool withPoint, std::size_t propertyBytes);

// Writes the feature's FlatGeobufFeatureSize bytes at feature, all but its properties, and
// returns where the propertyBytes bytes of those go: as FlatGeobuf encodes them, each value
// that is not null, its column's number, then the value. xy: the point's x and y, or null for
// a feature without one.
char* WriteFlatGeobufFeature(char* feature, const double* xy, std::size_t propertyBytes);

} // namespace tessel
