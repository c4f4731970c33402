#pragma once
// The account an import run keeps of what it did not take as it stood: per column that the
// builder reads, the non-empty values that do not convert to the column's type (the import
// still makes them what it always made them), and the lines that gave no record, with the
// reason. The run keeps it for the application when it ends (import/LastImportAccount.h).
//
// A line whose every value converts costs one test per number field; nothing is allocated
// unless something does not convert.

#include "import/ImportAccountRecord.h"
#include "host/Text.h"
#include "import/ColumnData.h"
#include "import/NumberText.h"
#include "textfile/FieldSplit.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class ImportAccount {
public:
    void Begin(const WString& file);

    // The columns whose values are checked: those the builder reads. A column noted twice
    // is checked once.
    void CheckColumn(const CColumnData& column);

    // Checks the fields of one non-comment line (fieldCount: the fields the line has).
    void CheckLine(std::uint64_t line, const FieldList& fields, std::size_t fieldCount)
    {
        for (Checked& checked : checked_) {
            if (static_cast<std::size_t>(checked.no) < fieldCount && !fields[checked.no].empty() &&
                !PlainNumber(fields[checked.no], checked.type == kColumnReal))
                CheckField(line, checked, fields[checked.no]);
        }
    }

    void CountComment() { ++account_.commentLines; }
    void Skip(std::uint64_t line, TxtImport::enmSkipReason reason);

    // Keeps the account for the application, with the number of lines read.
    void Report(std::uint64_t lines);

    const TxtImport::CImportAccount& Account() const { return account_; }

private:
    // The fields of almost every survey file: an optional sign, digits and, for a real, one
    // decimal separator. True means it converts; false leaves the answer to the full rule
    // (NumberText.h), which the account needs only for the rare field that is anything else.
    static bool PlainNumber(const WString& field, bool real)
    {
        if (field.size() > kLongestNumber)
            return false;
        const WChar* p = field.data();
        const WChar* const end = p + field.size();
        if (*p == '-' || *p == '+')
            ++p;
        const WChar* const digits = p;
        while (p < end && static_cast<unsigned>(*p - '0') < 10u)
            ++p;
        // Nine digits: every int holds them.
        if (!real)
            return p == end && p > digits && p - digits <= 9;
        std::ptrdiff_t count = p - digits;
        if (p < end && (*p == '.' || *p == ',')) {
            const WChar* const fraction = ++p;
            while (p < end && static_cast<unsigned>(*p - '0') < 10u)
                ++p;
            count += p - fraction;
        }
        return p == end && count > 0;
    }

    struct Checked {
        int no;
        int type;
        std::size_t index; // in account_.columns
    };
    void CheckField(std::uint64_t line, Checked& checked, const WString& field);

    TxtImport::CImportAccount account_;
    std::vector<Checked> checked_;
};
