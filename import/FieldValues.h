#pragma once
// The column lookup and the typed value conversion shared by every builder.

#include "host/GisData.h"
#include "host/Text.h"
#include "import/ColumnData.h"
#include "import/ImportRun.h"

#include <boost/shared_ptr.hpp>

// The first column whose name equals sourceId exactly, or null when none has it.
const CColumnData* FindColumn(const ImportTxtConfiguration::ColumnList& columns, const WString& sourceId);

[[noreturn]] void ThrowNegativeColumn();

// The column's field on this line, or null when the line is too short for it (or there is
// no column). A negative column number throws std::invalid_argument.
inline const WString* ColumnField(const LineFields& fields, const CColumnData* column)
{
    if (!column)
        return nullptr;
    const int no = column->GetNo();
    if (no < 0)
        ThrowNegativeColumn();
    return fields.Has(no) ? &fields.Text(no) : nullptr;
}

// Stores text in value by type code: 5001 real (CUtility::AtoF), 5005 text, 5010 integer
// (leading digits, _wtoi style). Any other code leaves the value as it is. Empty text is
// converted like any other: 0.0, "", 0.
void SetValueByType(VeltoGis::Data::CDataBox& value, const WString& text, int type);

