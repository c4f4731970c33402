#pragma once
// The parsed elements of one document: a flat table of eight-integer records that point
// into the document text by character offset. Records live in blocks of 65,536 that never
// move once allocated, so a reference to a record stays valid while the table grows.

#include <cstdint>
#include <memory>
#include <vector>

// Element flags, above the 16-bit depth in ElementRecord::flags.
enum ElementFlags : std::int32_t {
    kElementLevelMask = 0xFFFF,
    kElementEmpty = 0x10000,         // <x/>
    kElementFirstChild = 0x80000,    // first child of its parent
    kElementNotEnded = 0x100000,     // no end tag was found
    kElementIllFormed = 0x200000,    // an unmatched end tag or a bad node directly inside
    kDocumentIllFormed = 0x800000    // only on the record where parsing began
};

struct ElementRecord {
    std::int32_t start;       // offset of the '<' of the start tag
    std::int32_t length;      // '<' of the start tag to '>' of the end tag (or the start tag alone)
    std::int32_t tagLengths;  // start tag's length in bits 0-21, end tag's in bits 22-31
    std::int32_t flags;       // depth in bits 0-15, ElementFlags above
    std::int32_t parent;      // 0 for the root element: record 0 is the document
    std::int32_t firstChild;  // 0 if none
    std::int32_t nextSibling; // 0 for the last
    std::int32_t prevSibling; // on the first child: the last child, so appending needs no walk

    int StartTagLength() const { return static_cast<int>(static_cast<std::uint32_t>(tagLengths) & 0x3FFFFF); }
    int EndTagLength() const { return static_cast<int>(static_cast<std::uint32_t>(tagLengths) >> 22); }
    void SetStartTagLength(int length);
    void SetEndTagLength(int length);
    int Level() const { return flags & kElementLevelMask; }
};

class ElementTable {
public:
    static constexpr int kBlockBits = 16;
    static constexpr int kBlockSize = 1 << kBlockBits;

    // Empties the table for a document of textLength characters: room for at least
    // textLength / 64 + 8 records, the next free index 1 and record 0 zeroed.
    // Blocks already allocated are kept for reuse.
    void Reset(std::int64_t textLength);

    bool IsEmpty() const { return blocks_.empty(); }
    // Index of a fresh record (its fields unset); grows the table by half when it is full.
    int Allocate();
    // Records handed out so far, record 0 included.
    int Count() const { return nextFree_; }
    int Capacity() const { return capacity_; }
    int BlockCount() const { return static_cast<int>(blocks_.size()); }

    ElementRecord& operator[](int index) { return blocks_[index >> kBlockBits][index & (kBlockSize - 1)]; }
    const ElementRecord& operator[](int index) const
    {
        return blocks_[index >> kBlockBits][index & (kBlockSize - 1)];
    }

private:
    void Grow();
    void Reserve(std::int64_t records);

    std::vector<std::unique_ptr<ElementRecord[]>> blocks_;
    int capacity_ = 0; // records the table may hand out before it grows
    int nextFree_ = 1;
};
