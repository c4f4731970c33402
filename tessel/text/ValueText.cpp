#include "tessel/text/ValueText.h"

#include "host/Utf8.h"
#include "refhost/gis/RealText.h"
#include "refhost/HostSide.h"

#include <charconv>
#include <cmath>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;

// The host's own text of a real, so that a file written here shows the same number as the
// host does. JSON has no form for NaN, and "nan" reads more plainly than "-nan" in a string.
void AppendShortest(std::string& out, double value)
{
    if (std::isnan(value)) {
        out += "nan";
        return;
    }
    char text[refhost::kRealTextCapacity];
    out.append(text, refhost::AppendRealText(value, text));
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

void AppendJsonString(std::string& out, const WString& text) { AppendJsonString(out, ToUtf8(text)); }

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
    switch (value ? refhost::KindOf(*value) : CDataBox::Kind::Null) {
    case CDataBox::Kind::Null: out += "null"; break;
    case CDataBox::Kind::Integer:
        AppendInteger(out, refhost::IntegerOf(*value));
        break;
    case CDataBox::Kind::Real:
        AppendJsonNumber(out, refhost::RealOf(*value));
        break;
    case CDataBox::Kind::Text:
        AppendJsonString(out, refhost::TextOf(*value));
        break;
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
    switch (value ? refhost::KindOf(*value) : CDataBox::Kind::Null) {
    case CDataBox::Kind::Null: break;
    case CDataBox::Kind::Integer:
        AppendInteger(out, refhost::IntegerOf(*value));
        break;
    case CDataBox::Kind::Real:
        AppendShortest(out, refhost::RealOf(*value));
        break;
    case CDataBox::Kind::Text:
        AppendCsvField(out, ToUtf8(refhost::TextOf(*value)));
        break;
    }
}

} // namespace tessel
