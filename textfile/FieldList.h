#pragma once
// Inside the splitters only: refills a field list through its existing strings, so that
// their capacity is reused from line to line.

#include "textfile/FieldSplit.h"
#include "host/StringLength.h"

#include <cstring>

// Fields are short: two overlapping fixed-size copies move up to 16 units without a call.
inline void CopyUnits(WChar* to, const WChar* from, std::size_t count)
{
    if (count >= 8 && count <= 16) {
        std::memcpy(to, from, 8 * sizeof(WChar));
        std::memcpy(to + count - 8, from + count - 8, 8 * sizeof(WChar));
    } else if (count >= 4 && count < 8) {
        std::memcpy(to, from, 4 * sizeof(WChar));
        std::memcpy(to + count - 4, from + count - 4, 4 * sizeof(WChar));
    } else {
        WString::traits_type::copy(to, from, count);
    }
}

// Cheaper than assign() for the short fields of a line: a field of the same length as on
// the line before needs no size change at all.
inline void AssignField(WString& field, const WChar* text, std::size_t length)
{
    if (field.size() != length)
        SetLength(field, length);
    if (length > 0)
        CopyUnits(&field[0], text, length);
}

// Adds fields one after another, when their number is not known beforehand.
class FieldFiller {
public:
    explicit FieldFiller(FieldList& fields) : fields_(fields), reusable_(fields.size()) {}
    ~FieldFiller()
    {
        if (count_ < fields_.size())
            fields_.resize(count_);
    }
    FieldFiller(const FieldFiller&) = delete;
    FieldFiller& operator=(const FieldFiller&) = delete;

    void Add(const WChar* text, std::size_t length)
    {
        if (count_ < reusable_)
            AssignField(fields_.data()[count_], text, length);
        else
            fields_.emplace_back(text, length);
        ++count_;
    }
    std::size_t Count() const { return count_; }

private:
    FieldList& fields_;
    const std::size_t reusable_; // strings the list held before
    std::size_t count_ = 0;
};
