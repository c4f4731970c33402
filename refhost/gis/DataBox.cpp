#include "host/GisData.h"

#include "refhost/gis/RealText.h"

#include <charconv>
#include <cstring>

namespace VeltoGis {
namespace Data {

CDataBox::CDataBox(const WChar* text)
{
    SetValue(text);
}

CDataBox::CDataBox(const CDataBox& other) : kind_(other.kind_)
{
    if (kind_ == Kind::Text)
        AssignText(other.TextData(), other.length_);
    else
        storage_ = other.storage_;
}

CDataBox::CDataBox(CDataBox&& other) noexcept : kind_(other.kind_), length_(other.length_), storage_(other.storage_)
{
    other.kind_ = Kind::Null;
    other.length_ = 0;
}

CDataBox& CDataBox::operator=(const CDataBox& other)
{
    if (this == &other)
        return *this;
    if (other.kind_ == Kind::Text) {
        AssignText(other.TextData(), other.length_);
    } else {
        ReleaseText();
        storage_ = other.storage_;
    }
    kind_ = other.kind_;
    return *this;
}

CDataBox& CDataBox::operator=(CDataBox&& other) noexcept
{
    if (this != &other) {
        ReleaseText();
        kind_ = other.kind_;
        length_ = other.length_;
        storage_ = other.storage_;
        other.kind_ = Kind::Null;
        other.length_ = 0;
    }
    return *this;
}

CDataBox::~CDataBox()
{
    ReleaseText();
}

void CDataBox::ReleaseText()
{
    if (kind_ == Kind::Text && length_ > kInlineUnits)
        delete[] storage_.heapText;
    length_ = 0;
}

// Copies before releasing, so that a text taken from this very box stays readable.
void CDataBox::AssignText(const WChar* text, std::size_t length)
{
    Storage fresh{};
    if (length <= kInlineUnits) {
        std::memcpy(fresh.inlineText, text, length * sizeof(WChar));
    } else {
        fresh.heapText = new WChar[length];
        std::memcpy(fresh.heapText, text, length * sizeof(WChar));
    }
    ReleaseText();
    storage_ = fresh;
    length_ = static_cast<unsigned>(length);
    kind_ = Kind::Text;
}

void CDataBox::SetValue(int value)
{
    ReleaseText();
    kind_ = Kind::Integer;
    storage_.integer = value;
}

void CDataBox::SetValue(double value)
{
    ReleaseText();
    kind_ = Kind::Real;
    storage_.real = value;
}

void CDataBox::SetValue(const WChar* text)
{
    if (!text) {
        SetNull();
        return;
    }
    std::size_t length = 0;
    while (text[length])
        ++length;
    AssignText(text, length);
}

void CDataBox::SetNull()
{
    ReleaseText();
    kind_ = Kind::Null;
}

CDataBox::operator WString() const
{
    char digits[refhost::kRealTextCapacity];
    char* end = digits;
    switch (kind_) {
    case Kind::Null:
        return WString();
    case Kind::Text:
        return WString(TextData(), length_);
    case Kind::Integer:
        end = std::to_chars(digits, digits + sizeof digits, storage_.integer).ptr;
        break;
    case Kind::Real:
        end = refhost::AppendRealText(storage_.real, digits);
        break;
    }
    return WString(digits, end);
}

bool CDataBox::operator==(const CDataBox& other) const
{
    if (kind_ != other.kind_)
        return false;
    switch (kind_) {
    case Kind::Null:
        return true;
    case Kind::Integer:
        return storage_.integer == other.storage_.integer;
    case Kind::Real:
        return storage_.real == other.storage_.real;
    case Kind::Text:
        return length_ == other.length_ &&
               std::memcmp(TextData(), other.TextData(), length_ * sizeof(WChar)) == 0;
    }
    return false;
}

} // namespace Data
} // namespace VeltoGis
