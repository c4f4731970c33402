#pragma once
// Builds the element records of one document text: every start tag becomes a record linked
// to its parent and siblings; end tags close them. Forgiving: what cannot be matched is
// flagged and reported, and parsing goes on. Only the first message is kept.
// Iterative throughout, so nesting depth costs heap, not stack.

#include "host/Text.h"
#include "xml/ElementTable.h"
#include "xml/OpenElementStack.h"
#include "xml/XmlTokenizer.h"

class ElementParser {
public:
    // text[0..length) must outlive the parser. error receives the first message of the
    // parse, and only while it is empty.
    ElementParser(const WChar* text, int length, ElementTable& table, WString& error);

    // Parses the whole text; the top-level elements become children of record parseRoot.
    void Parse(int parseRoot);

private:
    void StartElement(const XmlNode& tag);
    void EndElement(const XmlNode& tag);
    void AppendChild(int parent, int child);
    void MarkIllFormed();
    void CloseNotEnded(int depth);
    void LiftChildrenOut(int element, int newParent);
    int CurrentParent() const;
    WString TextAt(int start, int length) const;
    bool WantsError() const { return error_.empty(); }

    const WChar* text_;
    ElementTable& table_;
    WString& error_;
    XmlTokenizer tokenizer_;
    OpenElementStack open_;
    int root_ = 0;
};
