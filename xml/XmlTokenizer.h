#pragma once
// Reads one node of an XML text at a time: tags, text, comments, CDATA sections,
// processing instructions and declarations. Never fails: text it cannot read becomes a
// bad node that carries its message. Works on the caller's text and copies nothing.

#include "host/Text.h"

enum XmlNodeType {
    kNodeEndTag = 0,
    kNodeStartTag = 1,
    kNodeText = 2,
    kNodeWhitespace = 4,
    kNodeCData = 8,
    kNodeProcessingInstruction = 16,
    kNodeComment = 32,
    kNodeDeclaration = 64,
    kNodeBad = -1,
    kNodeEndOfDocument = -2
};

struct XmlNode {
    int type = kNodeEndOfDocument;
    int start = 0;      // offset of the node's first character
    int length = 0;     // characters, always at least 1 except at the end of the document
    int nameStart = 0;  // tags only: the tag name, as the tokenizer delimits it
    int nameLength = 0;
    bool emptyElement = false; // start tags closed by "/>" (see XmlTokenizer)
    // Bad nodes only: a static format ("Incorrect %s at offset %d" or
    // "%s at offset %d unterminated") and its label; DescribeBadNode fills them in.
    const WChar* errorFormat = nullptr;
    const WChar* errorLabel = nullptr;
};

class XmlTokenizer {
public:
    // text[0..length) must outlive the tokenizer.
    XmlTokenizer(const WChar* text, int length) : text_(text), length_(length) {}

    // Reads the node that begins at offset; offset == length gives the end of the document.
    // A bad node of the "Incorrect" kind covers only its '<', so reading goes on at the
    // next character; an unterminated node runs to the end of the text.
    XmlNode ReadNode(int offset) const;

private:
    XmlNode ReadText(int offset) const;
    XmlNode ReadMarkup(int offset) const;
    XmlNode ReadStartTag(int offset) const;
    XmlNode ReadEndTag(int offset) const;
    XmlNode ReadDeclaration(int offset) const;
    XmlNode ReadDoctype(int offset) const;
    XmlNode ReadUntilQuotedGreater(int offset, int type) const;
    XmlNode ReadUntil(int offset, int contentStart, const WChar* endString, int type) const;
    XmlNode Incorrect(int offset, const WChar* label) const;
    XmlNode Unterminated(int offset, int type) const;

    const WChar* text_;
    int length_;
};

// The message of a bad node, e.g. "Incorrect tag name character at offset 4".
WString DescribeBadNode(const XmlNode& node);
