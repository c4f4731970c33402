// The topology data writer: values are read from the drawing's entities through each bind's
// source definition.

#include "export/EntityExport.h"
#include "export/ExportSides.h"
#include "export/ExportEngine_Txt.h"
#include "host/GisSystem.h"

using VeltoGis::Data::CDataBox;
using VeltoGis::Data::CDataRW;
using VeltoGis::ImportExport::CDataBind;
using VeltoGis::System::CGisSystem;
using VeltoGis::System::CSystemManager;
using VeltoGis::Topology::CEntity;
using VeltoGis::Topology::CEntityContainer;

namespace {

// Column i is what CDataRW::Read finds for bind i's source field; a field it does not find
// stays null and gives an empty field.
class DrawingValues final : public ExportValueSource {
public:
    explicit DrawingValues(CEntityContainer* container)
        : entities_(container ? &container->GetEntities() : nullptr),
          system_(CSystemManager::Instance()->GetActiveSystem())
    {
    }

    std::size_t EntityCount() const override { return entities_ ? entities_->size() : 0; }
    bool CanServe(const ExportBindList& binds) const override { return EveryBindHasSource(binds); }
    CDataBox* ValueOf(std::size_t entity, std::size_t, const CDataBind* bind) override
    {
        value_ = CDataBox();
        if (CEntity* item = (*entities_)[entity].get())
            CDataRW::Read(bind->GetSourceDataDefinition(), item, value_, 0, system_);
        return &value_;
    }

private:
    std::vector<boost::shared_ptr<CEntity>>* entities_;
    CGisSystem* system_; // the active system when the export began
    CDataBox value_;
};

} // namespace

int CExportEngine_Txt::ExportLines(CExportDefinition* definition, boost::shared_ptr<CEntityContainer> entities)
{
    if (!definition)
        return 0;
    DrawingValues source(entities.get());
    return RunEntityExport(definition, kLineWriterType, source);
}
