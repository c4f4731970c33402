// The preparation of a delimited line before it is split; the one copy every import
// builder and the import dialog's preview call.
//
// When every delimiter is a single character (nearly always), one pass without a branch per
// character notes where the delimiters are; replacing, collapsing and splitting then work
// from those marks, and the trimming of steps 3 to 5 only touches the end of the line.
// Other delimiters take the steps one by one.

#include "textfile/FieldList.h"
#include "textfile/FieldSplit.h"
#include "platform/Sse2.h"
#include "host/StringLength.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

// Positions of separators in a line short enough for the fast path. Every character gets a
// slot, so the marking loop needs no bounds check.
struct SeparatorMarks {
    static constexpr std::size_t kMaxLine = 512;
    std::uint32_t at[kMaxLine + 8]; // a block of eight is stored whole before it is counted
    std::size_t count = 0;
};

bool AllSingleCharacters(const DelimiterList& delimiters)
{
    for (const WString& delimiter : delimiters)
        if (delimiter.size() != 1)
            return false;
    return true;
}

// Notes every character that is a delimiter or already the separator. The store and the
// count are unconditional, so the loop does not branch on the text.
template <class IsDelimiter>
void MarkSeparators(const WChar* text, std::size_t from, std::size_t length, IsDelimiter isDelimiter,
                    SeparatorMarks& marks)
{
    std::size_t count = marks.count;
    for (std::size_t i = from; i < length; ++i) {
        const WChar c = text[i];
        marks.at[count] = static_cast<std::uint32_t>(i);
        count += isDelimiter(c) || c == kFieldSeparator;
    }
    marks.count = count;
}


// Marks the delimiters (each of one character) and separators of text[0, length).
void MarkAll(const WChar* text, std::size_t length, const DelimiterList& delimiters, SeparatorMarks& marks)
{
    constexpr std::size_t kMaxBlockDelimiters = 4;
    WChar characters[kMaxBlockDelimiters];
    const std::size_t count = std::min(delimiters.size(), kMaxBlockDelimiters);
    for (std::size_t d = 0; d < count; ++d)
        characters[d] = delimiters[d][0];
    std::size_t done = 0;
    if (delimiters.size() <= kMaxBlockDelimiters) {
        const std::size_t listed = ListMatchingUnits(text, length, kFieldSeparator, characters, count, marks.at + marks.count);
        if (listed != kNotListed) {
            marks.count += listed;
            done = length;
        }
    }
    if (delimiters.size() == 1) {
        const WChar delimiter = characters[0];
        MarkSeparators(text, done, length, [delimiter](WChar c) { return c == delimiter; }, marks);
        return;
    }
    MarkSeparators(text, done, length, [&delimiters](WChar c) {
        for (const WString& delimiter : delimiters)
            if (c == delimiter[0])
                return true;
        return false;
    }, marks);
}

// Steps 1 and 2 from the marks: each marked character becomes the separator; with
// collapseRuns a run of separators keeps only its first, the text closing up behind it.
// The marks are rewritten to the separators' new positions. Returns the new length.
std::size_t ReplaceMarked(WChar* text, std::size_t length, bool collapseRuns, SeparatorMarks& marks)
{
    // Most lines have no run to collapse: then writing the separators is all there is to do.
    bool adjacent = false;
    for (std::size_t i = 0; i < marks.count; ++i) {
        text[marks.at[i]] = kFieldSeparator;
        adjacent |= i > 0 && marks.at[i] == marks.at[i - 1] + 1;
    }
    if (!collapseRuns || !adjacent)
        return length;
    std::size_t out = 0;  // end of the text kept so far
    std::size_t in = 0;   // start of the text not yet looked at
    std::size_t kept = 0; // marks kept
    for (std::size_t i = 0; i < marks.count; ++i) {
        const std::size_t at = marks.at[i];
        const bool runContinues = at == in && kept > 0 && marks.at[kept - 1] + 1 == out;
        if (out != in)
            std::copy(text + in, text + at, text + out);
        out += at - in;
        in = at + 1;
        if (runContinues)
            continue;
        text[out] = kFieldSeparator;
        marks.at[kept++] = static_cast<std::uint32_t>(out++);
    }
    if (out != in)
        std::copy(text + in, text + length, text + out);
    marks.count = kept;
    return out + (length - in);
}

std::size_t ReplaceSingleCharacters(WString& line, const DelimiterList& delimiters, SeparatorMarks& marks)
{
    WChar* const text = &line[0];
    MarkAll(text, line.size(), delimiters, marks);
    const bool collapseRuns = delimiters.size() == 1 && delimiters[0][0] != WTEXT('\t');
    return ReplaceMarked(text, line.size(), collapseRuns, marks);
}

// Replaces every occurrence of delimiter by the separator, in place (a delimiter is never
// shorter than the separator); returns how many were replaced.
std::size_t ReplaceAll(WString& line, const WString& delimiter)
{
    std::size_t replaced = 0;
    std::size_t out = 0;
    std::size_t in = 0;
    for (std::size_t at; (at = line.find(delimiter, in)) != WString::npos; in = at + delimiter.size()) {
        std::copy(line.begin() + in, line.begin() + at, line.begin() + out);
        out += at - in;
        line[out++] = kFieldSeparator;
        ++replaced;
    }
    std::copy(line.begin() + in, line.end(), line.begin() + out);
    line.resize(out + (line.size() - in));
    return replaced;
}

void CollapseSeparatorRuns(WString& line)
{
    WChar* const begin = &line[0];
    WChar* out = begin;
    for (const WChar* in = begin; in != begin + line.size(); ++in) {
        if (*in == kFieldSeparator && out != begin && out[-1] == kFieldSeparator)
            continue;
        *out++ = *in;
    }
    line.resize(static_cast<std::size_t>(out - begin));
}

// Steps 1 and 2 for delimiters of any length (and for very long lines), one delimiter after
// the other.
void ReplaceInOrder(WString& line, const DelimiterList& delimiters)
{
    static const WString separator(1, kFieldSeparator);
    static const WString tab(1, WTEXT('\t'));
    for (const WString& delimiter : delimiters)
        if (!delimiter.empty() && delimiter != separator)
            while (ReplaceAll(line, delimiter) > 0) {
            }
    if (delimiters.size() == 1 && delimiters[0] != tab)
        CollapseSeparatorRuns(line);
}

// Steps 3 to 5: the length that is left of text[0, length) after trimming its end.
std::size_t TrimmedLength(const WChar* text, std::size_t length, const DelimiterList& delimiters)
{
    while (length > 0 && text[length - 1] == WTEXT('\n'))
        --length;
    while (length > 0 && text[length - 1] == WTEXT('\r'))
        --length;
    if (length > 0 && text[length - 1] == kFieldSeparator)
        --length;
    for (const WString& delimiter : delimiters)
        while (length > 0 && delimiter.find(text[length - 1]) != WString::npos)
            --length;
    return length;
}

// Step 6 from the marks: the first fieldLimit of the fields between the separators below
// length, empty ones kept.
void SplitAtMarks(const WString& line, const SeparatorMarks& marks, FieldList& fields, std::size_t fieldLimit)
{
    const WChar* const text = line.data();
    const std::size_t length = line.size();
    if (length == 0) {
        fields.clear();
        return;
    }
    const std::uint32_t* const at = marks.at;
    std::size_t separators = marks.count;
    while (separators > 0 && at[separators - 1] >= length)
        --separators;
    const std::size_t cut = std::min(separators + 1, fieldLimit);
    if (fields.size() != cut)
        fields.resize(cut);
    WString* const out = fields.data();
    std::size_t start = 0;
    for (std::size_t i = 0; i < cut; ++i) {
        const std::size_t stop = i < separators ? at[i] : length;
        AssignField(out[i], text + start, stop - start);
        start = stop + 1;
    }
}

} // namespace

void NormalizeDelimitedLine(WString& line, const DelimiterList& delimiters, FieldList& fields)
{
    NormalizeDelimitedLine(line, delimiters, fields, SIZE_MAX);
}

void NormalizeDelimitedLine(WString& line, const DelimiterList& delimiters, FieldList& fields, std::size_t fieldLimit)
{
    if (line.size() <= SeparatorMarks::kMaxLine && AllSingleCharacters(delimiters)) {
        SeparatorMarks marks;
        const std::size_t replaced = ReplaceSingleCharacters(line, delimiters, marks);
        SetLength(line, TrimmedLength(line.data(), replaced, delimiters));
        return SplitAtMarks(line, marks, fields, fieldLimit);
    }
    ReplaceInOrder(line, delimiters);
    SetLength(line, TrimmedLength(line.data(), line.size(), delimiters));
    SplitByDelimiter(line, fields, kFieldSeparator, 1, fieldLimit);
}

void TrimDelimitedLineEnd(WString& line, const DelimiterList& delimiters)
{
    SetLength(line, TrimmedLength(line.data(), line.size(), delimiters));
}
