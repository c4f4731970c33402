#pragma once
// Character classes and the name rule shared by element lookup, end-tag matching and
// attribute lookup. Pure functions over UTF-16 text; none allocates or throws.

#include "host/Text.h"

// Space, tab, line feed and carriage return: the only whitespace the reader knows.
inline bool IsXmlWhitespace(WChar c)
{
    return c == WTEXT(' ') || c == WTEXT('\t') || c == WTEXT('\n') || c == WTEXT('\r');
}

// The characters that may follow a name inside a wanted name: "col[2]" and "col/x" name "col".
inline bool ContinuesWantedName(WChar c)
{
    return c == WTEXT(' ') || c == WTEXT('=') || c == WTEXT('/') || c == WTEXT('[') || c == WTEXT(']');
}

// Length of the element name of the tag whose '<' stands at tagStart: whitespace after
// the '<' is skipped (*nameStart receives where the name begins), then characters are
// taken up to whitespace or one of < > = \ / ? ! . At least one character is taken while
// the text lasts, so the result is 0 only when the tag ends the text.
int ElementNameLength(const WChar* text, int length, int tagStart, int* nameStart);

// True when wanted names the element or attribute whose name in the text is
// name[0..nameLength): the first nameLength characters of wanted are that name exactly,
// and wanted ends right there or goes on with one of " =/[]". So "col", "col[2]" and
// "col/x" all name "col"; "co" does not. Case matters.
bool NameMatches(const WChar* name, int nameLength, const WChar* wanted, int wantedLength);
