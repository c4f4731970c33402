#include "import/ImportRun.h"

#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "textfile/TextFile.h"
#include "host/WideText.h"

#include <algorithm>
#include <climits>

using VeltoGis::Utility::CCoreProgressBar;

namespace {

// Hides the bar and gives it back its earlier state on every way out of the run.
class ProgressShown {
public:
    ProgressShown(MessageId text, std::uint64_t lines) : bar_(*CCoreProgressBar::Instance())
    {
        const int upper = static_cast<int>(std::min<std::uint64_t>(lines, INT_MAX));
        bar_.Show(LoadMessage(text).c_str(), 0, upper);
    }
    ~ProgressShown()
    {
        // Hide before RestoreState, the order the host expects of an import (an export's is the reverse).
        bar_.Hide();
        bar_.RestoreState();
    }
    ProgressShown(const ProgressShown&) = delete;
    ProgressShown& operator=(const ProgressShown&) = delete;

    void SetPosition(int position) { bar_.SetPosition(position); }

private:
    CCoreProgressBar& bar_;
};

} // namespace

namespace {

ImportTxtConfiguration Parsed(const WString& configurationXml)
{
    ImportTxtConfiguration configuration;
    configuration.Parse(configurationXml.c_str());
    return configuration;
}

} // namespace

ImportRun::ImportRun(const WString& configurationXml)
    : configuration_(Parsed(configurationXml)), splitter_(configuration_)
{
}

void ImportRun::ReadColumnsUpTo(int highestColumnNo)
{
    splitter_.ReadFieldsUpTo(highestColumnNo < 0 ? 0 : static_cast<std::size_t>(highestColumnNo) + 1);
}

void ImportRun::SkipLine(TxtImport::enmSkipReason reason)
{
    lineSkipped_ = true;
    account_.Skip(lineNumber_, reason);
}

int ImportRun::Run(ImportLineSink& sink, MessageId progressText, int maxLines)
{
    const WString path = configuration_.GetTxtFile();
    if (path.empty())
        return 0;

    TextFile file;
    if (file.Open(path, TextFileMode::Read, TextEncoding::Detect, 0) < 0) {
        acedAlert(FormatWide(LoadMessage(MessageId::FileDoesNotOpen), {path}).c_str());
        return 0;
    }
    std::uint64_t lineCount = 0;
    file.CountLines(&lineCount);
    file.Close();
    // Not checked: a file that is gone by now simply yields no lines.
    file.Open(path, TextFileMode::Read, TextEncoding::Detect, 0);

    ProgressShown progress(progressText, lineCount);
    sink.ExpectLines(lineCount);
    account_.Begin(path);
    int headerLinesLeft = configuration_.GetHeaderLines();
    WString line;
    int position = 0;
    for (;;) {
        if (maxLines >= 1 && position >= maxLines)
            break;
        progress.SetPosition(++position);
        if (file.ReadLine(nullptr, line) < 0) {
            --position;
            break;
        }
        lineNumber_ = static_cast<std::uint64_t>(position);
        if (splitter_.IsComment(line)) {
            account_.CountComment();
            continue;
        }
        if (headerLinesLeft > 0) {
            --headerLinesLeft;
            account_.Skip(lineNumber_, TxtImport::SkipHeaderLine);
            continue;
        }
        fields_.count_ = splitter_.Split(line, fields_.fields_);
        lineSkipped_ = false;
        sink.ImportLine(fields_);
        if (!lineSkipped_)
            account_.CheckLine(lineNumber_, fields_.fields_, std::min(fields_.count_, fields_.fields_.size()));
    }
    file.Close();
    account_.Report(static_cast<std::uint64_t>(position));
    return 1;
}
