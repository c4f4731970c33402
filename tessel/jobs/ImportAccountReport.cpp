#include "tessel/jobs/ImportAccountReport.h"

#include "host/Utf8.h"
#include "tessel/jobs/Commands.h"
#include "tessel/jobs/OutputFile.h"
#include "tessel/text/ValueText.h"

namespace tessel {
namespace {

using namespace TxtImport;

const char* ReasonOf(enmConvertFault fault)
{
    return fault == FaultNotAWholeNumber ? "not a whole number" : "not a number";
}

std::string ColumnName(const CImportAccount& account, int no)
{
    for (const CImportColumnAccount& column : account.columns) {
        if (column.no == no)
            return ToUtf8(column.name);
    }
    return std::to_string(no);
}

} // namespace

std::string UnconvertedSummary(const CImportAccount& account)
{
    const std::uint64_t total = account.Unconverted();
    if (total == 0)
        return std::string();
    std::string text = Counted(static_cast<std::size_t>(total), "value", "values") +
                       (total == 1 ? " did not convert to its column's type:" : " did not convert to their column's type:");
    const char* separator = " ";
    for (const CImportColumnAccount& column : account.columns) {
        if (column.unconverted == 0)
            continue;
        text += separator + ("'" + ToUtf8(column.name) + "' ") + std::to_string(column.unconverted);
        separator = ", ";
    }
    if (account.rejected.size() < total)
        text += " (the first " + std::to_string(account.rejected.size()) + " are listed)";
    return text;
}

void WriteRejects(const CImportAccount& account, const std::string& path)
{
    OutputFile file(path, OutputFormat::Csv);
    file.Open();
    std::string& text = file.Text();
    text += "line,column,text,reason\n";
    for (const CImportRejectedValue& rejected : account.rejected) {
        text += std::to_string(rejected.line);
        text += ',';
        AppendCsvField(text, ColumnName(account, rejected.columnNo));
        text += ',';
        AppendCsvField(text, ToUtf8(rejected.text));
        text += ',';
        text += ReasonOf(rejected.fault);
        text += '\n';
        file.RecordDone();
    }
    file.Commit();
}

} // namespace tessel
