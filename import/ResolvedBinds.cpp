#include "import/ResolvedBinds.h"

#include <algorithm>

ResolvedBinds::ResolvedBinds(VeltoGis::ImportExport::CDataBindCollection* binds,
                             const ImportTxtConfiguration::ColumnList& columns, RoleOfTarget roleOf)
{
    if (!binds)
        return;
    for (const auto& bind : binds->GetDataBindCollection()) {
        if (!bind)
            continue;
        const int role = roleOf(bind->GetTargetDataId());
        if (role < 0)
            continue;
        binds_.push_back({bind.get(), role, FindColumn(columns, bind->GetSourceDataId())});
        if (binds_.back().column)
            ++valueCount_;
    }
}

int ResolvedBinds::HighestColumnNo() const
{
    int highest = -1;
    for (const ResolvedBind& resolved : binds_) {
        if (resolved.column)
            highest = std::max(highest, resolved.column->GetNo());
    }
    return highest;
}
