#include "import/ImportAccount.h"

#include "import/LastImportAccount.h"
#include "import/NumberText.h"

#include <algorithm>

using namespace TxtImport;

void ImportAccount::Begin(const WString& file)
{
    // The columns to check are known before the run begins.
    std::vector<CImportColumnAccount> columns = std::move(account_.columns);
    account_ = CImportAccount();
    account_.file = file;
    account_.columns = std::move(columns);
    for (CImportColumnAccount& column : account_.columns)
        column.unconverted = 0;
    // The record of a run before this one must not pass for this run's.
    KeepLastImportAccount(CImportAccount());
}

void ImportAccount::CheckColumn(const CColumnData& column)
{
    // Text takes every field as it is; a negative number never names a field.
    if ((column.GetType() != kColumnReal && column.GetType() != kColumnInteger) || column.GetNo() < 0)
        return;
    const bool known = std::any_of(checked_.begin(), checked_.end(),
                                   [&column](const Checked& checked) { return checked.no == column.GetNo(); });
    if (known)
        return;
    CImportColumnAccount entry;
    entry.no = column.GetNo();
    entry.name = column.GetName();
    entry.type = column.GetType();
    checked_.push_back({column.GetNo(), column.GetType(), account_.columns.size()});
    account_.columns.push_back(entry);
}

void ImportAccount::CheckField(std::uint64_t line, Checked& checked, const WString& field)
{
    const NumberKind kind = ReadNumberText(field).kind;
    const bool converts = checked.type == kColumnReal ? kind != NumberKind::None : kind == NumberKind::Whole;
    if (converts)
        return;
    ++account_.columns[checked.index].unconverted;
    if (account_.rejected.size() >= CImportAccount::kMaxListed)
        return;
    CImportRejectedValue rejected;
    rejected.line = line;
    rejected.columnNo = checked.no;
    rejected.text = field;
    rejected.fault = checked.type == kColumnReal ? FaultNotANumber : FaultNotAWholeNumber;
    account_.rejected.push_back(std::move(rejected));
}

void ImportAccount::Skip(std::uint64_t line, enmSkipReason reason)
{
    ++account_.skippedLines;
    if (account_.skipped.size() < CImportAccount::kMaxListed)
        account_.skipped.push_back({line, reason});
}

void ImportAccount::Report(std::uint64_t lines)
{
    account_.lines = lines;
    KeepLastImportAccount(account_);
}
