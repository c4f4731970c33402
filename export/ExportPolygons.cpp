// The checked entity data writer: each entity carries its values in bind order, and every
// bind must name its source.

#include "export/EntityExport.h"
#include "export/ExportSides.h"
#include "export/ExportEngine_Txt.h"

#include <stdexcept>

namespace {

// Column i is the entity's i-th value. An entity without it is the caller's error and leaves
// the export, with the text the host's own containers give it.
class CheckedEntityValues final : public ImpexEntityValues {
public:
    using ImpexEntityValues::ImpexEntityValues;

    bool CanServe(const ExportBindList& binds) const override { return EveryBindHasSource(binds); }
    VeltoGis::Data::CDataBox* ValueOf(std::size_t entity, std::size_t column,
                                            const VeltoGis::ImportExport::CDataBind*) override
    {
        VeltoGis::ImportExport::DataValueList* values = ValuesOf(entity);
        if (!values || column >= values->size())
            throw std::out_of_range("invalid vector<T> subscript");
        return (*values)[column].get();
    }
};

} // namespace

int CExportEngine_Txt::ExportPolygons(CExportDefinition* definition, ImpexEntityList& entities)
{
    CheckedEntityValues source(entities);
    return RunEntityExport(definition, kPolygonWriterType, source);
}
