#pragma once
// The account an import run keeps of what it did not take as it stood: per column that the
// builder reads, the non-empty values that do not convert to the column's type (the import
// still makes them what it always made them), and the lines that gave no record, with the
// reason. The run hands it to the framework when it ends (host/ImpexAccount.h).
//
// A line whose every value converts costs one test per number field; nothing is allocated
// unless something does not convert.

#include "host/ImpexAccount.h"
#include "host/Text.h"
#include "import/ColumnData.h"
#include "textfile/FieldSplit.h"

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
            if (static_cast<std::size_t>(checked.no) < fieldCount && !fields[checked.no].empty())
                CheckField(line, checked, fields[checked.no]);
        }
    }

    void CountComment() { ++account_.commentLines; }
    void Skip(std::uint64_t line, VeltoGis::ImportExport::enmSkipReason reason);

    // Hands the account to the framework, with the number of lines read.
    void Report(std::uint64_t lines);

    const VeltoGis::ImportExport::CImportAccount& Account() const { return account_; }

private:
    struct Checked {
        int no;
        int type;
        std::size_t index; // in account_.columns
    };
    void CheckField(std::uint64_t line, Checked& checked, const WString& field);

    VeltoGis::ImportExport::CImportAccount account_;
    std::vector<Checked> checked_;
};
