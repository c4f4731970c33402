#include "import/LineSplitter.h"

#include <utility>

LineSplitter::LineSplitter(const ImportTxtConfiguration& configuration)
    : LineSplitter(configuration.GetDelimiters(), configuration.GetComments(), configuration.GetMode() != 0,
                   configuration.GetPositions())
{
}

LineSplitter::LineSplitter(DelimiterList delimiters, const WString& comments, bool fixedWidth, PositionList positions)
    : delimiters_(std::move(delimiters)),
      markers_(CommentMarkersOf(comments)),
      fixedWidth_(fixedWidth),
      positions_(std::move(positions))
{
}

std::size_t LineSplitter::Split(WString& line, FieldList& fields)
{
    if (fieldsRead_ == 0)
        return 0;
    if (!fixedWidth_) {
        NormalizeDelimitedLine(line, delimiters_, fields, fieldsRead_);
        return fields.size();
    }
    const int count = SplitAtPositions(line, positions_, fields, fieldsRead_);
    // The list grows by one boundary per line on purpose, but boundaries behind the first
    // fieldsRead_ never shape a field that is read: dropping them keeps every read field and
    // every presence test as they were, and memory flat however long the file is.
    if (positions_.size() > fieldsRead_)
        positions_.resize(fieldsRead_);
    return static_cast<std::size_t>(count);
}
