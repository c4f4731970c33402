#include "host/ImpexData.h"

namespace VeltoGis {
namespace ImportExport {

CDataBind::CDataBind() = default;

CDataBind::CDataBind(const WChar* sourceDataId, const WChar* targetDataId)
    : sourceId_(sourceDataId ? sourceDataId : WTEXT("")), targetId_(targetDataId ? targetDataId : WTEXT(""))
{
}

CDataBind::~CDataBind() = default;

// Without a transform the value passes unchanged.
void CDataBind::TransformData_Import(CDataBox* value)
{
    if (value && importTransform_)
        importTransform_(*value);
}

void CDataBind::TransformData_Export(CDataBox* value)
{
    if (value && exportTransform_)
        exportTransform_(*value);
}

CDataBindCollection::CDataBindCollection() = default;
CDataBindCollection::~CDataBindCollection() = default;

boost::shared_ptr<CDataBind> CDataBindCollection::GetDataBindByTargetDataId(const WChar* targetId)
{
    if (!targetId)
        return boost::shared_ptr<CDataBind>();
    for (const auto& bind : binds_) {
        if (bind && bind->GetTargetDataId() == targetId)
            return bind;
    }
    return boost::shared_ptr<CDataBind>();
}

} // namespace ImportExport
} // namespace VeltoGis
