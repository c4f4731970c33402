#include "xml/XmlTokenizer.h"

#include "host/WideText.h"
#include "xml/XmlNames.h"

namespace {

const WChar kIncorrectFormat[] = WTEXT("Incorrect %s at offset %d");
const WChar kUnterminatedFormat[] = WTEXT("%s at offset %d unterminated");

// A start tag begins with A-Z, anything from 'a' up (all non-ASCII included), '_' or ':'.
bool StartsElementName(WChar c)
{
    return (c >= WTEXT('A') && c <= WTEXT('Z')) || c >= WTEXT('a') || c == WTEXT('_') || c == WTEXT(':');
}

bool EndsTagName(WChar c)
{
    return IsXmlWhitespace(c) || c == WTEXT('/') || c == WTEXT('>');
}

const WChar* UnterminatedLabel(int type)
{
    switch (type) {
    case kNodeDeclaration: return WTEXT("Doctype");
    case kNodeStartTag: return WTEXT("Element tag");
    case kNodeEndTag: return WTEXT("Element end tag");
    case kNodeCData: return WTEXT("CDATA Section");
    case kNodeProcessingInstruction: return WTEXT("Processing instruction");
    case kNodeComment: return WTEXT("Comment");
    default: return WTEXT("tag");
    }
}

bool IsQuote(WChar c) { return c == WTEXT('"') || c == WTEXT('\''); }

// A node from its first character to just past its last.
XmlNode Node(int type, int start, int end)
{
    XmlNode node;
    node.type = type;
    node.start = start;
    node.length = end - start;
    return node;
}

} // namespace

XmlNode XmlTokenizer::ReadNode(int offset) const
{
    if (offset >= length_)
        return Node(kNodeEndOfDocument, length_, length_);
    return text_[offset] == WTEXT('<') ? ReadMarkup(offset) : ReadText(offset);
}

XmlNode XmlTokenizer::ReadText(int offset) const
{
    XmlNode node = Node(kNodeWhitespace, offset, offset);
    int at = offset;
    for (; at < length_ && text_[at] != WTEXT('<'); ++at)
        if (!IsXmlWhitespace(text_[at]))
            node.type = kNodeText;
    node.length = at - offset;
    return node;
}

XmlNode XmlTokenizer::ReadMarkup(int offset) const
{
    if (offset + 1 >= length_)
        return Unterminated(offset, kNodeBad);
    const WChar c = text_[offset + 1];
    if (StartsElementName(c))
        return ReadStartTag(offset);
    switch (c) {
    case WTEXT('/'): return ReadEndTag(offset);
    case WTEXT('?'): return ReadUntil(offset, offset + 2, WTEXT("?>"), kNodeProcessingInstruction);
    case WTEXT('!'): return ReadDeclaration(offset);
    default: return Incorrect(offset, WTEXT("tag name character"));
    }
}

XmlNode XmlTokenizer::ReadStartTag(int offset) const
{
    XmlNode node = ReadUntilQuotedGreater(offset, kNodeStartTag);
    node.nameStart = offset + 1;
    int nameEnd = node.nameStart;
    while (nameEnd < length_ && !EndsTagName(text_[nameEnd]))
        ++nameEnd;
    node.nameLength = nameEnd - node.nameStart;
    if (node.type != kNodeStartTag)
        return node;
    // "/>" makes an empty element only after whitespace, a quote or the name itself:
    // in <a v=1/> the slash belongs to the unquoted value. Deliberate.
    const int slash = node.start + node.length - 2;
    if (slash > node.nameStart && text_[slash] == WTEXT('/')) {
        const WChar before = text_[slash - 1];
        node.emptyElement = IsXmlWhitespace(before) || IsQuote(before) || slash == nameEnd;
    }
    return node;
}

XmlNode XmlTokenizer::ReadEndTag(int offset) const
{
    XmlNode node = Node(kNodeEndTag, offset, offset);
    node.nameStart = offset + 2;
    int at = node.nameStart;
    while (at < length_ && !EndsTagName(text_[at]))
        ++at;
    node.nameLength = at - node.nameStart;
    while (at < length_ && text_[at] != WTEXT('>'))
        ++at;
    if (at >= length_)
        return Unterminated(offset, kNodeEndTag);
    node.length = at + 1 - offset;
    return node;
}

XmlNode XmlTokenizer::ReadDeclaration(int offset) const
{
    const int at = offset + 2;
    if (at >= length_)
        return Unterminated(offset, kNodeBad);
    switch (text_[at]) {
    case WTEXT('-'):
        if (at + 1 >= length_)
            return Unterminated(offset, kNodeBad);
        if (text_[at + 1] != WTEXT('-'))
            return Incorrect(offset, WTEXT("comment tag"));
        return ReadUntil(offset, offset + 4, WTEXT("-->"), kNodeComment);
    case WTEXT('['):
        if (at + 1 >= length_)
            return Unterminated(offset, kNodeBad);
        if (text_[at + 1] != WTEXT('C'))
            return Incorrect(offset, WTEXT("tag"));
        return ReadUntil(offset, offset + 4, WTEXT("]]>"), kNodeCData);
    case WTEXT('D'):
        return ReadDoctype(offset);
    case WTEXT('E'): case WTEXT('A'): case WTEXT('N'):
        return ReadUntilQuotedGreater(offset, kNodeDeclaration);
    default:
        return Incorrect(offset, WTEXT("! tag"));
    }
}

// <!DOCTYPE ...>: quotes and an internal subset in brackets may hide '>', and inside the
// subset every markup declaration (comments included) ends at its own '>'.
XmlNode XmlTokenizer::ReadDoctype(int offset) const
{
    WChar quote = 0;
    bool inSubset = false;
    bool inDeclaration = false;
    for (int at = offset + 2; at < length_; ++at) {
        const WChar c = text_[at];
        if (quote) {
            if (c == quote)
                quote = 0;
            continue;
        }
        if (!inSubset) {
            if (IsQuote(c))
                quote = c;
            else if (c == WTEXT('['))
                inSubset = true;
            else if (c == WTEXT('>'))
                return Node(kNodeDeclaration, offset, at + 1);
            continue;
        }
        if (inDeclaration) {
            if (IsQuote(c))
                quote = c;
            else if (c == WTEXT('>'))
                inDeclaration = false;
        } else if (c == WTEXT('<')) {
            if (at + 3 < length_ && text_[at + 1] == WTEXT('!') && text_[at + 2] == WTEXT('-') && text_[at + 3] == WTEXT('-')) {
                const XmlNode comment = ReadUntil(at, at + 4, WTEXT("-->"), kNodeComment);
                if (comment.type != kNodeComment)
                    break;
                at += comment.length - 1;
            } else {
                inDeclaration = true;
            }
        } else if (c == WTEXT(']')) {
            inSubset = false;
        }
    }
    return Unterminated(offset, kNodeDeclaration);
}

// Start tags and declarations end at the first '>' outside quotes; either quote opens a
// quoted stretch only outside the other.
XmlNode XmlTokenizer::ReadUntilQuotedGreater(int offset, int type) const
{
    WChar quote = 0;
    for (int at = offset + 1; at < length_; ++at) {
        const WChar c = text_[at];
        if (quote) {
            if (c == quote)
                quote = 0;
        } else if (IsQuote(c)) {
            quote = c;
        } else if (c == WTEXT('>')) {
            return Node(type, offset, at + 1);
        }
    }
    return Unterminated(offset, type);
}

// Ends at a '>' whose preceding characters complete endString, all of it at or after
// contentStart, so "<!-->" does not close its own comment.
XmlNode XmlTokenizer::ReadUntil(int offset, int contentStart, const WChar* endString, int type) const
{
    const int endLength = static_cast<int>(WideLength(endString));
    for (int at = contentStart + endLength - 1; at < length_; ++at) {
        if (text_[at] != WTEXT('>'))
            continue;
        int k = 0;
        while (k < endLength - 1 && text_[at - (endLength - 1) + k] == endString[k])
            ++k;
        if (k == endLength - 1)
            return Node(type, offset, at + 1);
    }
    return Unterminated(offset, type);
}

XmlNode XmlTokenizer::Incorrect(int offset, const WChar* label) const
{
    XmlNode node = Node(kNodeBad, offset, offset + 1);
    node.errorFormat = kIncorrectFormat;
    node.errorLabel = label;
    return node;
}

XmlNode XmlTokenizer::Unterminated(int offset, int type) const
{
    XmlNode node = Node(kNodeBad, offset, length_);
    node.errorFormat = kUnterminatedFormat;
    node.errorLabel = UnterminatedLabel(type);
    return node;
}

WString DescribeBadNode(const XmlNode& node)
{
    if (!node.errorFormat)
        return WString();
    return FormatWide(node.errorFormat, {node.errorLabel, node.start});
}
