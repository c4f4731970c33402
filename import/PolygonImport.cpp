#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
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

// Always the primary configuration; with section nodes on, its columns are matched against
// the secondary binds. Required as it stands.
int ImportBuilders::ImportPolygons(CImportDefinition& definition, ImpexEntityList& entities)
{
    ImportRun run(definition.GetImporterConfiguration());
    PolygonBuilder builder(definition.GetImportSectionNodes() ? definition.GetDBCollectionNode()
                                                              : definition.GetDBCollection(),
                           run, entities);
    return run.Run(builder, MessageId::ImportProgress);
}
