#include "ui/ImportPreview.h"

#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "import/ImportTxtConfiguration.h"
#include "import/LineSplitter.h"
#include "platform/Platform.h"
#include "textfile/TextFile.h"

#include <algorithm>
#include <atomic>

using VeltoGis::Utility::CCoreProgressBar;

namespace {

constexpr int kProgressEnd = 1000;
// Longer than any number the type guess accepts.
constexpr std::size_t kLongestSample = 80;

ImportTxtConfiguration SplitterConfiguration(const PreviewRequest& request)
{
    ImportTxtConfiguration configuration;
    configuration.SetDelimiters(request.delimiters);
    configuration.SetMode(request.fixedWidth ? 1 : 0);
    configuration.GetPositions() = request.rulerPositions;
    return configuration;
}

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
    headerTaken_ = sampleTaken_ = false;
    columnsFound_ = 0;
    positions_.clear();
    encoding_ = PreviewEncoding();
}

bool ImportPreview::Load(const PreviewRequest& request)
{
    Clear();
    TextFile file;
    if (file.Open(request.path, TextFileMode::Read, TextEncoding::Detect, 0) != 0) {
        acedAlert(FormatWide(LoadMessage(MessageId::FileDoesNotOpen), {request.path}).c_str());
        return false;
    }
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
        file.Open(request.path, TextFileMode::Read, TextEncoding::Detect, 0);
        encoding_.encoding = file.Encoding();
        encoding_.codePage = file.CodePage() != 0 ? file.CodePage() : Platform::AnsiCodePage();

        const WString markers = CommentMarkersOf(request.comments);
        const ImportTxtConfiguration configuration = SplitterConfiguration(request);
        LineSplitter splitter(configuration);
        splitter.ReadFieldsUpTo(request.fixedWidth ? static_cast<std::size_t>(std::max(request.rulerBreakCount, 1))
                                                   : static_cast<std::size_t>(kMaxColumns));
        WString line;
        while (linesTaken.load() < kProgressEnd - 1 && file.ReadLine(nullptr, line) == 0) {
            TakeLine(line, request, markers, splitter);
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
    // Taken line by line: a file without lines leaves the positions as they were.
    if (request.fixedWidth && lineCount_ > 0) {
        columnsFound_ = request.rulerBreakCount;
        positions_ = request.rulerPositions;
    }
    columnsFound_ = std::max(columnsFound_, 1);
    return true;
}

void ImportPreview::TakeLine(WString& line, const PreviewRequest& request, const WString& markers,
                             LineSplitter& splitter)
{
    PreviewRow row;
    row.comment = IsCommentLine(line, markers);
    if (request.fixedWidth) {
        TrimDelimitedLineEnd(line, request.delimiters);
        // Empty lines make no row and so add no boundary to the growing positions.
        if (!line.empty())
            splitter.Split(line, row.fields);
    } else {
        splitter.Split(line, row.fields);
        const auto separators = std::count(line.begin(), line.end(), kFieldSeparator);
        columnsFound_ = std::max(columnsFound_, static_cast<int>(std::min<std::ptrdiff_t>(separators + 1, INT32_MAX)));
        if (row.comment && !headerTaken_) {
            header_ = row.fields;
            TakeOffMarker(header_);
            headerTaken_ = true;
        } else if (!row.comment && !sampleTaken_) {
            for (const WString& field : row.fields)
                sample_.push_back(field.substr(0, kLongestSample));
            sampleTaken_ = true;
        }
    }
    ++lineCount_;
    if (!line.empty())
        rows_.push_back(std::move(row));
}
