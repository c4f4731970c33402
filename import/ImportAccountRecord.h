#pragma once
// The record of what an import run did not take as it stood: values that did not convert to
// their column's type, and lines left out, with the reason. The module keeps the record of its
// last run for the application that started it (import/LastImportAccount.h); the framework's
// interfaces carry none of it.

#include "host/Text.h"

#include <cstdint>
#include <vector>

namespace TxtImport {

// Why a line gave no record.
enum enmSkipReason : int {
    SkipHeaderLine = 1,      // one of the configuration's header lines (column names)
    SkipOutsideFilter = 2,   // a point outside the job's coordinate filter
    SkipWithoutPosition = 3, // a cloud point without both coordinates
    SkipKeyNotChosen = 4     // a table row whose key the operation did not ask for
};

// Why a value did not convert; the import made it 0 (or the number's leading part) all the same.
enum enmConvertFault : int {
    FaultNotANumber = 1,      // a real column's field holds no number as a whole
    FaultNotAWholeNumber = 2  // an integer column's field holds no whole number an int holds
};

struct CImportColumnAccount {
    int no = 0;                    // the column's number in the configuration
    WString name;                  // the column's name
    int type = 0;                  // the column's type code
    std::uint64_t unconverted = 0; // non-empty values that did not convert
};

struct CImportRejectedValue {
    std::uint64_t line = 0; // 1 for the file's first line, comments counted
    int columnNo = 0;
    WString text;           // the field as it was cut
    enmConvertFault fault = FaultNotANumber;
};

struct CImportSkippedLine {
    std::uint64_t line = 0;
    enmSkipReason reason = SkipHeaderLine;
};

struct CImportAccount {
    // Entries listed at most per list; the counts go on beyond.
    static constexpr std::size_t kMaxListed = 1000000;

    WString file;
    std::uint64_t lines = 0;        // lines read, comments included
    std::uint64_t commentLines = 0;
    std::uint64_t skippedLines = 0; // all of them, listed or not
    std::vector<CImportColumnAccount> columns; // the columns the run read, in configuration order
    std::vector<CImportRejectedValue> rejected; // in file order
    std::vector<CImportSkippedLine> skipped;    // in file order

    std::uint64_t Unconverted() const
    {
        std::uint64_t total = 0;
        for (const CImportColumnAccount& column : columns)
            total += column.unconverted;
        return total;
    }
};

} // namespace TxtImport
