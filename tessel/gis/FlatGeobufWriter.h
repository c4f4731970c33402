#pragma once
// FlatGeobuf as tessel writes it itself, a record writer like those of the text formats.

#include "tessel/text/RecordWriter.h"

#include <memory>
#include <string>

namespace tessel {

// layerName: what the file's one layer is called (none when empty).
std::unique_ptr<RecordWriter> MakeFlatGeobufWriter(TextSink& sink, const std::string& layerName);

} // namespace tessel
