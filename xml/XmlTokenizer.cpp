#include "xml/XmlTokenizer.h"

#include "host/WideText.h"
#include "xml/XmlNames.h"

namespace {

const WChar kIncorrectFormat[] = u"Incorrect %s at offset %d";
const WChar kUnterminatedFormat[] = u"%s at offset %d unterminated";

// A start tag begins with A-Z, anything from 'a' up (all non-ASCII included), '_' or ':'.
bool StartsElementName(WChar c)
{
    return (c >= u'A' && c <= u'Z') || c >= u'a' || c == u'_' || c == u':';
}

bool EndsTagName(WChar c)
{
    return IsXmlWhitespace(c) || c == u'/' || c == u'>';
}

const WChar* UnterminatedLabel(int type)
{
    switch (type) {
    case kNodeDeclaration: return u"Doctype";
    case kNodeStartTag: return u"Element tag";
    case kNodeEndTag: return u"Element end tag";
    case kNodeCData: return u"CDATA Section";
    case kNodeProcessingInstruction: return u"Processing instruction";
    case kNodeComment: return u"Comment";
    default: return u"tag";
    }
}

bool IsQuote(WChar c) { return c == u'"' || c == u'\''; }

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
    return text_[offset] == u'<' ? ReadMarkup(offset) : ReadText(offset);
}

XmlNode XmlTokenizer::ReadText(int offset) const
{
    XmlNode node = Node(kNodeWhitespace, offset, offset);
    int at = offset;
    for (; at < length_ && text_[at] != u'<'; ++at)
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
    case u'/': return ReadEndTag(offset);
    case u'?': return ReadUntil(offset, offset + 2, u"?>", kNodeProcessingInstruction);
    case u'!': return ReadDeclaration(offset);
    default: return Incorrect(offset, u"tag name character");
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
    if (slash > node.nameStart && text_[slash] == u'/') {
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
    while (at < length_ && text_[at] != u'>')
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
    case u'-':
        if (at + 1 >= length_)
            return Unterminated(offset, kNodeBad);
        if (text_[at + 1] != u'-')
            return Incorrect(offset, u"comment tag");
        return ReadUntil(offset, offset + 4, u"-->", kNodeComment);
    case u'[':
        if (at + 1 >= length_)
            return Unterminated(offset, kNodeBad);
        if (text_[at + 1] != u'C')
            return Incorrect(offset, u"tag");
        return ReadUntil(offset, offset + 4, u"]]>", kNodeCData);
    case u'D':
        return ReadDoctype(offset);
    case u'E': case u'A': case u'N':
        return ReadUntilQuotedGreater(offset, kNodeDeclaration);
    default:
        return Incorrect(offset, u"! tag");
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
            else if (c == u'[')
                inSubset = true;
            else if (c == u'>')
                return Node(kNodeDeclaration, offset, at + 1);
            continue;
        }
        if (inDeclaration) {
            if (IsQuote(c))
                quote = c;
            else if (c == u'>')
                inDeclaration = false;
        } else if (c == u'<') {
            if (at + 3 < length_ && text_[at + 1] == u'!' && text_[at + 2] == u'-' && text_[at + 3] == u'-') {
                const XmlNode comment = ReadUntil(at, at + 4, u"-->", kNodeComment);
                if (comment.type != kNodeComment)
                    break;
                at += comment.length - 1;
            } else {
                inDeclaration = true;
            }
        } else if (c == u']') {
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
        } else if (c == u'>') {
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
        if (text_[at] != u'>')
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
