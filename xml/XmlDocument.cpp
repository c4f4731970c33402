#include "xml/XmlDocument.h"

#include "host/WideText.h"
#include "xml/ElementParser.h"
#include "xml/XmlAttributes.h"
#include "xml/XmlEscape.h"
#include "xml/XmlNames.h"

#include <climits>

XmlDocument::XmlDocument()
{
    SetText(nullptr);
}

bool XmlDocument::SetText(const WChar* text)
{
    return SetText(text ? WString(text) : WString());
}

bool XmlDocument::SetText(const WString& text)
{
    text_ = text;
    error_.clear();
    parent_ = 0;
    current_ = 0;
    // Offsets are 32-bit: a text beyond that is kept but parsed only as far as they reach.
    length_ = text_.size() > static_cast<std::size_t>(INT_MAX) ? INT_MAX : static_cast<int>(text_.size());
    const int length = length_;
    elements_.Reset(length);

    ElementParser(text_.data(), length, elements_, error_).Parse(0);

    ElementRecord& document = elements_[0];
    document.length = length;
    const int root = document.firstChild;
    if (length == 0)
        error_ = WTEXT("Empty document");
    else if (root == 0)
        error_ = WTEXT("No root element");
    else if (elements_[root].nextSibling != 0)
        error_ = WTEXT("Root element has sibling");
    return root != 0 && elements_[root].nextSibling == 0 && !(document.flags & kDocumentIllFormed);
}

bool XmlDocument::FindElement(const WChar* name)
{
    if (elements_.IsEmpty())
        return false;
    const int nameLength = static_cast<int>(WideLength(name));
    int element = current_ ? elements_[current_].nextSibling : elements_[parent_].firstChild;
    for (; element != 0; element = elements_[element].nextSibling) {
        if (nameLength == 0)
            break;
        int nameStart = 0;
        const int length = ElementNameLength(text_.data(), length_, elements_[element].start, &nameStart);
        if (NameMatches(text_.data() + nameStart, length, name, nameLength))
            break;
    }
    if (element == 0)
        return false;
    current_ = element;
    parent_ = elements_[element].parent;
    return true;
}

bool XmlDocument::EnterElement()
{
    if (current_ == 0)
        return false;
    parent_ = current_;
    current_ = 0;
    return true;
}

WString XmlDocument::GetAttribute(const WChar* name) const
{
    if (current_ == 0)
        return WString();
    TextRange value;
    if (!FindAttribute(text_.data(), length_, elements_[current_].start, name,
                       static_cast<int>(WideLength(name)), &value))
        return WString();
    return XmlUnescape(text_.data() + value.start, static_cast<std::size_t>(value.length));
}
