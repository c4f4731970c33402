#include "host/GisData.h"

#include <charconv>

namespace VeltoGis {
namespace Data {

CDataBox::CDataBox(const WChar* text)
{
    SetValue(text);
}

void CDataBox::SetValue(int value)
{
    kind_ = Kind::Integer;
    integer_ = value;
    text_.clear();
}

void CDataBox::SetValue(double value)
{
    kind_ = Kind::Real;
    real_ = value;
    text_.clear();
}

void CDataBox::SetValue(const WChar* text)
{
    if (!text) {
        SetNull();
        return;
    }
    kind_ = Kind::Text;
    text_.assign(text);
}

void CDataBox::SetNull()
{
    kind_ = Kind::Null;
    text_.clear();
}

CDataBox::operator WString() const
{
    // Wide enough for the shortest round-trip form of any double and for any int.
    char digits[32];
    std::to_chars_result result{digits, std::errc()};
    switch (kind_) {
    case Kind::Null:
        return WString();
    case Kind::Text:
        return text_;
    case Kind::Integer:
        result = std::to_chars(digits, digits + sizeof digits, integer_);
        break;
    case Kind::Real:
        result = std::to_chars(digits, digits + sizeof digits, real_);
        break;
    }
    return WString(digits, result.ptr);
}

bool CDataBox::operator==(const CDataBox& other) const
{
    if (kind_ != other.kind_)
        return false;
    switch (kind_) {
    case Kind::Null:
        return true;
    case Kind::Integer:
        return integer_ == other.integer_;
    case Kind::Real:
        return real_ == other.real_;
    case Kind::Text:
        return text_ == other.text_;
    }
    return false;
}

} // namespace Data
} // namespace VeltoGis
