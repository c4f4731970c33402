#include "xml/XmlAttributes.h"

#include "xml/XmlNames.h"

namespace {

bool EndsAttributeName(WChar c)
{
    return c == WTEXT('=') || c == WTEXT('>') || c == WTEXT('/') || c == WTEXT('?') || IsXmlWhitespace(c);
}

bool IsQuote(WChar c) { return c == WTEXT('"') || c == WTEXT('\''); }

int SkipWhitespace(const WChar* text, int length, int at)
{
    while (at < length && IsXmlWhitespace(text[at]))
        ++at;
    return at;
}

// A quoted token at text[at]; returns the offset after its closing quote (or the end).
int ReadQuoted(const WChar* text, int length, int at, TextRange* inside)
{
    const WChar quote = text[at];
    int end = at + 1;
    while (end < length && text[end] != quote)
        ++end;
    inside->start = at + 1;
    inside->length = end - (at + 1);
    return end < length ? end + 1 : end;
}

// The value after "=": quoted, or an unquoted word up to whitespace or '>'.
int ReadValue(const WChar* text, int length, int at, TextRange* value)
{
    if (at < length && IsQuote(text[at]))
        return ReadQuoted(text, length, at, value);
    int end = at;
    while (end < length && !IsXmlWhitespace(text[end]) && text[end] != WTEXT('>'))
        ++end;
    value->start = at;
    value->length = end - at;
    return end;
}

} // namespace

bool FindAttribute(const WChar* text, int length, int tagStart, const WChar* wanted, int wantedLength,
                   TextRange* value)
{
    int nameStart = 0;
    const int nameLength = ElementNameLength(text, length, tagStart, &nameStart);
    int at = nameStart + nameLength;
    for (;;) {
        at = SkipWhitespace(text, length, at);
        if (at >= length || text[at] == WTEXT('>') || text[at] == WTEXT('/') || text[at] == WTEXT('?'))
            return false;
        TextRange name;
        bool nameIsWord = false;
        if (IsQuote(text[at])) {
            at = ReadQuoted(text, length, at, &name);
        } else {
            name.start = at;
            while (at < length && !EndsAttributeName(text[at]))
                ++at;
            name.length = at - name.start;
            nameIsWord = name.length > 0;
        }
        at = SkipWhitespace(text, length, at);
        TextRange attributeValue{at, 0};
        if (at < length && text[at] == WTEXT('='))
            at = ReadValue(text, length, SkipWhitespace(text, length, at + 1), &attributeValue);
        if (nameIsWord && NameMatches(text + name.start, name.length, wanted, wantedLength)) {
            *value = attributeValue;
            return true;
        }
    }
}
