#pragma once
// An import written as a GIS dataset through GDAL: GeoPackage or ESRI Shapefile.
// The dataset is made in a temporary folder beside the target and its files are renamed into
// the target's folder when it is complete; a Shapefile's side files that the new dataset does
// not have (an old .prj) go with the old target.

#include "tessel/jobs/ImportOutput.h"

#include "tessel/gis/SpatialIndexes.h"

#include <string>
#include <vector>

class GDALDataset;

namespace tessel {

// A GIS dataset of that format at the path. Where tessel is built without GDAL, a usage
// AppError saying so.
std::unique_ptr<ImportOutput> MakeGdalOutput(const std::string& path, OutputFormat format);

class GdalOutput final : public ImportOutput {
public:
    GdalOutput(std::string path, OutputFormat format);
    ~GdalOutput() override;
    GdalOutput(const GdalOutput&) = delete;
    GdalOutput& operator=(const GdalOutput&) = delete;

    void Open() override;
    std::unique_ptr<RecordWriter> MakeWriter() override;
    void Commit() override;
    std::string DisplayName() const override { return "'" + path_ + "'"; }

    // A point layer's spatial index, built once the dataset is closed.
    struct PendingIndex {
        bool wanted = false;
        std::string table, geometryColumn, fidColumn;
        std::vector<IndexedPoint> points;
    };

private:
    void Discard();

    std::string path_;
    OutputFormat format_;
    std::string folder_;      // the temporary folder, while it exists
    std::string datasetPath_; // the dataset's main file in it
    PendingIndex index_;
    GDALDataset* dataset_ = nullptr;
};

} // namespace tessel
