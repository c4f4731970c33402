#include "import/ImportTargets.h"

#include "host/GisUtility.h"

using VeltoGis::CModuleConfiguration;
using VeltoGis::ImportExport::CDataBindCollection;
using VeltoGis::ImportExport::CImportDefinition;
using VeltoGis::ImportExport::TargetIdList;

namespace {

constexpr unsigned MsgCoordinatesNotBound = 8481;
constexpr unsigned MsgEntityNameNotBound = 8482;
constexpr unsigned MsgNodeNamesNotBound = 9001;

bool AreBound(CDataBindCollection* binds, const WChar* first, const WChar* second)
{
    return IsTargetBound(binds, first) && IsTargetBound(binds, second);
}

int Fail(WString& message, unsigned messageId)
{
    message = CModuleConfiguration::Instance()->GetMsg(messageId);
    return 0;
}

int Require(bool bound, WString& message, unsigned messageId)
{
    return bound ? 1 : Fail(message, messageId);
}

} // namespace

bool IsTargetBound(CDataBindCollection* binds, const WChar* targetId)
{
    if (!binds)
        return false;
    const auto bind = binds->GetDataBindByTargetDataId(targetId);
    return bind && !bind->GetSourceDataId().empty();
}

void AppendRequiredTargetIds(const CImportDefinition* definition, TargetIdList& ids)
{
    if (!definition)
        return;
    if (definition->GetImportDataOnly()) {
        ids.emplace_back(ImportTarget::EntityName);
    } else if (definition->GetEntityType() == VeltoGis::EntityTypePoint) {
        ids.emplace_back(ImportTarget::NodeCoordinateX);
        ids.emplace_back(ImportTarget::NodeCoordinateY);
    } else if (definition->GetEntityType() == VeltoGis::EntityTypeNodeXY) {
        ids.emplace_back(ImportTarget::NodeX);
        ids.emplace_back(ImportTarget::NodeY);
    }
}

void AppendExcludedTargetIds(const CImportDefinition* definition, TargetIdList& ids)
{
    if (!definition || !definition->GetImportDataOnly())
        return;
    for (const WChar* id : {ImportTarget::NodeX, ImportTarget::NodeY, ImportTarget::NodeStart, ImportTarget::NodeEnd,
                            ImportTarget::NodeCoordinateX, ImportTarget::NodeCoordinateY})
        ids.emplace_back(id);
}

int ValidateImportBinds(const CImportDefinition* definition, WString& message)
{
    if (!definition)
        return 0;
    const auto primary = definition->GetDBCollection();
    const bool dataOnly = definition->GetImportDataOnly() != 0;
    const bool entityNameBound = IsTargetBound(primary.get(), ImportTarget::EntityName);

    switch (definition->GetEntityType()) {
    case VeltoGis::EntityTypePoint:
        if (dataOnly)
            return Require(entityNameBound, message, MsgEntityNameNotBound);
        return Require(AreBound(primary.get(), ImportTarget::NodeCoordinateX, ImportTarget::NodeCoordinateY), message,
                       MsgCoordinatesNotBound);
    case VeltoGis::EntityTypeNodeXY:
        if (dataOnly)
            return Require(entityNameBound, message, MsgEntityNameNotBound);
        return Require(AreBound(primary.get(), ImportTarget::NodeX, ImportTarget::NodeY), message,
                       MsgCoordinatesNotBound);
    case VeltoGis::EntityTypeLine:
        if (dataOnly)
            return Require(entityNameBound, message, MsgEntityNameNotBound);
        if (!definition->GetImportSectionNodes())
            return Require(AreBound(primary.get(), ImportTarget::NodeStart, ImportTarget::NodeEnd), message,
                           MsgNodeNamesNotBound);
        // The section nodes come from the secondary file, so its binds must place them.
        return Require(AreBound(definition->GetDBCollectionNode().get(), ImportTarget::NodeCoordinateX,
                                ImportTarget::NodeCoordinateY),
                       message, MsgCoordinatesNotBound);
    case VeltoGis::EntityTypePolygon:
        if (dataOnly)
            return Require(entityNameBound, message, MsgEntityNameNotBound);
        // Deliberately refused without a message; the host expects exactly this answer.
        return 0;
    default:
        return 0;
    }
}
