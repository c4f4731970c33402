#include "xml/XmlNames.h"

namespace {

bool EndsElementName(WChar c)
{
    switch (c) {
    case WTEXT('<'): case WTEXT('>'): case WTEXT('='): case WTEXT('\\'):
    case WTEXT('/'): case WTEXT('?'): case WTEXT('!'):
        return true;
    default:
        return IsXmlWhitespace(c);
    }
}

} // namespace

int ElementNameLength(const WChar* text, int length, int tagStart, int* nameStart)
{
    int at = tagStart + 1;
    while (at < length && IsXmlWhitespace(text[at]))
        ++at;
    *nameStart = at;
    if (at >= length)
        return 0;
    int end = at + 1;
    while (end < length && !EndsElementName(text[end]))
        ++end;
    return end - at;
}

bool NameMatches(const WChar* name, int nameLength, const WChar* wanted, int wantedLength)
{
    if (wantedLength < nameLength)
        return false;
    for (int i = 0; i < nameLength; ++i)
        if (name[i] != wanted[i])
            return false;
    return wantedLength == nameLength || ContinuesWantedName(wanted[nameLength]);
}
