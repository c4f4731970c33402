#include "tessel/gis/AreaOfUse.h"

#include <ogr_spatialref.h>

#include <memory>

namespace tessel {

std::function<bool(double x, double y)> AreaOfUseTest(const CoordinateSystem& crs)
{
    double west = 0.0, south = 0.0, east = 0.0, north = 0.0;
    const char* name = nullptr;
    if (!crs.Reference().GetAreaOfUse(&west, &south, &east, &north, &name))
        return {};
    auto geographic = std::make_shared<OGRSpatialReference>();
    geographic->SetWellKnownGeogCS("WGS84");
    geographic->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    std::shared_ptr<OGRCoordinateTransformation> toGeographic(
        OGRCreateCoordinateTransformation(&crs.Reference(), geographic.get()), OCTDestroyCoordinateTransformation);
    if (!toGeographic)
        return {};
    return [toGeographic, geographic, west, south, east, north](double x, double y) {
        double longitude = x, latitude = y;
        if (!toGeographic->Transform(1, &longitude, &latitude))
            return false;
        // An area across the antimeridian has its west bound east of its east bound.
        const bool insideLongitude =
            west <= east ? longitude >= west && longitude <= east : longitude >= west || longitude <= east;
        return insideLongitude && latitude >= south && latitude <= north;
    };
}

} // namespace tessel
