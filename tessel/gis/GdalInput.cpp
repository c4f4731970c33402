#include "tessel/gis/GdalInput.h"

#include "host/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/GdalErrors.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <climits>
#include <memory>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;

struct DatasetCloser {
    void operator()(GDALDataset* dataset) const { GDALClose(GDALDataset::ToHandle(dataset)); }
};

std::string LayerNames(GDALDataset& dataset)
{
    std::string names;
    for (int i = 0; i < dataset.GetLayerCount(); ++i)
        names += (i ? ", " : "") + std::string(dataset.GetLayer(i)->GetName());
    return names.empty() ? "none" : names;
}

OGRLayer& ChooseLayer(GDALDataset& dataset, const std::string& path, const std::optional<std::string>& name)
{
    if (name) {
        if (OGRLayer* layer = dataset.GetLayerByName(name->c_str()))
            return *layer;
        throw UsageError("--layer: no layer '" + *name + "' in '" + path + "' (layers: " + LayerNames(dataset) + ")");
    }
    if (dataset.GetLayerCount() != 1)
        throw UsageError("'" + path + "' holds " + std::to_string(dataset.GetLayerCount()) + " layers (" +
                         LayerNames(dataset) + "): choose one with --layer");
    return *dataset.GetLayer(0);
}

CDataBox FieldValue(OGRFeature& feature, int index)
{
    CDataBox value;
    if (!feature.IsFieldSetAndNotNull(index))
        return value;
    switch (feature.GetFieldDefnRef(index)->GetType()) {
    case OFTInteger:
        value.SetValue(feature.GetFieldAsInteger(index));
        break;
    case OFTInteger64: {
        const GIntBig number = feature.GetFieldAsInteger64(index);
        if (number >= INT_MIN && number <= INT_MAX)
            value.SetValue(static_cast<int>(number));
        else
            value.SetValue(static_cast<double>(number));
        break;
    }
    case OFTReal:
        value.SetValue(feature.GetFieldAsDouble(index));
        break;
    default:
        value.SetValue(FromUtf8(feature.GetFieldAsString(index)).c_str());
        break;
    }
    return value;
}

} // namespace

ExportInput ReadGdalInput(const std::string& path, const std::optional<std::string>& layerName)
{
    GDALAllRegister();
    GdalErrorCapture errors;
    std::unique_ptr<GDALDataset, DatasetCloser> dataset(
        GDALDataset::Open(path.c_str(), GDAL_OF_VECTOR | GDAL_OF_READONLY));
    if (!dataset)
        throw UsageError("'" + path + "': not a vector dataset GDAL reads" + errors.Reason());
    OGRLayer& layer = ChooseLayer(*dataset, path, layerName);

    ExportInput input;
    OGRFeatureDefn* definition = layer.GetLayerDefn();
    for (int i = 0; i < definition->GetFieldCount(); ++i)
        input.fieldNames.push_back(definition->GetFieldDefn(i)->GetNameRef());
    layer.ResetReading();
    for (auto& feature : layer) {
        InputRecord record;
        for (int i = 0; i < definition->GetFieldCount(); ++i)
            record.values.push_back(FieldValue(*feature, i));
        const OGRGeometry* geometry = feature->GetGeometryRef();
        if (geometry && wkbFlatten(geometry->getGeometryType()) == wkbPoint && !geometry->IsEmpty()) {
            const OGRPoint* point = geometry->toPoint();
            record.position = AcGePoint3d(point->getX(), point->getY(), point->Is3D() ? point->getZ() : 0.0);
        }
        input.records.push_back(std::move(record));
    }
    return input;
}

} // namespace tessel
