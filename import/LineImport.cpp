#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"
#include "import/ImportTargets.h"

using namespace VeltoGis::ImportExport;

namespace {

enum LineRole { StartNode = FirstOwnRole, EndNode };

// The coordinate targets mean nothing here: binds to them give attribute values only.
int LineRoleOf(const WString& target)
{
    if (target == ImportTarget::NodeStart)
        return StartNode;
    if (target == ImportTarget::NodeEnd)
        return EndNode;
    return target == ImportTarget::EntityName ? NameRole : AttributeRole;
}

class LineBuilder final : public EntityBuilder<CImpexLine> {
public:
    LineBuilder(const boost::shared_ptr<CDataBindCollection>& binds, ImportRun& run, ImpexEntityList& entities)
        : EntityBuilder(binds, run, entities, LineRoleOf)
    {
    }

private:
    // Node names are the raw text, set even when empty; only the entity name is transformed.
    bool TakeField(CImpexLine& line, const ResolvedBind& bind, const WString& field) override
    {
        if (bind.role == StartNode)
            line.SetStartingNodeName(field.c_str());
        else
            line.SetEndingNodeName(field.c_str());
        return false;
    }

    bool Finish(CImpexLine&) override { return true; }
};

} // namespace

int ImportBuilders::ImportLines(CImportDefinition& definition, ImpexEntityList& entities)
{
    ImportRun run(ConfigurationOf(definition, PrimarySides()));
    LineBuilder builder(BindsOf(definition, PrimarySides()), run, entities);
    return run.Run(builder, MessageId::ImportProgress);
}
