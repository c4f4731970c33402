#pragma once
// Composes the lines of an export file and writes each as text plus a line feed (which the
// text file turns into CR LF). Values are written as they stand: no quoting, no escaping, so
// a value holding the delimiter or a line feed breaks its line's columns.

#include "export/EntityExport.h"
#include "host/GisData.h"
#include "host/Text.h"

class TextFile;

class DelimitedLineWriter {
public:
    DelimitedLineWriter(TextFile& file, WString delimiter);

    // The comment text directly followed by the target id of every bind, delimited; an empty
    // bind gives no id but keeps its delimiter. Each Write… is false when the file took
    // not all of the line.
    bool WriteHeader(const WString& comment, const ExportBindList& binds);
    // One field per bind: the source's value, transformed for export by its bind in place
    // (as the framework expects of an export), or nothing when there is no value or it is null.
    bool WriteEntity(ExportValueSource& source, std::size_t entity, const ExportBindList& binds);

private:
    void AppendValue(VeltoGis::Data::CDataBox* value, VeltoGis::ImportExport::CDataBind* bind);
    bool WriteLine();

    TextFile& file_;
    const WString delimiter_;
    // Kept between lines so that its capacity is reused.
    WString line_;
};
