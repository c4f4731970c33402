#include "import/FieldValues.h"

#include "host/GisUtility.h"
#include "host/WideText.h"

#include <boost/make_shared.hpp>
#include <stdexcept>

using VeltoGis::Data::CDataBox;

const CColumnData* FindColumn(const ImportTxtConfiguration::ColumnList& columns, const WString& sourceId)
{
    for (const auto& column : columns) {
        if (column && column->GetName() == sourceId)
            return column.get();
    }
    return nullptr;
}

void ThrowNegativeColumn()
{
    throw std::invalid_argument("import column with a negative number");
}

void SetValueByType(CDataBox& value, const WString& text, int type)
{
    switch (type) {
    case kColumnReal:
        value.SetValue(VeltoGis::Utility::CUtility::AtoF(text.c_str()));
        break;
    case kColumnText:
        value.SetValue(text.c_str());
        break;
    case kColumnInteger:
        value.SetValue(WideToInt(text));
        break;
    default:
        break;
    }
}
