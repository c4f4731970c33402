#include "export/DelimitedLineWriter.h"

#include "textfile/TextFile.h"

#include <utility>

using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::CDataBind;

DelimitedLineWriter::DelimitedLineWriter(TextFile& file, WString delimiter)
    : file_(file), delimiter_(std::move(delimiter))
{
}

void DelimitedLineWriter::WriteHeader(const WString& comment, const ExportBindList& binds)
{
    line_ = comment;
    for (std::size_t column = 0; column < binds.size(); ++column) {
        if (column > 0)
            line_ += delimiter_;
        if (binds[column])
            line_ += binds[column]->GetTargetDataId();
    }
    WriteLine();
}

void DelimitedLineWriter::WriteEntity(ExportValueSource& source, std::size_t entity, const ExportBindList& binds)
{
    line_.clear();
    for (std::size_t column = 0; column < binds.size(); ++column) {
        if (column > 0)
            line_ += delimiter_;
        CDataBind* bind = binds[column].get();
        AppendValue(source.ValueOf(entity, column, bind), bind);
    }
    WriteLine();
}

// An empty bind has no transform: its value is written as it stands.
void DelimitedLineWriter::AppendValue(CDataBox* value, CDataBind* bind)
{
    if (!value || !value->IsNotNull())
        return;
    if (bind)
        bind->TransformData_Export(value);
    line_ += static_cast<WString>(*value);
}

// Write errors are not reported line by line: the file keeps what the disk took.
void DelimitedLineWriter::WriteLine()
{
    file_.WriteString(nullptr, line_.c_str());
    file_.WriteChar(nullptr, '\n');
}
