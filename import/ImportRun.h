#pragma once
// The run that every import builder shares: parse the configuration, open and count the
// file, drive the progress bar, skip comment lines and the configuration's header lines,
// split each remaining line and hand its fields to the builder, and keep the account of
// what did not convert. A builder supplies only what one line becomes.

#include "host/Messages.h"
#include "host/Text.h"
#include "import/ImportAccount.h"
#include "import/ImportSides.h"
#include "import/ImportTxtConfiguration.h"
#include "import/LineSplitter.h"
#include "import/ValueFactory.h"
#include "textfile/FieldSplit.h"

#include <cstddef>
#include <cstdint>
#include <utility>

// The fields of one line. In fixed-width mode only the fields up to the highest column that
// the builder reads are cut; for those columns Has and Text answer as a full cut would.
class LineFields {
public:
    // True when the line has a field with that (non-negative) column number.
    bool Has(int no) const { return no >= 0 && static_cast<std::size_t>(no) < count_; }
    const WString& Text(int no) const { return fields_[static_cast<std::size_t>(no)]; }
    // The field itself, for builders that rewrite it in place (the upper-cased key).
    WString& MutableText(int no) { return fields_[static_cast<std::size_t>(no)]; }

private:
    friend class ImportRun;
    FieldList fields_;
    std::size_t count_ = 0;
};

// What a builder does with one non-comment line.
class ImportLineSink {
public:
    // Told the number of lines the file holds (comments included) before the first line.
    virtual void ExpectLines(std::uint64_t lineCount) { (void)lineCount; }
    virtual void ImportLine(LineFields& fields) = 0;

protected:
    ~ImportLineSink() = default;
};


class ImportRun {
public:
    // Parses the configuration; text that does not parse leaves the defaults (no file).
    explicit ImportRun(const WString& configurationXml);
    ImportRun(const ImportRun&) = delete;
    ImportRun& operator=(const ImportRun&) = delete;

    const ImportTxtConfiguration::ColumnList& Columns() const { return configuration_.GetColumns(); }

    // Declares the highest column number that the builder will read (-1: none), so that
    // fixed-width lines are cut only that far and lines without any read field not at all.
    void ReadColumnsUpTo(int highestColumnNo);
    // Declares a column whose values the builder converts by its type: the account counts
    // those that do not convert.
    void ConvertsColumn(const CColumnData& column) { account_.CheckColumn(column); }

    // Called by the builder while it is handed a line that gives no record: the account
    // lists the line with the reason, and does not check its values.
    void SkipLine(TxtImport::enmSkipReason reason);

    // Reads the configured file, handing every non-comment line to the sink but the first
    // header lines. maxLines of 1 or more stops after that many lines, comments included.
    // Returns 0 when the path is empty (silently) or the file does not open (after an alert
    // naming it), else 1; in that case the account goes to the framework once the file is
    // read. Exceptions from the sink leave the run after the file is closed and the bar hidden.
    int Run(ImportLineSink& sink, MessageId progressText, int maxLines = 0);

    // Where the run's entities, rows and values are made; they outlive the run.
    ValueFactory& Values() { return values_; }

private:
    const ImportTxtConfiguration configuration_;
    LineSplitter splitter_;
    LineFields fields_;
    ValueFactory values_;
    ImportAccount account_;
    std::uint64_t lineNumber_ = 0;
    bool lineSkipped_ = false;
};

// A builder's whole import: the run over the configuration's file with a builder made as
// Builder(run, args...). progressText and maxLines as for ImportRun::Run.
template <class Builder, class... Args>
int RunBuilder(const WString& configurationXml, MessageId progressText, int maxLines, Args&&... args)
{
    ImportRun run(configurationXml);
    Builder builder(run, std::forward<Args>(args)...);
    return run.Run(builder, progressText, maxLines);
}

// The same for a builder of a job's sides: the chosen configuration, and the chosen binds
// handed to the builder before the rest, Builder(run, binds, args...).
template <class Builder, class... Args>
int RunBuilder(const VeltoGis::ImportExport::CImportDefinition& definition, ImportSides sides, Args&&... args)
{
    return RunBuilder<Builder>(ConfigurationOf(definition, sides), MessageId::ImportProgress, 0,
                               BindsOf(definition, sides), std::forward<Args>(args)...);
}
