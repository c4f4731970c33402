#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"
#include "import/ImportTargets.h"

using namespace VeltoGis::ImportExport;

namespace {

// Only the name is reserved: coordinate and node targets are ordinary attributes.
int PolygonRoleOf(const WString& target)
{
    return target == ImportTarget::EntityName ? NameRole : AttributeRole;
}

class PolygonBuilder final : public EntityBuilder<CImpexPolygon> {
public:
    PolygonBuilder(const boost::shared_ptr<CDataBindCollection>& binds, ImportRun& run, ImpexEntityList& entities)
        : EntityBuilder(binds, run, entities, PolygonRoleOf)
    {
    }

private:
    bool TakeField(CImpexPolygon&, const ResolvedBind&, const WString&) override { return false; }
    bool Finish(CImpexPolygon&) override { return true; }
};

} // namespace

int ImportBuilders::ImportPolygons(CImportDefinition& definition, ImpexEntityList& entities)
{
    const ImportSides sides = PolygonSides(definition);
    ImportRun run(ConfigurationOf(definition, sides));
    PolygonBuilder builder(BindsOf(definition, sides), run, entities);
    return run.Run(builder, MessageId::ImportProgress);
}
