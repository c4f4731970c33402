#include "tessel/core/OptionSyntax.h"

#include "tessel/core/AppError.h"

#include <charconv>
#include <cmath>

namespace tessel {
namespace {

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

std::vector<std::string> SplitAt(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::string::size_type start = 0;
    for (;;) {
        const auto end = text.find(separator, start);
        pieces.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos)
            return pieces;
        start = end + 1;
    }
}

bool ParseColumnType(const std::string& text, ColumnTypeCode& type)
{
    if (text == "real")
        type = kColumnReal;
    else if (text == "text")
        type = kColumnText;
    else if (text == "integer")
        type = kColumnInteger;
    else
        return false;
    return true;
}

} // namespace

bool ParseDouble(const std::string& text, double& value)
{
    const char* first = text.data();
    const char* last = first + text.size();
    if (first != last && *first == '+')
        ++first;
    const auto result = std::from_chars(first, last, value);
    return first != last && result.ec == std::errc() && result.ptr == last && std::isfinite(value);
}

bool ParseInt(const std::string& text, int& value)
{
    const char* first = text.data();
    const char* last = first + text.size();
    if (first != last && *first == '+')
        ++first;
    const auto result = std::from_chars(first, last, value);
    return first != last && result.ec == std::errc() && result.ptr == last;
}

std::string ResolveEscapes(const std::string& option, const std::string& value)
{
    std::string resolved;
    for (std::string::size_type i = 0; i < value.size(); ++i) {
        if (value[i] != '\\') {
            resolved.push_back(value[i]);
            continue;
        }
        const char next = i + 1 < value.size() ? value[i + 1] : '\0';
        if (next == 't')
            resolved.push_back('\t');
        else if (next == 's')
            resolved.push_back(' ');
        else if (next == '\\')
            resolved.push_back('\\');
        else
            throw UsageError(option + ": unknown escape in " + Quoted(value) + " (use \\t, \\s or \\\\)");
        ++i;
    }
    return resolved;
}

ColumnOption ParseColumnOption(const std::string& value)
{
    const auto pieces = SplitAt(value, ':');
    ColumnOption column;
    column.name = pieces[0];
    bool typeSeen = false;
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        if (pieces[i] == "off" && i + 1 == pieces.size()) {
            column.enabled = false;
        } else if (!typeSeen && i == 1 && ParseColumnType(pieces[i], column.type)) {
            typeSeen = true;
        } else {
            throw UsageError("--column: " + Quoted(value) + " is not NAME[:real|text|integer][:off]");
        }
    }
    if (column.name.empty())
        throw UsageError("--column: " + Quoted(value) + " has no column name");
    return column;
}

BindOption ParseBindOption(const std::string& option, const std::string& value)
{
    const auto equals = value.find('=');
    if (equals == std::string::npos) {
        if (value.empty())
            throw UsageError(option + ": an empty bind (use SOURCE=TARGET)");
        return BindOption{value, value};
    }
    return BindOption{value.substr(0, equals), value.substr(equals + 1)};
}

TransformOption ParseTransformOption(const std::string& value)
{
    const auto equals = value.rfind('=');
    if (equals == std::string::npos || equals + 1 == value.size())
        throw UsageError("--transform: " + Quoted(value) + " is not TARGET=TRANSFORM");
    return TransformOption{value.substr(0, equals), value.substr(equals + 1)};
}

std::vector<unsigned> ParsePositions(const std::string& value)
{
    std::vector<unsigned> positions;
    for (const auto& piece : SplitAt(value, ',')) {
        int position = 0;
        if (!ParseInt(piece, position) || position < 1)
            throw UsageError("--fixed: " + Quoted(piece) + " is not a character position (1 or more)");
        if (!positions.empty() && static_cast<unsigned>(position) <= positions.back())
            throw UsageError("--fixed: positions must ascend, but " + piece + " follows " +
                             std::to_string(positions.back()));
        positions.push_back(static_cast<unsigned>(position));
    }
    return positions;
}

int ParseHeaderLines(const std::string& value)
{
    int lines = 0;
    if (!ParseInt(value, lines) || lines < 0)
        throw UsageError("--header-lines: " + Quoted(value) + " is not a number of lines (0 or more)");
    return lines;
}

CoordinateFilter ParseFilter(const std::string& value)
{
    const auto pieces = SplitAt(value, ',');
    double numbers[4] = {};
    bool valid = pieces.size() == 4;
    for (std::size_t i = 0; valid && i < 4; ++i)
        valid = ParseDouble(pieces[i], numbers[i]);
    if (!valid)
        throw UsageError("--filter: " + Quoted(value) + " is not XMIN,YMIN,XMAX,YMAX");
    if (numbers[0] > numbers[2] || numbers[1] > numbers[3])
        throw UsageError("--filter: " + Quoted(value) + " has a minimum above its maximum");
    return CoordinateFilter{numbers[0], numbers[1], numbers[2], numbers[3]};
}

void ParseKeyValue(const std::string& value, std::string& text, KeyValueType& type)
{
    const auto colon = value.rfind(':');
    const std::string suffix = colon == std::string::npos ? std::string() : value.substr(colon + 1);
    type = KeyValueType::Text;
    text = value;
    if (suffix == "text" || suffix == "real" || suffix == "integer" || suffix == "null") {
        text = value.substr(0, colon);
        type = suffix == "real"      ? KeyValueType::Real
               : suffix == "integer" ? KeyValueType::Integer
               : suffix == "null"    ? KeyValueType::Null
                                     : KeyValueType::Text;
    }
    double real = 0.0;
    int integer = 0;
    if (type == KeyValueType::Real && !ParseDouble(text, real))
        throw UsageError("--key-value: " + Quoted(text) + " is not a real number");
    if (type == KeyValueType::Integer && !ParseInt(text, integer))
        throw UsageError("--key-value: " + Quoted(text) + " is not an integer");
    if (type == KeyValueType::Null && !text.empty())
        throw UsageError("--key-value: a null key value takes no text (write ':null')");
}

} // namespace tessel
