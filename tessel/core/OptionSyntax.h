#pragma once
// The small languages inside option values: escaped characters, column and bind options,
// position lists, the filter rectangle and the key value. Each parser throws a usage
// AppError whose text names the option and the offending value.

#include "tessel/core/Requests.h"

#include <string>
#include <vector>

namespace tessel {

// Resolves the escapes "\t" (tab), "\s" (blank) and "\\" (backslash); any other backslash
// sequence is an error, so that a mistyped escape never becomes a literal delimiter.
std::string ResolveEscapes(const std::string& option, const std::string& value);

// NAME[:real|text|integer][:off]; the type defaults to text.
ColumnOption ParseColumnOption(const std::string& value);

// SOURCE=TARGET, or a lone NAME that binds NAME to a target of the same name. Either side
// may be empty ("=TARGET": a bind without a source field).
BindOption ParseBindOption(const std::string& option, const std::string& value);

// TARGET=TRANSFORM.
TransformOption ParseTransformOption(const std::string& value);

// POS[,POS...]: character positions at which the second, third, ... field begin; each
// at least 1 and greater than the one before.
std::vector<unsigned> ParsePositions(const std::string& value);
// --header-lines N: a number of lines, 0 or more.
int ParseHeaderLines(const std::string& value);

// XMIN,YMIN,XMAX,YMAX with XMIN <= XMAX and YMIN <= YMAX.
CoordinateFilter ParseFilter(const std::string& value);

// VALUE[:real|text|integer|null]; the type defaults to text. A real or integer value must be
// a whole number of its kind.
void ParseKeyValue(const std::string& value, std::string& text, KeyValueType& type);

// A decimal number read without regard to the locale; false when text is not exactly one.
bool ParseDouble(const std::string& text, double& value);
bool ParseInt(const std::string& text, int& value);

} // namespace tessel
