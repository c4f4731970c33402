#pragma once
// Cutting one text line into its fields: at a delimiter, or at fixed character positions,
// with the preparation every delimited line gets first and the comment-line test.
//
// Field lists are refilled, not rebuilt: the strings already in the list are assigned in
// place, so a loop over the lines of a file allocates nothing once the list and its strings
// have grown to the file's field sizes. None of these functions fails or throws (except
// std::bad_alloc when memory runs out).

#include "host/Text.h"

#include <cstddef>
#include <cstdint>
#include <vector>

// The fields of one line, index 0 first.
using FieldList = std::vector<WString>;
// Character positions at which fields begin, ascending; the first field begins at 0, which
// is not stored.
using PositionList = std::vector<std::uint32_t>;
// The configured delimiters, each a string (normally of one character), in configured order.
using DelimiterList = std::vector<WString>;

// The internal field separator (U+00A4, CURRENCY SIGN): delimiters become it before a line
// is split, and it separates several delimiters or positions in a configuration. A line that
// really contains it is cut there as well.
constexpr WChar kFieldSeparator = 0x00A4;

// Cuts line at every delimiter. An empty line gives no fields at all. Empty fields (between
// two delimiters, before a leading or after a trailing one) are kept only when keepEmpty is
// exactly 1: the test is deliberately a comparison with 1, so 2 drops them. No field is
// trimmed.
void SplitByDelimiter(const WString& line, FieldList& fields, WChar delimiter, std::uint8_t keepEmpty);
// The same cut, stopping once fieldLimit fields are in the list.
void SplitByDelimiter(const WString& line, FieldList& fields, WChar delimiter, std::uint8_t keepEmpty,
                      std::size_t fieldLimit);

// Cuts line at the positions and returns the number of fields. Appends the line's length to
// positions first; deliberately keeps growing across lines, so that on later lines the last
// configured column ends at the first line's length and the rest lands in further fields.
// Substrings follow the host string's rules: a start beyond the end gives "", a length past
// the end is cut there, a falling boundary gives "" and the next field starts from it.
int SplitAtPositions(const WString& line, PositionList& positions, FieldList& fields);
// The same cut, but only the first fieldLimit fields are computed (callers never read beyond
// their largest column); they are identical to the full cut's. positions still grows by the
// line's length. Returns the number of fields the full cut has, so that a caller can tell an
// index beyond it exactly as before. The work per line does not grow with positions.
int SplitAtPositions(const WString& line, PositionList& positions, FieldList& fields, std::size_t fieldLimit);

// Prepares a delimited line in place and splits it into fields, in this order:
// 1. every delimiter (other than the separator itself) becomes the separator, repeatedly
//    until none is left;
// 2. with exactly one delimiter that is not tab, runs of separators collapse into one;
// 3. trailing line feeds, then trailing carriage returns are trimmed;
// 4. one trailing separator is removed;
// 5. for each delimiter, trailing characters found in it are trimmed;
// 6. the line is cut at the separator, keeping empty fields.
// Leading delimiters are not trimmed: " 10 20" with space gives "", "10", "20".
void NormalizeDelimitedLine(WString& line, const DelimiterList& delimiters, FieldList& fields);
// The same preparation of the whole line, but only its first fieldLimit fields are cut (callers
// never read beyond their largest column); they are identical to the full cut's. A line of
// millions of fields then costs no more than its length.
void NormalizeDelimitedLine(WString& line, const DelimiterList& delimiters, FieldList& fields, std::size_t fieldLimit);

// Steps 3 to 5 alone, for a line that is shown rather than split at the separator: trailing
// line feeds, then carriage returns, then one separator, then trailing characters of each
// delimiter are trimmed.
void TrimDelimitedLineEnd(WString& line, const DelimiterList& delimiters);

// The comment markers of a configuration's comment string: each of its characters except the
// separator.
WString CommentMarkersOf(const WString& comments);
// True when the line's first character is one of the markers; leading blanks defeat it, and
// no markers mark no line.
bool IsCommentLine(const WString& line, const WString& markers);
