#include "xml/ElementParser.h"

#include "host/WideText.h"

ElementParser::ElementParser(const WChar* text, int length, ElementTable& table, WString& error)
    : text_(text), table_(table), error_(error), tokenizer_(text, length),
      open_(text, length)
{
}

void ElementParser::Parse(int parseRoot)
{
    root_ = parseRoot;
    int offset = 0;
    for (;;) {
        const XmlNode node = tokenizer_.ReadNode(offset);
        if (node.type == kNodeEndOfDocument)
            break;
        if (node.type == kNodeStartTag)
            StartElement(node);
        else if (node.type == kNodeEndTag)
            EndElement(node);
        else if (node.type == kNodeBad) {
            MarkIllFormed();
            if (WantsError())
                error_ = DescribeBadNode(node);
        }
        offset = node.start + node.length;
    }
    if (!open_.IsEmpty()) {
        const OpenElement& innermost = open_.Top();
        if (WantsError())
            error_ = FormatWide(WTEXT("Element '%s' at offset %d not ended"),
                                {TextAt(innermost.nameStart, innermost.nameLength), innermost.tagStart});
        CloseNotEnded(0);
    }
}

void ElementParser::StartElement(const XmlNode& tag)
{
    const int parent = CurrentParent();
    const int element = table_.Allocate();
    ElementRecord& record = table_[element];
    record = ElementRecord{};
    record.start = tag.start;
    record.length = tag.length;
    record.SetStartTagLength(tag.length);
    // The depth keeps to its 16 bits; deeper nesting wraps rather than spill into the flags.
    record.flags = (table_[root_].Level() + open_.Size()) & kElementLevelMask;
    if (tag.emptyElement)
        record.flags |= kElementEmpty;
    AppendChild(parent, element);
    if (!tag.emptyElement)
        open_.Push({element, tag.start, tag.start + tag.length, tag.nameStart, tag.nameLength});
}

void ElementParser::EndElement(const XmlNode& tag)
{
    const int depth = open_.FindInnermostNamed(text_ + tag.nameStart, tag.nameLength);
    if (depth < 0) {
        MarkIllFormed();
        if (WantsError())
            error_ = FormatWide(WTEXT("No start tag for end tag '%s' at offset %d"),
                                {TextAt(tag.nameStart, tag.nameLength), tag.start});
        return;
    }
    if (depth < open_.Size() - 1) {
        const OpenElement& innermost = open_.Top();
        if (WantsError())
            error_ = FormatWide(WTEXT("End tag '%s' at offset %d does not match start tag '%s' at offset %d"),
                                {TextAt(tag.nameStart, tag.nameLength), tag.start,
                                 TextAt(innermost.nameStart, innermost.nameLength), innermost.tagStart});
        CloseNotEnded(depth + 1);
    }
    ElementRecord& record = table_[open_.Top().element];
    record.length = tag.start + tag.length - record.start;
    record.SetEndTagLength(tag.length);
    open_.PopFrom(depth);
}

// Appends as the parent's last child; the first child's previous-sibling field holds the
// last child.
void ElementParser::AppendChild(int parent, int child)
{
    ElementRecord& record = table_[child];
    record.parent = parent;
    ElementRecord& parentRecord = table_[parent];
    if (parentRecord.firstChild == 0) {
        parentRecord.firstChild = child;
        record.prevSibling = child;
        record.flags |= kElementFirstChild;
        return;
    }
    ElementRecord& first = table_[parentRecord.firstChild];
    const int last = first.prevSibling;
    table_[last].nextSibling = child;
    record.prevSibling = last;
    first.prevSibling = child;
}

void ElementParser::MarkIllFormed()
{
    table_[root_].flags |= kDocumentIllFormed;
    table_[CurrentParent()].flags |= kElementIllFormed;
}

// Closes the open elements from depth to the top as not ended, with the same result as
// closing them one by one from the innermost outwards: each one's children follow it as its
// siblings, so all of them end up children of the element below depth, and an ill-formed
// flag among them moves down to that element. Done in one pass so that a deep unclosed
// nest costs linear time.
void ElementParser::CloseNotEnded(int depth)
{
    const int newParent = table_[open_.At(depth).element].parent;
    bool illFormed = false;
    for (int i = depth; i < open_.Size(); ++i) {
        const int element = open_.At(i).element;
        ElementRecord& record = table_[element];
        record.flags |= kElementNotEnded;
        record.length = record.StartTagLength();
        record.SetEndTagLength(0);
        if (record.flags & kElementIllFormed) {
            illFormed = true;
            record.flags &= ~kElementIllFormed;
        }
        LiftChildrenOut(element, newParent);
    }
    if (illFormed)
        table_[newParent].flags |= kElementIllFormed;
    table_[root_].flags |= kDocumentIllFormed;
    open_.PopFrom(depth);
}

void ElementParser::LiftChildrenOut(int element, int newParent)
{
    ElementRecord& record = table_[element];
    const int first = record.firstChild;
    if (first == 0)
        return;
    const int last = table_[first].prevSibling;
    for (int child = first; child != 0; child = table_[child].nextSibling)
        table_[child].parent = newParent;
    table_[first].flags &= ~kElementFirstChild;
    record.firstChild = 0;

    const int after = record.nextSibling;
    record.nextSibling = first;
    table_[first].prevSibling = element;
    table_[last].nextSibling = after;
    if (after != 0)
        table_[after].prevSibling = last;
    else
        table_[table_[newParent].firstChild].prevSibling = last;
}

int ElementParser::CurrentParent() const
{
    return open_.IsEmpty() ? root_ : open_.Top().element;
}

WString ElementParser::TextAt(int start, int length) const
{
    return WString(text_ + start, text_ + start + length);
}
