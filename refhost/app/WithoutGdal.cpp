// tessel built without GDAL (the Windows build, where no GDAL comes with the cross compiler):
// the formats tessel writes itself work as everywhere (FlatGeobuf among them); GeoPackage,
// Shapefile, reading GIS datasets and coordinate systems say that this build has none.

#include "refhost/app/AppError.h"
#include "refhost/app/CoordinateSystem.h"
#include "refhost/app/GdalInput.h"
#include "refhost/app/GdalOutput.h"

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

} // namespace tessel
