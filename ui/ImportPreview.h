#pragma once
// The import wizard's preview: the first lines of the wizard's file, prepared as an import
// prepares them, cut into rows of fields, with the header and sample fields and the column
// count that the column list is built from.

#include "host/Text.h"
#include "textfile/FieldSplit.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

class ImportConfigurationModel;
class LineSplitter;

// How a long piece of work runs. A window runs it on another thread beside its event loop, so
// that it keeps painting; poll is then called on the calling thread now and then while the work
// runs, and once after it has ended. Without a runner the work runs, then poll.
using WorkRunner = std::function<void(const std::function<void()>& work, const std::function<void()>& poll)>;

struct PreviewRow {
    FieldList fields;
    bool comment = false;
    bool header = false;    // one of the wizard's header lines: names, not data
    std::uint64_t line = 0; // the line's number in the file, from 1
};

// What the reader found at the head of the file.
struct PreviewEncoding {
    int encoding = 0;       // TextEncoding; 0 for an empty file
    unsigned codePage = 0;  // the code page ANSI text is read in
};

class ImportPreview {
public:
    // Lines read at most: the progress bar runs from 1 to 1000.
    static constexpr int kMaxLines = 999;
    // The background of a comment row (light grey), 0x00BBGGRR.
    static constexpr std::uint32_t kCommentRowColour = 0xD3D3D3;
    // The background of a header line's row (light blue).
    static constexpr std::uint32_t kHeaderRowColour = 0xF5E8D8;
    // Delimited columns taken at most. More is never a survey file but a wrong delimiter or
    // a binary file, and millions of columns would hold the wizard for minutes in gigabytes.
    static constexpr int kMaxColumns = 1000;

    // Empties the lines, rows, header and sample fields; the column count goes back to 0.
    void Clear();

    // How Load reads the lines. While it runs nothing else may read this preview.
    void SetRunner(WorkRunner runner) { runner_ = std::move(runner); }

    // Clears, then reads the first lines of the wizard's file as its delimiters, comment
    // characters, mode and ruler breaks stand: the whole file is read through once (only
    // counted), then reopened; the host's progress bar runs while the lines are read. False
    // (after an alert naming the file) when the file cannot be opened: the preview stays
    // empty. A column count of 0 becomes 1. Rows hold no fields behind kMaxColumns.
    bool Load(const ImportConfigurationModel& wizard);

    // The lines read. Their text, prepared (delimiters replaced, ends trimmed), is kept once:
    // in the rows cut from it.
    std::size_t LineCount() const { return lineCount_; }
    // One row per non-empty line.
    const std::vector<PreviewRow>& Rows() const { return rows_; }
    // A row's background: kCommentRowColour for a comment line's row, kHeaderRowColour for a
    // header line's, none for any other.
    std::optional<std::uint32_t> RowColour(std::size_t row) const;
    // The first header line's fields when the wizard has header lines, else the first comment
    // line's, its marker taken off (delimited mode only).
    const FieldList& HeaderFields() const { return header_; }
    // The first data line's fields, header lines not counted (delimited mode only), each cut to what shows whether it
    // is a number: a longer field is text whatever it holds.
    const FieldList& SampleFields() const { return sample_; }
    // The columns the wizard takes: those the lines have, at most kMaxColumns.
    int ColumnCount() const { return std::min(columnsFound_, kMaxColumns); }
    // The columns the lines have: the most fields of a line (delimited), the ruler's breaks
    // (fixed width).
    int ColumnsFound() const { return columnsFound_; }
    const PreviewEncoding& Encoding() const { return encoding_; }

private:
    void TakeLine(WString& line, bool fixedWidth, LineSplitter& splitter);

    std::size_t lineCount_ = 0;
    std::vector<PreviewRow> rows_;
    FieldList header_;
    FieldList sample_;
    bool headerTaken_ = false;
    bool namesLineTaken_ = false;
    int headerLinesLeft_ = 0;
    bool sampleTaken_ = false;
    int columnsFound_ = 0;
    PreviewEncoding encoding_;
    WorkRunner runner_;
};
