#include "host/ImpexData.h"

namespace VeltoGis {
namespace ImportExport {

CDataBind::CDataBind() = default;

CDataBind::CDataBind(const WChar* sourceDataId, const WChar* targetDataId)
{
    SetSourceDataId(sourceDataId);
    SetTargetDataId(targetDataId);
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

void CDataBind::SetSourceDataId(const WChar* id) { sourceId_.assign(id ? id : WTEXT("")); }

void CDataBind::SetTargetDataId(const WChar* id) { targetId_.assign(id ? id : WTEXT("")); }

void CDataBind::SetSourceDataDefinition(boost::shared_ptr<CDataDefinition> definition)
{
    sourceDefinition_ = std::move(definition);
}

void CDataBind::SetImportTransform(Transform transform) { importTransform_ = std::move(transform); }

void CDataBind::SetExportTransform(Transform transform) { exportTransform_ = std::move(transform); }

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
