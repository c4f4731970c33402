#include "tessel/jobs/ConfigDraft.h"

#include "host/Utf8.h"
#include "platform/FileReplacement.h"
#include "platform/Platform.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/Warnings.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "import/ImportTxtConfiguration.h"
#include "textfile/TextFile.h"
#include "xml/ConfigValueCodec.h"

#include <boost/make_shared.hpp>

#include <set>

namespace tessel {
namespace {

std::string Quoted(const std::string& text) { return "'" + text + "'"; }

// What the wizard too would store, though it does not read back as given.
void WarnOfChanges(unsigned changes, const WString& value, const std::string& option, bool strict)
{
    if (changes & ImportValueChange::SignReadAsQuote)
        WarnOrRefuse(strict, option + ": the configuration reads the character '×' back as '\"'");
    if (changes & ImportValueChange::QuoteReadAsSign)
        WarnOrRefuse(strict, option + ": " + Quoted(ToUtf8(value)) +
                                 " contains '\"', which the configuration reads back as '×'");
}

// A character that the code page lacks would be stored as its default character.
void RequireCodePage(bool fits, const WString& value, unsigned codePage, const std::string& option)
{
    if (!fits)
        throw UsageError(option + ": " + Quoted(ToUtf8(value)) + " cannot be written in code page " +
                         std::to_string(codePage));
}

bool FitsCodePage(unsigned changes) { return !(changes & ImportValueChange::OutsideCodePage); }

// The wizard stores whatever columns it lists, so each doubtful one is a warning only.
ImportTxtConfiguration::ColumnList Columns(const std::vector<ColumnOption>& columns, unsigned codePage, bool strict)
{
    if (columns.empty())
        WarnOrRefuse(strict, "no columns: the engine offers no source fields (describe them with --column "
                             "NAME[:type], or give --config)");
    std::set<std::string> names;
    ImportTxtConfiguration::ColumnList list;
    for (std::size_t no = 0; no < columns.size(); ++no) {
        const ColumnOption& column = columns[no];
        if (!names.insert(column.name).second)
            WarnOrRefuse(strict, "--column: " + Quoted(column.name) + " is given twice; binds reach only the first");
        const WString name = FromUtf8(column.name);
        const unsigned changes = ImportValueChanges(ImportValue::ColumnName, name, codePage);
        WarnOfChanges(changes, name, "--column", strict);
        RequireCodePage(FitsCodePage(changes), name, codePage, "--column");
        auto data = boost::make_shared<CColumnData>();
        data->SetNo(static_cast<int>(no));
        data->SetName(name);
        data->SetType(column.type);
        data->SetOnOff(column.enabled ? 1 : 0);
        list.push_back(std::move(data));
    }
    return list;
}

} // namespace

WString ImportConfigDraft(const ImportConfigChoice& choice, unsigned codePage)
{
    // Fixed positions and delimiters may come together, as the wizard stores both: the
    // positions decide, and the delimiters wait for the delimited mode.
    const bool fixed = !choice.fixedPositions.empty();
    const WString delimiters = FromUtf8(choice.delimiters.value_or(fixed ? "" : " "));
    const WString comments = FromUtf8(choice.comments.value_or("#"));
    if (!fixed && delimiters.empty())
        WarnOrRefuse(choice.strict, "--delimiters: no delimiter, so every line is one field");
    const unsigned delimiterChanges = ImportValueChanges(ImportValue::Delimiters, delimiters, codePage);
    const unsigned commentChanges = ImportValueChanges(ImportValue::Comments, comments, codePage);
    WarnOfChanges(delimiterChanges, delimiters, "--delimiters", choice.strict);
    WarnOfChanges(commentChanges, comments, "--comments", choice.strict);
    RequireCodePage(FitsCodePage(delimiterChanges), delimiters, codePage, "--delimiters");
    RequireCodePage(FitsCodePage(commentChanges), comments, codePage, "--comments");

    ImportTxtConfiguration configuration;
    DelimiterList delimiterList;
    for (const WChar delimiter : delimiters)
        delimiterList.emplace_back(1, delimiter);
    configuration.SetDelimiters(delimiterList);
    configuration.SetComments(comments);
    configuration.SetMode(fixed ? 1 : 0);
    configuration.SetHeaderLines(choice.headerLines.value_or(0));
    configuration.GetPositions().assign(choice.fixedPositions.begin(), choice.fixedPositions.end());
    configuration.GetColumns() = Columns(choice.columns, codePage, choice.strict);
    return configuration.ToXml();
}

WString ExportConfigDraft(const ExportConfigChoice& choice, unsigned codePage)
{
    const WString comment = FromUtf8(choice.comment.value_or("#"));
    const WString delimiter = FromUtf8(choice.delimiter.value_or("\t"));
    RequireCodePage(ConfigValueFitsCodePage(comment, codePage), comment, codePage, "--comment");
    RequireCodePage(ConfigValueFitsCodePage(delimiter, codePage), delimiter, codePage, "--delimiter");
    CXMLTextFileExportConfiguration configuration;
    configuration.SetComment(comment);
    configuration.SetDelimiter(delimiter);
    configuration.SetHeader(choice.header.value_or(true) ? 1 : 0);
    configuration.SetFormat(choice.utf16 ? 1 : 0);
    return configuration.ToXml();
}

WString ReadConfigurationFile(const std::string& option, const std::string& path)
{
    const auto unreadable = [&] {
        return UsageError(option + ": cannot read " + Quoted(path) + ": " +
                          ToUtf8(Platform::ErrorDescription(Platform::LastError())));
    };
    // Byte-order marks are the module's text layer's to decode; a file without one is UTF-8,
    // as tessel writes configurations, so its bytes are taken raw and decoded as such.
    TextFile file;
    file.SetRaw(true);
    if (file.Open(FromUtf8(path), TextFileMode::Read, TextEncoding::Detect) != TextFileResult::Ok)
        throw unreadable();
    const bool unmarked = file.Encoding() == TextEncoding::Ansi;
    WString text;
    WString line;
    while (file.ReadLine(nullptr, line) == TextFileResult::Ok) {
        if (unmarked) {
            const std::string bytes(line.begin(), line.end());
            line = FromUtf8(bytes);
        }
        text += line;
        text += WTEXT('\n');
    }
    if (file.ReadFailed())
        throw unreadable();
    // Line ends after the text are not part of it.
    while (!text.empty() && (text.back() == WTEXT('\n') || text.back() == WTEXT('\r')))
        text.pop_back();
    if (text.empty())
        throw UsageError(option + ": " + Quoted(path) + " is empty");
    return text;
}

} // namespace tessel
