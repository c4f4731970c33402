#include "import/EntityBuilder.h"
#include "import/ImportBuilders.h"
#include "import/ImportSides.h"
#include "import/PointCoordinates.h"

using namespace VeltoGis::ImportExport;

namespace {

class PointBuilder final : public EntityBuilder<CImpexPoint> {
public:
    PointBuilder(ImportRun& run, const boost::shared_ptr<CDataBindCollection>& binds, ImpexEntityList& entities,
                 CLq* filter)
        : EntityBuilder(run, binds, entities, PointRoleOf), run_(run), filter_(filter)
    {
    }

private:
    bool TakeField(CImpexPoint& point, const ResolvedBind& bind, const WString& field) override
    {
        AddCoordinateValue(Values(), point, bind, field, coordinates_.Take(bind.role, field));
        return true;
    }

    bool Finish(CImpexPoint& point) override
    {
        if (coordinates_.Complete())
            point.SetPosition(AcGePoint3d(coordinates_.x, coordinates_.y, 0.0));
        // Unset coordinates are tested as 0.0, also when the point has no position.
        const bool keep = !filter_ || filter_->CheckPoint(coordinates_.x, coordinates_.y);
        coordinates_ = PointCoordinates();
        if (!keep)
            run_.SkipLine(TxtImport::SkipOutsideFilter);
        return keep;
    }

    ImportRun& run_;
    CLq* filter_;
    PointCoordinates coordinates_;
};

} // namespace

int ImportBuilders::ImportPoints(CImportDefinition& definition, ImpexEntityList& entities, int secondary, CLq* filter)
{
    return RunBuilder<PointBuilder>(definition, PointSides(secondary), entities, filter);
}
