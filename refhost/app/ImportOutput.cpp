#include "refhost/app/ImportOutput.h"

#include "refhost/app/GdalOutput.h"
#include "refhost/app/OutputFile.h"

namespace tessel {

std::unique_ptr<ImportOutput> MakeImportOutput(const std::string& path, OutputFormat format)
{
    switch (format) {
    case OutputFormat::GeoPackage:
    case OutputFormat::Shapefile: return MakeGdalOutput(path, format);
    case OutputFormat::JsonLines:
    case OutputFormat::GeoJson:
    case OutputFormat::Csv:
    case OutputFormat::FlatGeobuf: break;
    }
    return std::make_unique<OutputFile>(path, format);
}

} // namespace tessel
