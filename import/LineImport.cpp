#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"

using namespace VeltoGis::ImportExport;

namespace {

class LineBuilder final : public EntityBuilder<CImpexLine> {
public:
    LineBuilder(ImportRun& run, const boost::shared_ptr<CDataBindCollection>& binds, ImpexEntityList& entities)
        : EntityBuilder(run, binds, entities, LineRoleOf)
    {
    }

private:
    // Node names are the raw text, set even when empty; only the entity name is transformed.
    bool TakeField(CImpexLine& line, const ResolvedBind& bind, const WString& field) override
    {
        if (bind.role == BindRole::StartNode)
            line.SetStartingNodeName(field.c_str());
        else
            line.SetEndingNodeName(field.c_str());
        return false;
    }
};

} // namespace

int ImportBuilders::ImportLines(CImportDefinition& definition, ImpexEntityList& entities)
{
    return RunBuilder<LineBuilder>(definition, PrimarySides(), entities);
}
