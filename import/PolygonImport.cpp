#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"

using namespace VeltoGis::ImportExport;

int ImportBuilders::ImportPolygons(CImportDefinition& definition, ImpexEntityList& entities)
{
    return RunBuilder<EntityBuilder<CImpexPolygon>>(definition, PolygonSides(definition), entities, PolygonRoleOf);
}
