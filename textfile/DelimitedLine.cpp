// The preparation of a delimited line before it is split; the one copy every import
// builder and the import dialog's preview call.

#include "textfile/FieldSplit.h"

namespace {

bool AllSingleCharacters(const DelimiterList& delimiters)
{
    for (const WString& delimiter : delimiters)
        if (delimiter.size() != 1)
            return false;
    return true;
}

bool IsDelimiterCharacter(WChar c, const DelimiterList& delimiters)
{
    for (const WString& delimiter : delimiters)
        if (delimiter[0] == c)
            return true;
    return false;
}

// Steps 1 and 2 for delimiters of one character each, in one pass: single-character
// replacements do not depend on their order.
void ReplaceSingleCharacterDelimiters(WString& line, const DelimiterList& delimiters, bool collapseRuns)
{
    WChar* const begin = &line[0];
    WChar* out = begin;
    for (const WChar* in = begin; in != begin + line.size(); ++in) {
        WChar c = *in;
        if (IsDelimiterCharacter(c, delimiters))
            c = kFieldSeparator;
        if (collapseRuns && c == kFieldSeparator && out != begin && out[-1] == kFieldSeparator)
            continue;
        *out++ = c;
    }
    line.resize(static_cast<std::size_t>(out - begin));
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

template <class Characters>
void TrimRightOf(WString& line, const Characters& characters)
{
    const std::size_t last = line.find_last_not_of(characters);
    line.resize(last == WString::npos ? 0 : last + 1);
}

} // namespace

void NormalizeDelimitedLine(WString& line, const DelimiterList& delimiters, FieldList& fields)
{
    static const WString separator(1, kFieldSeparator);
    static const WString tab(1, u'\t');
    const bool collapseRuns = delimiters.size() == 1 && delimiters[0] != tab;

    if (AllSingleCharacters(delimiters)) {
        ReplaceSingleCharacterDelimiters(line, delimiters, collapseRuns);
    } else {
        for (const WString& delimiter : delimiters)
            if (!delimiter.empty() && delimiter != separator)
                while (ReplaceAll(line, delimiter) > 0) {
                }
        if (collapseRuns)
            CollapseSeparatorRuns(line);
    }

    TrimRightOf(line, u'\n');
    TrimRightOf(line, u'\r');
    if (!line.empty() && line.back() == kFieldSeparator)
        line.pop_back();
    for (const WString& delimiter : delimiters)
        if (!delimiter.empty())
            TrimRightOf(line, delimiter);

    SplitByDelimiter(line, fields, kFieldSeparator, 1);
}
