#pragma once
// Attribute lookup in a start tag, straight on the document text.

#include "host/Text.h"

struct TextRange {
    int start = 0;
    int length = 0;
};

// Finds the first attribute of the start tag at tagStart whose name is named by
// wanted[0..wantedLength) (NameMatches). The tag is read as tokens after its name: quoted
// strings (to the same quote or the end of the text) and unquoted words; a name followed by
// "=" and a value forms an attribute, a name without "=" counts as an attribute with an
// empty value. Reading stops at '>', '/' or '?' outside quotes. On success *value is the raw
// value (between the quotes, or the unquoted word up to whitespace or '>'), still escaped.
bool FindAttribute(const WChar* text, int length, int tagStart, const WChar* wanted, int wantedLength,
                   TextRange* value);
