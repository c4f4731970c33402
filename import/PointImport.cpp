#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"
#include "import/ImportTargets.h"

#include "host/GisUtility.h"

using namespace VeltoGis::ImportExport;
using VeltoGis::Utility::CUtility;

namespace {

enum PointRole { SetsX = FirstOwnRole, SetsY };

int PointRoleOf(const WString& target)
{
    switch (PointAxisOf(target)) {
    case PointAxis::X:
        return SetsX;
    case PointAxis::Y:
        return SetsY;
    case PointAxis::None:
        break;
    }
    return target == ImportTarget::EntityName ? NameRole : AttributeRole;
}

class PointBuilder final : public EntityBuilder<CImpexPoint> {
public:
    PointBuilder(const boost::shared_ptr<CDataBindCollection>& binds, ImportRun& run, ImpexEntityList& entities,
                 CLq* filter)
        : EntityBuilder(binds, run, entities, PointRoleOf), filter_(filter)
    {
    }

private:
    bool TakeField(CImpexPoint& point, const ResolvedBind& bind, const WString& field) override
    {
        const double coordinate = CUtility::AtoF(field.c_str());
        (bind.role == SetsX ? x_ : y_) = coordinate;
        (bind.role == SetsX ? xSet_ : ySet_) = true;
        AddCoordinateValue(Values(), point, bind, field, coordinate);
        return true;
    }

    bool Finish(CImpexPoint& point) override
    {
        if (xSet_ && ySet_)
            point.SetPosition(AcGePoint3d(x_, y_, 0.0));
        // Unset coordinates are tested as 0.0, also when the point has no position.
        const bool keep = !filter_ || filter_->CheckPoint(x_, y_);
        x_ = y_ = 0.0;
        xSet_ = ySet_ = false;
        return keep;
    }

    CLq* filter_;
    double x_ = 0.0, y_ = 0.0;
    bool xSet_ = false, ySet_ = false;
};

} // namespace

int ImportBuilders::ImportPoints(CImportDefinition& definition, ImpexEntityList& entities, int secondary, CLq* filter)
{
    const ImportSides sides = PointSides(secondary);
    ImportRun run(ConfigurationOf(definition, sides));
    PointBuilder builder(BindsOf(definition, sides), run, entities, filter);
    return run.Run(builder, MessageId::ImportProgress);
}
