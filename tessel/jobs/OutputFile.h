#pragma once
// Where an import's records go: standard output ("-" or no path), a device or pipe written
// in place (/dev/null), or a regular file written as a temporary file beside it and renamed
// over it by Commit. Text reaches the file in large blocks.

#include "tessel/jobs/ImportOutput.h"
#include "tessel/system/TemporaryFile.h"
#include "tessel/text/RecordWriter.h"

#include <string>

namespace tessel {

class OutputFile final : public TextSink, public ImportOutput {
public:
    // format: the writer MakeWriter gives (a format tessel writes itself).
    explicit OutputFile(std::string path, OutputFormat format = OutputFormat::JsonLines)
        : path_(std::move(path)), format_(format)
    {}
    // Without Commit the temporary file is removed and the target left as it was.
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // Creates the temporary file (or opens the device). Throws a job AppError naming the
    // path when it cannot be written.
    void Open() override;
    std::unique_ptr<RecordWriter> MakeWriter() override;
    void RecordDone() override
    {
        if (text_.size() >= kBlockSize)
            Flush();
    }
    // Writes the rest and puts the file in place. Throws like Open.
    void Commit() override;
    // The name the user gave, quoted ("standard output" for none).
    std::string DisplayName() const override { return ToStandardOutput() ? "standard output" : "'" + path_ + "'"; }

private:
    static constexpr std::size_t kBlockSize = 1 << 20;

    bool ToStandardOutput() const { return path_.empty() || path_ == "-"; }
    void Flush();

    std::string path_;
    OutputFormat format_;
    TemporaryFile temporary_;
    int descriptor_ = -1;
    bool ownsDescriptor_ = false;
};

} // namespace tessel
