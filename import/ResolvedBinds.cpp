#include "import/ResolvedBinds.h"

#include <algorithm>

ResolvedBinds::ResolvedBinds(const boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>& binds,
                             ImportRun& run, RoleOfTarget roleOf)
    : collection_(binds)
{
    int highestColumnNo = -1;
    if (binds) {
        for (const auto& bind : binds->GetDataBindCollection()) {
            if (!bind)
                continue;
            const BindRole role = roleOf(bind->GetTargetDataId());
            if (role == BindRole::LeftOut)
                continue;
            const CColumnData* column = FindColumn(run.Columns(), bind->GetSourceDataId());
            binds_.push_back({bind.get(), role, column});
            if (column) {
                run.ConvertsColumn(*column);
                ++valueCount_;
                highestColumnNo = std::max(highestColumnNo, column->GetNo());
            }
        }
    }
    run.ReadColumnsUpTo(highestColumnNo);
}
