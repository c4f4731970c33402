// tessel built without GDAL (the Windows build, where no GDAL comes with the cross compiler):
// the formats tessel writes itself work as everywhere (FlatGeobuf among them); GeoPackage,
// Shapefile, reading GIS datasets and coordinate systems say that this build has none.

#include "tessel/core/AppError.h"
#include "tessel/gis/AreaOfUse.h"
#include "tessel/gis/CoordinateSystem.h"
#include "tessel/gis/GdalInput.h"
#include "tessel/gis/GdalOutput.h"

namespace tessel {
namespace {

const char kWithoutGdal[] = "this tessel is built without GDAL, which GIS datasets and coordinate systems need";

} // namespace

std::unique_ptr<ImportOutput> MakeGdalOutput(const std::string&, OutputFormat)
{
    throw UsageError(std::string("--format: ") + kWithoutGdal);
}

ExportInput ReadGdalInput(const std::string& path, const std::optional<std::string>&)
{
    throw UsageError("'" + path + "': " + kWithoutGdal);
}

std::shared_ptr<const CoordinateSystem> CoordinateSystem::Parse(const std::string&)
{
    throw UsageError(std::string("--crs: ") + kWithoutGdal);
}

// No coordinate system can be made without GDAL (Parse refuses), so none has an area of use.
std::function<bool(double x, double y)> AreaOfUseTest(const CoordinateSystem&) { return {}; }

} // namespace tessel
