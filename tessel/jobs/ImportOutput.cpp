#include "tessel/jobs/ImportOutput.h"

#include "tessel/gis/FlatGeobufWriter.h"
#include "tessel/gis/GdalOutput.h"
#include "tessel/jobs/OutputFile.h"

#include <stdexcept>

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

std::unique_ptr<RecordWriter> MakeRecordWriter(OutputFormat format, TextSink& sink, const std::string& name)
{
    switch (format) {
    case OutputFormat::GeoJson: return MakeGeoJsonWriter(sink);
    case OutputFormat::Csv: return MakeCsvWriter(sink);
    case OutputFormat::JsonLines: return MakeJsonLinesWriter(sink);
    case OutputFormat::FlatGeobuf: return MakeFlatGeobufWriter(sink, name);
    case OutputFormat::GeoPackage:
    case OutputFormat::Shapefile: break;
    }
    throw std::logic_error("GeoPackage and Shapefile are written through GDAL");
}

} // namespace tessel
