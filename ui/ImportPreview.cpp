#include "ui/ImportPreview.h"

#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "import/LineSplitter.h"
#include "platform/Platform.h"
#include "textfile/TextFile.h"
#include "ui/ImportConfigurationModel.h"

#include <algorithm>
#include <atomic>

using VeltoGis::Utility::CCoreProgressBar;

namespace {

constexpr int kProgressEnd = 1000;
// Longer than any number the type guess accepts.
constexpr std::size_t kLongestSample = 80;

// The first header field carries the comment marker; a field that was only the marker
// ("# X Y") goes altogether, so that the names still start at the first column.
void TakeOffMarker(FieldList& header)
{
    if (header.empty() || header[0].empty())
        return;
    header[0].erase(0, 1);
    if (header[0].empty() && header.size() > 1)
        header.erase(header.begin());
}

} // namespace

void ImportPreview::Clear()
{
    lineCount_ = 0;
    rows_.clear();
    header_.clear();
    sample_.clear();
    headerTaken_ = sampleTaken_ = namesLineTaken_ = false;
    headerLinesLeft_ = 0;
    columnsFound_ = 0;
    encoding_ = PreviewEncoding();
}

std::optional<std::uint32_t> ImportPreview::RowColour(std::size_t row) const
{
    if (row < rows_.size() && rows_[row].comment)
        return kCommentRowColour;
    if (row < rows_.size() && rows_[row].header)
        return kHeaderRowColour;
    return std::nullopt;
}

bool ImportPreview::Load(const ImportConfigurationModel& wizard)
{
    Clear();
    const WString path = wizard.filePath;
    TextFile file;
    if (file.Open(path, TextFileMode::Read, TextEncoding::Detect, 0) != 0) {
        acedAlert(FormatWide(LoadMessage(MessageId::FileDoesNotOpen), {path}).c_str());
        return false;
    }
    const bool fixedWidth = wizard.mode == ImportConfigurationModel::ModeFixedWidth;
    headerLinesLeft_ = std::max(wizard.headerLines, 0);
    const int breakCount = wizard.Ruler().BreakCount();
    LineSplitter splitter(wizard.Delimiters(), wizard.comments, fixedWidth, wizard.Ruler().BreakPositions());
    splitter.ReadFieldsUpTo(fixedWidth ? static_cast<std::size_t>(std::max(breakCount, 1))
                                       : static_cast<std::size_t>(kMaxColumns));

    CCoreProgressBar* progress = CCoreProgressBar::Instance();
    progress->Show(LoadMessage(MessageId::ImportProgress).c_str(), 0, kProgressEnd);
    int position = 1;
    progress->SetPosition(position);
    // The reading may take seconds (a line of 100 MB): it runs as the runner runs it, and the
    // progress bar, the host's, only moves on the calling thread, one line after the other.
    std::atomic<int> linesTaken{0};
    const auto work = [&] {
        // The pass through the whole file keeps nothing: only counting is fast enough for a
        // file of millions of lines.
        std::uint64_t ignored = 0;
        file.CountLines(&ignored);
        file.Close();
        // Not checked: a file that is gone by now previews as empty.
        file.Open(path, TextFileMode::Read, TextEncoding::Detect, 0);
        encoding_.encoding = file.Encoding();
        encoding_.codePage = file.CodePage() != 0 ? file.CodePage() : Platform::AnsiCodePage();
        WString line;
        while (linesTaken.load() < kProgressEnd - 1 && file.ReadLine(nullptr, line) == 0) {
            TakeLine(line, fixedWidth, splitter);
            linesTaken.fetch_add(1);
        }
        file.Close();
    };
    const auto poll = [&] {
        for (const int taken = linesTaken.load(); position < taken + 1;)
            progress->SetPosition(++position);
    };
    if (runner_) {
        runner_(work, poll);
    } else {
        work();
        poll();
    }
    progress->Hide();
    progress->RestoreState();
    // The ruler's breaks, set by every line read: a file without lines has one column.
    if (fixedWidth && lineCount_ > 0)
        columnsFound_ = breakCount;
    columnsFound_ = std::max(columnsFound_, 1);
    return true;
}

// Cut by the import's own splitter, but unlike the import, which skips a comment line before
// cutting anything and cuts a fixed-width line as it was read, the preview cuts comment lines
// too (grey rows, the header's names), trims a fixed-width line's end as a delimited one's,
// and makes no row of a line that is empty once trimmed.
void ImportPreview::TakeLine(WString& line, bool fixedWidth, LineSplitter& splitter)
{
    PreviewRow row;
    row.line = lineCount_ + 1;
    row.comment = splitter.IsComment(line);
    // As the import counts them: any line that is not a comment, an empty one too.
    if (!row.comment && headerLinesLeft_ > 0) {
        row.header = true;
        --headerLinesLeft_;
    }
    if (fixedWidth) {
        splitter.TrimLineEnd(line);
        // An empty line adds no boundary to the growing positions either.
        if (!line.empty())
            splitter.Split(line, row.fields);
    } else {
        splitter.Split(line, row.fields);
        const auto separators = std::count(line.begin(), line.end(), kFieldSeparator);
        columnsFound_ = std::max(columnsFound_, static_cast<int>(std::min<std::ptrdiff_t>(separators + 1, INT32_MAX)));
        if (row.header && !namesLineTaken_) {
            // A names line outranks a comment line of names.
            header_ = row.fields;
            headerTaken_ = namesLineTaken_ = true;
        } else if (row.comment && !headerTaken_) {
            header_ = row.fields;
            TakeOffMarker(header_);
            headerTaken_ = true;
        } else if (!row.comment && !row.header && !sampleTaken_) {
            for (const WString& field : row.fields)
                sample_.push_back(field.substr(0, kLongestSample));
            sampleTaken_ = true;
        }
    }
    ++lineCount_;
    if (!line.empty())
        rows_.push_back(std::move(row));
}
