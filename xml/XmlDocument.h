#pragma once
// A small, forgiving XML reader for the configuration strings. It keeps one copy of the
// text and a flat table of element records that point into it; strings are made only when
// an attribute is asked for. A malformed document still yields every element that could be
// matched, and the first problem found is kept as GetError's text. Never throws for bad
// input.
//
// Walking: the position is a parent element (0: the document, i.e. the top level) and a
// current element (0: none, so the next FindElement starts at the parent's first child).

#include "host/Text.h"
#include "xml/ElementTable.h"

class XmlDocument {
public:
    XmlDocument();
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;

    // Replaces the document with a copy of text (null: empty) and parses it. True only when
    // the text has exactly one root element and nothing made it ill-formed; either way the
    // elements found can be walked. Afterwards the position is before the root element.
    bool SetText(const WChar* text);
    bool SetText(const WString& text);

    // Searches the siblings after the current element (or from the parent's first child when
    // there is none) for the first element named by name (see NameMatches; null or empty
    // matches any). On success it becomes the current element; otherwise nothing moves.
    bool FindElement(const WChar* name);

    // Steps into the current element: it becomes the parent and there is no current element.
    // False, and no move, when there is no current element.
    bool EnterElement();

    // The unescaped value of the current element's first attribute named by name; empty
    // when there is no current element or no such attribute.
    WString GetAttribute(const WChar* name) const;

    // The first problem of the last parse, or empty.
    const WString& GetError() const { return error_; }

private:
    WString text_;
    int length_ = 0; // characters of text_ that were parsed
    WString error_;
    int parent_ = 0;
    int current_ = 0;
    ElementTable elements_;
};
