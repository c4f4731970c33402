#include "textfile/FieldSplit.h"

#include "textfile/FieldList.h"

#include <algorithm>
#include <cstdint>

namespace {

// The host string's Mid(first, count) on line: a negative first or count counts as 0, a
// first beyond the end gives "", a count past the end is cut there. Positions are unsigned
// in the list and reach the host string as int, so a boundary from 2^31 on is negative.
void AddSubstring(FieldFiller& out, const WString& line, std::uint32_t start, std::uint32_t boundary)
{
    const long long length = static_cast<long long>(line.size());
    long long first = static_cast<std::int32_t>(start);
    long long count = static_cast<std::int32_t>(boundary - start);
    first = std::max(first, 0LL);
    count = std::max(count, 0LL);
    if (first > length)
        count = 0;
    else if (first + count > length)
        count = length - first;
    out.Add(line.data() + std::min(first, length), static_cast<std::size_t>(count));
}

} // namespace

void SplitByDelimiter(const WString& line, FieldList& fields, WChar delimiter, std::uint8_t keepEmpty)
{
    SplitByDelimiter(line, fields, delimiter, keepEmpty, SIZE_MAX);
}

void SplitByDelimiter(const WString& line, FieldList& fields, WChar delimiter, std::uint8_t keepEmpty,
                      std::size_t fieldLimit)
{
    FieldFiller out(fields);
    if (line.empty() || fieldLimit == 0)
        return;
    const WChar* start = line.data();
    const WChar* const end = start + line.size();
    for (;;) {
        const WChar* stop = start;
        while (stop != end && *stop != delimiter)
            ++stop;
        if (keepEmpty == 1 || stop != start) {
            out.Add(start, static_cast<std::size_t>(stop - start));
            if (out.Count() == fieldLimit)
                return;
        }
        if (stop == end)
            return;
        start = stop + 1;
    }
}

int SplitAtPositions(const WString& line, PositionList& positions, FieldList& fields, std::size_t fieldLimit)
{
    positions.push_back(static_cast<std::uint32_t>(line.size()));
    FieldFiller out(fields);
    const std::size_t count = std::min(fieldLimit, positions.size());
    std::uint32_t start = 0;
    for (std::size_t i = 0; i < count; ++i) {
        AddSubstring(out, line, start, positions[i]);
        start = positions[i];
    }
    return static_cast<int>(positions.size());
}

int SplitAtPositions(const WString& line, PositionList& positions, FieldList& fields)
{
    return SplitAtPositions(line, positions, fields, static_cast<std::size_t>(-1));
}

WString CommentMarkersOf(const WString& comments)
{
    WString markers;
    for (WChar c : comments)
        if (c != kFieldSeparator)
            markers += c;
    return markers;
}

bool IsCommentLine(const WString& line, const WString& markers)
{
    return !line.empty() && markers.find(line[0]) != WString::npos;
}
