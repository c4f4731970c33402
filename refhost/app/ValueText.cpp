#include "refhost/app/ValueText.h"

#include "refhost/Utf8.h"

#include <charconv>
#include <cmath>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;

// Survey values mostly carry a few decimals. For such a value the shortest text is the
// fixed form of the smallest number of decimals that reads back to it, found here without
// the general algorithm (which costs about ten times as much). The range limits keep the
// search exact: below 1e15 after scaling, the product is off by far less than a half, so a
// decimal that exists is found; from 0.001 up, the fixed form is never longer than the
// scientific one. Everything else, and larger integers, take the general way.
bool AppendFewDecimals(std::string& out, double value)
{
    const double magnitude = std::fabs(value);
    if (magnitude == std::floor(magnitude) && magnitude < 1e5 && (value != 0 || !std::signbit(value))) {
        // Up to five digits the plain integer is shorter than any scientific form.
        char digits[8];
        const auto end = std::to_chars(digits, digits + sizeof digits, static_cast<int>(value)).ptr;
        out.append(digits, end);
        return true;
    }
    if (!(magnitude >= 0.001 && magnitude < 1e9) || magnitude == std::floor(magnitude))
        return false;
    double scale = 1;
    for (int decimals = 1; decimals <= 6; ++decimals) {
        scale *= 10;
        const double scaled = std::nearbyint(magnitude * scale);
        if (scaled / scale != magnitude)
            continue;
        auto units = static_cast<unsigned long long>(scaled);
        char digits[32];
        char* end = digits + sizeof digits;
        char* at = end;
        for (int i = 0; i < decimals; ++i, units /= 10)
            *--at = static_cast<char>('0' + units % 10);
        *--at = '.';
        do {
            *--at = static_cast<char>('0' + units % 10);
            units /= 10;
        } while (units != 0);
        if (value < 0)
            *--at = '-';
        out.append(at, end);
        return true;
    }
    return false;
}

void AppendShortest(std::string& out, double value)
{
    if (AppendFewDecimals(out, value))
        return;
    if (std::isnan(value)) {
        out += "nan";
        return;
    }
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    out.append(digits, result.ptr);
}

void AppendInteger(std::string& out, int value)
{
    char digits[16];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    out.append(digits, result.ptr);
}

bool NeedsCsvQuotes(std::string_view text)
{
    if (text.empty())
        return false;
    if (text.front() == ' ' || text.back() == ' ' || text.front() == '\t' || text.back() == '\t')
        return true;
    return text.find_first_of(",\"\r\n") != std::string_view::npos;
}

} // namespace

void AppendJsonString(std::string& out, std::string_view utf8)
{
    static const char hex[] = "0123456789abcdef";
    out.push_back('"');
    std::size_t plainStart = 0;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        out.append(utf8.data() + plainStart, i - plainStart);
        plainStart = i + 1;
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '\b': out += "\\b"; break;
        case '\f': out += "\\f"; break;
        default: out += {'\\', 'u', '0', '0', hex[c >> 4], hex[c & 15]}; break;
        }
    }
    out.append(utf8.data() + plainStart, utf8.size() - plainStart);
    out.push_back('"');
}

void AppendJsonString(std::string& out, const WString& text) { AppendJsonString(out, refhost::ToUtf8(text)); }

void AppendJsonNumber(std::string& out, double value)
{
    if (std::isfinite(value)) {
        AppendShortest(out, value);
        return;
    }
    out.push_back('"');
    AppendShortest(out, value);
    out.push_back('"');
}

void AppendJsonValue(std::string& out, const CDataBox* value)
{
    switch (value ? value->GetKind() : CDataBox::Kind::Null) {
    case CDataBox::Kind::Null: out += "null"; break;
    case CDataBox::Kind::Integer: AppendInteger(out, value->GetInteger()); break;
    case CDataBox::Kind::Real: AppendJsonNumber(out, value->GetReal()); break;
    case CDataBox::Kind::Text: AppendJsonString(out, value->GetText()); break;
    }
}

void AppendCsvField(std::string& out, std::string_view utf8)
{
    if (!NeedsCsvQuotes(utf8)) {
        out.append(utf8);
        return;
    }
    out.push_back('"');
    for (const char c : utf8) {
        if (c == '"')
            out.push_back('"');
        out.push_back(c);
    }
    out.push_back('"');
}

void AppendCsvNumber(std::string& out, double value) { AppendShortest(out, value); }

void AppendCsvValue(std::string& out, const CDataBox* value)
{
    switch (value ? value->GetKind() : CDataBox::Kind::Null) {
    case CDataBox::Kind::Null: break;
    case CDataBox::Kind::Integer: AppendInteger(out, value->GetInteger()); break;
    case CDataBox::Kind::Real: AppendShortest(out, value->GetReal()); break;
    case CDataBox::Kind::Text: AppendCsvField(out, refhost::ToUtf8(value->GetText())); break;
    }
}

} // namespace tessel
