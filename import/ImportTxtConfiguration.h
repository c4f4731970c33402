#pragma once
// The import configuration record and its XML string, as the host keeps it in an import
// definition:
//   <?xml version="1.0" encoding="utf-8"?><cfg txtFile=".." delimiter=".." comments=".."
//   mode="0" colPositions="12¤25¤"[ headerLines="1"]>(<col no=".." name=".." type=".." onOff=".."/>)*</cfg>
// on one line. headerLines is written only when it is above 0, so that a configuration
// without header lines is the same text it always was. txtFile, delimiter, comments and the column names are encoded text: double
// quotes become "×" (U+00D7), then the configuration value codec applies. Reading turns "×"
// back into a double quote in txtFile, comments and the delimiters, but not in column names:
// a name with a double quote comes back with "×". That asymmetry is required.

#include "host/Text.h"
#include "import/ColumnData.h"
#include "textfile/FieldSplit.h"

#include <boost/shared_ptr.hpp>

#include <vector>

// The values that the configuration string stores as encoded text.
enum class ImportValue { FilePath, Delimiters, Comments, ColumnName };

// What storing does to a value, as bits; none set: it reads back exactly as it was written.
namespace ImportValueChange {
constexpr unsigned OutsideCodePage = 1; // a character the code page lacks becomes its default character
constexpr unsigned SignReadAsQuote = 2; // "×" reads back as a double quote (all but column names)
constexpr unsigned QuoteReadAsSign = 4; // a double quote reads back as "×" (column names)
} // namespace ImportValueChange

// The one answer to which characters a value of the import configuration can hold, for
// every side that composes one: the ImportValueChange bits of text stored as that value in
// the code page (0: the system's ANSI code page, in which the engines write it).
unsigned ImportValueChanges(ImportValue value, const WString& text, unsigned codePage = 0);

class ImportTxtConfiguration {
public:
    using ColumnList = std::vector<boost::shared_ptr<CColumnData>>;

    // Delimited mode, everything else empty.
    ImportTxtConfiguration() = default;

    // Empties the path, the delimiters, the comments, the positions and the columns; the
    // mode and the header lines stay.
    void Clear();

    // Fills the record from a configuration string (null reads as empty). Returns 0 and
    // leaves the record exactly as it was when the text has no top-level "cfg" element;
    // otherwise replaces every field, missing attributes and numbers that are not numbers
    // reading as "" and 0, and returns 1. A delimiter attribute of several characters comes
    // back as that many one-character delimiters.
    int Parse(const WChar* xml);

    // The configuration string. Deliberately not const: double quotes in the record's own
    // txtFile are replaced by "×" as it is written.
    WString ToXml();

    const WString& GetTxtFile() const { return txtFile_; }
    void SetTxtFile(const WString& txtFile) { txtFile_ = txtFile; }
    const DelimiterList& GetDelimiters() const { return delimiters_; }
    void SetDelimiters(const DelimiterList& delimiters) { delimiters_ = delimiters; }
    // The comment marker characters, all in one string.
    const WString& GetComments() const { return comments_; }
    void SetComments(const WString& comments) { comments_ = comments; }
    // 0: delimited fields; anything else: fixed-width fields.
    int GetMode() const { return mode_; }
    void SetMode(int mode) { mode_ = mode; }
    // Where the second, third, ... field begin in fixed-width mode.
    PositionList& GetPositions() { return positions_; }
    const PositionList& GetPositions() const { return positions_; }
    // How many non-comment lines at the start of the file are column names, not data (0:
    // none). Every import run skips them.
    int GetHeaderLines() const { return headerLines_; }
    void SetHeaderLines(int headerLines) { headerLines_ = headerLines; }
    // The file's columns in document order.
    ColumnList& GetColumns() { return columns_; }
    const ColumnList& GetColumns() const { return columns_; }

private:
    WString txtFile_;
    DelimiterList delimiters_;
    WString comments_;
    int mode_ = 0;
    PositionList positions_;
    int headerLines_ = 0;
    ColumnList columns_;
};
