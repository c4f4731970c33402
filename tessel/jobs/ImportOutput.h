#pragma once
// Where an import's records go, in the format chosen: text written by tessel's own writers
// (OutputFile) or a GIS dataset written through GDAL (GdalOutput). Either is made complete
// beside its target and takes the target's place in Commit; without Commit nothing is left
// behind and the target stays as it was.

#include "tessel/core/Requests.h"
#include "tessel/text/RecordWriter.h"

#include <memory>
#include <string>

namespace tessel {

class ImportOutput {
public:
    virtual ~ImportOutput() = default;
    // Makes the place to write to. Throws a job AppError naming the path when it cannot be
    // written.
    virtual void Open() = 0;
    // The writer of the records (after Open; one per output).
    virtual std::unique_ptr<RecordWriter> MakeWriter() = 0;
    // Finishes the output and puts it in place. Throws like Open.
    virtual void Commit() = 0;
    // The name the user gave, quoted ("standard output" for none).
    virtual std::string DisplayName() const = 0;
};

std::unique_ptr<ImportOutput> MakeImportOutput(const std::string& path, OutputFormat format);

// The writer of a format tessel writes itself (JSON Lines, GeoJSON, CSV, FlatGeobuf); name is
// what the output is called, which names a FlatGeobuf's layer.
std::unique_ptr<RecordWriter> MakeRecordWriter(OutputFormat format, TextSink& sink, const std::string& name);

} // namespace tessel
