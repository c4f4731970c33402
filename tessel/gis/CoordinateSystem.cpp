#include "tessel/gis/CoordinateSystem.h"

#include "tessel/core/AppError.h"
#include "tessel/gis/GdalErrors.h"

#include <cpl_conv.h>
#include <ogr_spatialref.h>

#include <cstdlib>

namespace tessel {

std::shared_ptr<const CoordinateSystem> CoordinateSystem::Parse(const std::string& text)
{
    std::shared_ptr<CoordinateSystem> system(new CoordinateSystem());
    system->text_ = text;
    system->reference_ = std::make_shared<OGRSpatialReference>();
    // Coordinates are written as easting, northing whatever axis order the authority gives.
    system->reference_->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    GdalErrorCapture errors;
    if (text.empty() || system->reference_->SetFromUserInput(text.c_str()) != OGRERR_NONE)
        throw UsageError("--crs '" + text + "': not a coordinate system GDAL knows" + errors.Reason());

    OGRSpatialReference& reference = *system->reference_;
    const char* authority = reference.GetAuthorityName(nullptr);
    if (!authority || std::string(authority) != "EPSG") {
        reference.AutoIdentifyEPSG();
        authority = reference.GetAuthorityName(nullptr);
    }
    const char* code = reference.GetAuthorityCode(nullptr);
    if (authority && code && std::string(authority) == "EPSG")
        system->epsgUrn_ = std::string("urn:ogc:def:crs:EPSG::") + code;
    if (authority && code && std::atoi(code) != 0) {
        system->authorityName_ = authority;
        system->authorityCode_ = std::atoi(code);
    }
    if (const char* name = reference.GetName())
        system->name_ = name;
    char* wkt = nullptr;
    const char* const wktOptions[] = {"FORMAT=WKT2_2019", nullptr};
    if (reference.exportToWkt(&wkt, wktOptions) == OGRERR_NONE && wkt)
        system->wkt_ = wkt;
    CPLFree(wkt);
    return system;
}

} // namespace tessel
