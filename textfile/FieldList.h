#pragma once
// Inside the splitters only: refills a field list through its existing strings, so that
// their capacity is reused from line to line.

#include "textfile/FieldSplit.h"

class FieldFiller {
public:
    explicit FieldFiller(FieldList& fields) : fields_(fields) {}
    ~FieldFiller() { fields_.resize(count_); }
    FieldFiller(const FieldFiller&) = delete;
    FieldFiller& operator=(const FieldFiller&) = delete;

    void Add(const WChar* text, std::size_t length)
    {
        if (count_ < fields_.size())
            fields_[count_].assign(text, length);
        else
            fields_.emplace_back(text, length);
        ++count_;
    }

private:
    FieldList& fields_;
    std::size_t count_ = 0;
};
