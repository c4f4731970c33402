#pragma once
// Cuts the lines of a file the way one parsed import configuration says: comment lines are
// recognised by the configured markers, delimited lines are normalised and split, and
// fixed-width lines are cut at the configured positions. The import run and the import
// dialog's preview both cut lines through it, so that a preview shows what an import reads.

#include "host/Text.h"
#include "import/ImportTxtConfiguration.h"
#include "textfile/FieldSplit.h"

#include <cstddef>
#include <cstdint>

class LineSplitter {
public:
    // Takes its own copy of the positions: they grow by one boundary per fixed-width line
    // on purpose, and each user of a configuration sees its own growth.
    explicit LineSplitter(const ImportTxtConfiguration& configuration);
    // The same from the parts of a configuration that shape a line: the delimiters in their
    // order, the comment string (each character but the separator marks a comment line),
    // the mode and the fixed-width positions.
    LineSplitter(DelimiterList delimiters, const WString& comments, bool fixedWidth, PositionList positions);

    // Only the first fieldCount fields are read by the caller (0: none, so nothing is cut;
    // SIZE_MAX, the default: all). Fields up to that count are cut as a full cut would.
    void ReadFieldsUpTo(std::size_t fieldCount) { fieldsRead_ = fieldCount; }

    // True when the line is a comment line and carries no fields.
    bool IsComment(const WString& line) const { return IsCommentLine(line, markers_); }

    // Cuts a non-comment line into fields, rewriting a delimited line in place, and returns
    // the number of fields the line has (a fixed-width line may have more than were cut; a
    // delimited line's fields behind those read are neither cut nor counted).
    std::size_t Split(WString& line, FieldList& fields);

    // Trims the end that a delimited line loses before it is cut (line feeds, carriage
    // returns, one separator, then the delimiters' characters), leaving the line uncut.
    void TrimLineEnd(WString& line) const { TrimDelimitedLineEnd(line, delimiters_); }

private:
    DelimiterList delimiters_;
    WString markers_;
    bool fixedWidth_;
    PositionList positions_;
    std::size_t fieldsRead_ = SIZE_MAX;
};
