#include "import/ImportBuilders.h"
#include "import/ImportSides.h"
#include "import/ImportRun.h"
#include "import/ImportTargets.h"
#include "import/ResolvedBinds.h"

#include "host/GisUtility.h"

using namespace VeltoGis::ImportExport;
using VeltoGis::Utility::CUtility;

namespace {

enum CloudRole { Ignored = -1, SetsX, SetsY };

// The point builder's coordinate targets; every other bind is passed over without even
// looking up its column.
int CloudRoleOf(const WString& target)
{
    switch (PointAxisOf(target)) {
    case PointAxis::X:
        return SetsX;
    case PointAxis::Y:
        return SetsY;
    case PointAxis::None:
        break;
    }
    return Ignored;
}

// Keeps nothing per line but the two coordinates; every point goes to the cloud at once.
class CloudBuilder final : public ImportLineSink {
public:
    CloudBuilder(const boost::shared_ptr<CDataBindCollection>& binds, ImportRun& run, CCloud& cloud)
        : bindCollection_(binds), binds_(binds.get(), run.Columns(), CloudRoleOf), cloud_(cloud)
    {
        run.ReadColumnsUpTo(binds_.HighestColumnNo());
    }

    void ImportLine(LineFields& fields) override
    {
        double x = 0.0, y = 0.0;
        bool xSet = false, ySet = false;
        for (const ResolvedBind& bind : binds_) {
            const WString* field = bind.Field(fields);
            if (!field)
                continue;
            if (bind.role == SetsX) {
                x = CUtility::AtoF(field->c_str());
                xSet = true;
            } else {
                y = CUtility::AtoF(field->c_str());
                ySet = true;
            }
        }
        if (xSet && ySet)
            cloud_.AddPoint(x, y);
    }

private:
    boost::shared_ptr<CDataBindCollection> bindCollection_;
    ResolvedBinds binds_;
    CCloud& cloud_;
};

} // namespace

int ImportBuilders::ImportCloud(CImportDefinition& definition, CCloud& cloud)
{
    const ImportSides sides = CloudSides(definition);
    ImportRun run(ConfigurationOf(definition, sides));
    CloudBuilder builder(BindsOf(definition, sides), run, cloud);
    return run.Run(builder, MessageId::ImportProgress);
}
