#pragma once
// What tessel tells of an import's account (import/ImportAccountRecord.h): one summary line when any
// value did not convert, and the list of those values as CSV.

#include "import/ImportAccountRecord.h"

#include <string>

namespace tessel {

// "3 values did not convert to their column's type: 'x' 2, 'z' 1"; empty when every
// value converted.
std::string UnconvertedSummary(const TxtImport::CImportAccount& account);

// Writes "line,column,text,reason" and one row per value that did not convert, in file
// order, beside the target first and then in its place. Throws a job AppError naming the
// path when it cannot be written.
void WriteRejects(const TxtImport::CImportAccount& account, const std::string& path);

} // namespace tessel
