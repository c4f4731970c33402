#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"

using namespace VeltoGis::ImportExport;

namespace {

class PolygonBuilder final : public EntityBuilder<CImpexPolygon> {
public:
    PolygonBuilder(ImportRun& run, const boost::shared_ptr<CDataBindCollection>& binds, ImpexEntityList& entities)
        : EntityBuilder(run, binds, entities, PolygonRoleOf)
    {
    }

private:
    bool TakeField(CImpexPolygon&, const ResolvedBind&, const WString&) override { return false; }
    bool Finish(CImpexPolygon&) override { return true; }
};

} // namespace

int ImportBuilders::ImportPolygons(CImportDefinition& definition, ImpexEntityList& entities)
{
    return RunBuilder<PolygonBuilder>(definition, PolygonSides(definition), entities);
}
