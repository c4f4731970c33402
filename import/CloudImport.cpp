#include "import/ImportBuilders.h"
#include "import/ImportRun.h"
#include "import/ImportSides.h"
#include "import/PointCoordinates.h"
#include "import/ResolvedBinds.h"

using namespace VeltoGis::ImportExport;

namespace {

// Keeps nothing per line but the two coordinates; every point goes to the cloud at once.
class CloudBuilder final : public ImportLineSink {
public:
    CloudBuilder(ImportRun& run, const boost::shared_ptr<CDataBindCollection>& binds, CCloud& cloud)
        : run_(run), binds_(binds, run, CloudRoleOf), cloud_(cloud)
    {
    }

    void ImportLine(LineFields& fields) override
    {
        PointCoordinates point;
        for (const ResolvedBind& bind : binds_) {
            if (const WString* field = bind.Field(fields))
                point.Take(bind.role, *field);
        }
        if (point.Complete())
            cloud_.AddPoint(point.x, point.y);
        else
            run_.SkipLine(TxtImport::SkipWithoutPosition);
    }

private:
    ImportRun& run_;
    ResolvedBinds binds_;
    CCloud& cloud_;
};

} // namespace

int ImportBuilders::ImportCloud(CImportDefinition& definition, CCloud& cloud)
{
    return RunBuilder<CloudBuilder>(definition, CloudSides(definition), cloud);
}
