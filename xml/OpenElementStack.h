#pragma once
// The start tags still open while a document is parsed, innermost on top, with an index by
// name so that finding the open element an end tag closes does not walk the whole stack:
// unmatched end tags under deep nesting stay linear.

#include "host/Text.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

struct OpenElement {
    int element;    // its record
    int tagStart;   // offset of its '<'
    int tagEnd;     // offset just past its '>'
    int nameStart;  // the tag name as the tokenizer delimits it (for messages)
    int nameLength;
};

class OpenElementStack {
public:
    // text[0..length) is the document text; it must outlive the stack.
    OpenElementStack(const WChar* text, int length);

    void Push(const OpenElement& entry);
    // Removes the entries from depth (0 = bottom) to the top.
    void PopFrom(int depth);
    bool IsEmpty() const { return entries_.empty(); }
    int Size() const { return static_cast<int>(entries_.size()); }
    const OpenElement& At(int depth) const { return entries_[depth].open; }
    const OpenElement& Top() const { return entries_.back().open; }

    // Depth of the innermost open element whose name (read from the text as element
    // lookup reads it) is named by wanted[0..wantedLength) under NameMatches; -1 if none.
    int FindInnermostNamed(const WChar* wanted, int wantedLength) const;

private:
    struct Entry {
        OpenElement open;
        std::uint64_t key;
        int nameStart;  // the name as element lookup reads it
        int nameLength;
    };

    int ScanForNamed(const WChar* wanted, int wantedLength) const;
    bool EntryNamed(int depth, const WChar* wanted, int wantedLength) const;

    const WChar* text_;
    int length_;
    std::vector<Entry> entries_;
    // Key of a name (hash and length) -> depths of the open entries with that name, ascending.
    std::unordered_map<std::uint64_t, std::vector<int>> depthsByName_;
};
