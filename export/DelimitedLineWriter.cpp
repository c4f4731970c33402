#include "export/DelimitedLineWriter.h"

#include "textfile/TextFile.h"

#include <utility>

using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::CDataBind;

DelimitedLineWriter::DelimitedLineWriter(TextFile& file, WString delimiter)
    : file_(file), delimiter_(std::move(delimiter))
{
}

bool DelimitedLineWriter::WriteHeader(const WString& comment, const ExportBindList& binds)
{
    line_ = comment;
    for (std::size_t column = 0; column < binds.size(); ++column) {
        if (column > 0)
            line_ += delimiter_;
        if (binds[column])
            line_ += binds[column]->GetTargetDataId();
    }
    return WriteLine();
}

bool DelimitedLineWriter::WriteEntity(ExportValueSource& source, std::size_t entity, const ExportBindList& binds)
{
    line_.clear();
    for (std::size_t column = 0; column < binds.size(); ++column) {
        if (column > 0)
            line_ += delimiter_;
        CDataBind* bind = binds[column].get();
        AppendValue(source.ValueOf(entity, column, bind), bind);
    }
    return WriteLine();
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

bool DelimitedLineWriter::WriteLine()
{
    return file_.WriteString(nullptr, line_.c_str()) == TextFileResult::Ok &&
           file_.WriteChar(nullptr, '\n') == TextFileResult::Ok;
}
