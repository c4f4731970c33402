// The entity data writer: each entity carries its values in bind order.

#include "export/EntityExport.h"
#include "export/ExportSides.h"
#include "export/ExportEngine_Txt.h"

namespace {

// Column i is the entity's i-th value; an entity with fewer values leaves the field empty.
class EntityValues final : public ImpexEntityValues {
public:
    using ImpexEntityValues::ImpexEntityValues;

    bool CanServe(const ExportBindList&) const override { return true; }
    VeltoGis::Data::CDataBox* ValueOf(std::size_t entity, std::size_t column,
                                            const VeltoGis::ImportExport::CDataBind*) override
    {
        VeltoGis::ImportExport::DataValueList* values = ValuesOf(entity);
        return values && column < values->size() ? (*values)[column].get() : nullptr;
    }
};

} // namespace

int CExportEngine_Txt::ExportPoints(CExportDefinition* definition, ImpexEntityList& entities)
{
    EntityValues source(entities);
    return RunEntityExport(definition, kPointWriterType, source);
}
