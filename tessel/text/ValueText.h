#pragma once
// Values as the output formats write them: JSON strings with their escapes, numbers in the
// shortest form that reads back to the same double, host values as JSON or CSV fields. The
// record writers call these for every value, so they append in place to a buffer.

#include "host/GisData.h"
#include "host/Text.h"

#include <string>
#include <string_view>

namespace tessel {

// A JSON string literal of UTF-8 text: quotes, backslashes and control characters escaped.
void AppendJsonString(std::string& out, std::string_view utf8);
// A JSON string literal of UTF-16 text.
void AppendJsonString(std::string& out, const WString& text);

// The shortest decimal text that reads back to the same double ("12.5", "456789.123",
// "1e+21"). JSON has no form for infinities and NaN: they are written as the strings
// "inf", "-inf" and "nan", the host's own text for them, so nothing is dropped silently.
void AppendJsonNumber(std::string& out, double value);

// A host value as JSON: null (also for a null pointer), an integer, a number or a string.
void AppendJsonValue(std::string& out, const VeltoGis::Data::CDataBox* value);

// A CSV field of UTF-8 text, quoted (quotes doubled) when it holds a comma, a quote, a line
// break or blanks at either end.
void AppendCsvField(std::string& out, std::string_view utf8);
// A host value as a CSV field: empty for null, numbers in their shortest form.
void AppendCsvValue(std::string& out, const VeltoGis::Data::CDataBox* value);
// A number as a CSV field.
void AppendCsvNumber(std::string& out, double value);

} // namespace tessel
