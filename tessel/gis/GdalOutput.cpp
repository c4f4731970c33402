#include "tessel/gis/GdalOutput.h"

#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
#include "tessel/gis/CoordinateSystem.h"
#include "tessel/gis/GdalErrors.h"
#include "tessel/gis/SpatialIndexes.h"
#include "tessel/system/TemporaryFile.h"

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

namespace tessel {
namespace {

namespace fs = std::filesystem;
using VeltoGis::Data::CDataBox;
using VeltoGis::ImportExport::DataValueList;

// Features per transaction: large enough that committing costs nothing, small enough that the
// database's journal stays small.
constexpr int kFeaturesPerTransaction = 200000;

const char* DriverName(OutputFormat format)
{
    switch (format) {
    case OutputFormat::GeoPackage: return "GPKG";
    case OutputFormat::Shapefile: return "ESRI Shapefile";
    default: return nullptr;
    }
}

OGRFieldType OgrType(FieldType type)
{
    switch (type) {
    case FieldType::Integer: return OFTInteger;
    case FieldType::Real: return OFTReal;
    case FieldType::Text: break;
    }
    return OFTString;
}

[[noreturn]] void ThrowGdal(const std::string& path, const GdalErrorCapture& errors)
{
    const std::string reason = errors.Reason();
    throw JobError("cannot write '" + path + "'" + (reason.empty() ? ": GDAL failed" : ":" + reason));
}

class GdalRecordWriter final : public RecordWriter {
public:
    // index, when not null, collects the points for the spatial index built at the end.
    GdalRecordWriter(GDALDataset& dataset, std::string path, OutputFormat format, GdalOutput::PendingIndex* index)
        : dataset_(dataset), path_(std::move(path)), format_(format), index_(index)
    {}
    ~GdalRecordWriter() override { OGRFeature::DestroyFeature(feature_); }

    void Begin(const RecordLayout& layout) override
    {
        layout_ = layout;
        const bool points = layout.kind == RecordKind::Point || layout.kind == RecordKind::Cloud;
        const OGRSpatialReference* crs = layout.crs && points ? &layout.crs->Reference() : nullptr;
        std::vector<const char*> options;
        if (format_ == OutputFormat::Shapefile)
            options.push_back("ENCODING=UTF-8");
        if (!points)
            index_ = nullptr;
        if (index_)
            options.push_back("SPATIAL_INDEX=NO");
        options.push_back(nullptr);
        const std::string name = fs::path(path_).stem().string();
        layer_ = dataset_.CreateLayer(name.c_str(), const_cast<OGRSpatialReference*>(crs), points ? wkbPoint : wkbNone,
                                      const_cast<char**>(options.data()));
        if (!layer_)
            ThrowGdal(path_, errors_);
        if (index_) {
            index_->wanted = true;
            index_->table = layer_->GetName();
            index_->geometryColumn = layer_->GetGeometryColumn();
            index_->fidColumn = layer_->GetFIDColumn();
        }
        for (std::size_t i = 0; i < layout.fieldNames.size(); ++i) {
            OGRFieldDefn field(layout.fieldNames[i].c_str(), OgrType(FieldTypeAt(i)));
            if (layer_->CreateField(&field) != OGRERR_NONE)
                ThrowGdal(path_, errors_);
        }
        feature_ = OGRFeature::CreateFeature(layer_->GetLayerDefn());
        StartTransaction();
    }

    void Entity(const EntityRecord& entity) override
    {
        if (entity.position)
            point_.setX(entity.position->x), point_.setY(entity.position->y);
        Write(entity.values, entity.position != nullptr);
    }

    void Row(const DataValueList& values) override { Write(&values, false); }

    void CloudPoint(double x, double y) override
    {
        point_.setX(x);
        point_.setY(y);
        Write(nullptr, true);
    }

    void End() override
    {
        if (inTransaction_ && dataset_.CommitTransaction() != OGRERR_NONE)
            ThrowGdal(path_, errors_);
        inTransaction_ = false;
    }

private:
    FieldType FieldTypeAt(std::size_t index) const
    {
        return index < layout_.fieldTypes.size() ? layout_.fieldTypes[index] : FieldType::Text;
    }

    // Not every driver has transactions (Shapefile writes straight on).
    void StartTransaction() { inTransaction_ = dataset_.StartTransaction() == OGRERR_NONE; }

    void Write(const DataValueList* values, bool withPosition)
    {
        const int fields = feature_->GetFieldCount();
        for (int i = 0; i < fields; ++i) {
            const CDataBox* value = values && static_cast<std::size_t>(i) < values->size() ? (*values)[i].get() : nullptr;
            SetField(i, value);
        }
        feature_->SetGeometry(withPosition ? &point_ : nullptr);
        feature_->SetFID(OGRNullFID);
        if (layer_->CreateFeature(feature_) != OGRERR_NONE)
            ThrowGdal(path_, errors_);
        if (index_ && withPosition)
            index_->points.push_back({feature_->GetFID(), point_.getX(), point_.getY()});
        if (inTransaction_ && ++featuresInTransaction_ == kFeaturesPerTransaction) {
            if (dataset_.CommitTransaction() != OGRERR_NONE)
                ThrowGdal(path_, errors_);
            featuresInTransaction_ = 0;
            StartTransaction();
        }
    }

    void SetField(int index, const CDataBox* value)
    {
        using Kind = CDataBox::Kind;
        if (!value || refhost::KindOf(*value) == Kind::Null) {
            feature_->SetFieldNull(index);
            return;
        }
        switch (FieldTypeAt(static_cast<std::size_t>(index))) {
        case FieldType::Integer: feature_->SetField(index, refhost::IntegerOf(*value)); return;
        case FieldType::Real:
            feature_->SetField(index, refhost::KindOf(*value) == Kind::Integer ? refhost::IntegerOf(*value)
                                                                             : refhost::RealOf(*value));
            return;
        case FieldType::Text: break;
        }
        feature_->SetField(index, ToUtf8(static_cast<WString>(*value)).c_str());
    }

    GDALDataset& dataset_;
    std::string path_;
    OutputFormat format_;
    GdalOutput::PendingIndex* index_;
    RecordLayout layout_;
    OGRLayer* layer_ = nullptr;
    OGRFeature* feature_ = nullptr;
    OGRPoint point_;
    bool inTransaction_ = false;
    int featuresInTransaction_ = 0;
    GdalErrorCapture errors_;
};

// Files of the target that a new dataset replaces: the target itself and, for a Shapefile,
// its side files.
std::vector<fs::path> TargetFiles(const fs::path& target, OutputFormat format)
{
    std::vector<fs::path> files{target};
    if (format == OutputFormat::Shapefile) {
        for (const char* extension : {".shx", ".dbf", ".prj", ".cpg", ".qix", ".sbn", ".sbx"})
            files.push_back(fs::path(target).replace_extension(extension));
    }
    return files;
}

} // namespace

GdalOutput::GdalOutput(std::string path, OutputFormat format) : path_(std::move(path)), format_(format) {}

GdalOutput::~GdalOutput() { Discard(); }

void GdalOutput::Open()
{
    GDALAllRegister();
    std::error_code error;
    if (fs::is_directory(path_, error))
        ThrowCannotWrite(path_, EISDIR);
    const fs::path target(path_);
    const fs::path parent = target.has_parent_path() ? target.parent_path() : fs::path(".");
    std::string pattern = (parent / ("." + target.filename().string() + ".tessel-XXXXXX")).string();
    if (!mkdtemp(pattern.data()))
        ThrowCannotWrite(path_, errno);
    folder_ = pattern;

    GdalErrorCapture errors;
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(DriverName(format_));
    if (!driver)
        throw JobError(std::string("cannot write '") + path_ + "': this GDAL has no " + DriverName(format_) + " driver");
    // The dataset is a temporary file until it is complete, so the database need not keep a
    // journal or wait for the disk on every commit.
    CPLSetThreadLocalConfigOption("OGR_SQLITE_SYNCHRONOUS", "OFF");
    CPLSetThreadLocalConfigOption("OGR_SQLITE_JOURNAL", "OFF");
    datasetPath_ = (fs::path(folder_) / target.filename()).string();
    dataset_ = driver->Create(datasetPath_.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    if (!dataset_)
        ThrowGdal(path_, errors);
}

std::unique_ptr<RecordWriter> GdalOutput::MakeWriter()
{
    return std::make_unique<GdalRecordWriter>(*dataset_, path_, format_,
                                              format_ == OutputFormat::Shapefile ? nullptr : &index_);
}

void GdalOutput::Commit()
{
    {
        GdalErrorCapture errors;
        CPLErrorReset();
        // Closing writes what the drivers keep to the end: the spatial index, the headers.
        GDALClose(GDALDataset::ToHandle(dataset_));
        dataset_ = nullptr;
        if (CPLGetLastErrorType() >= CE_Failure)
            ThrowGdal(path_, errors);
    }
    if (index_.wanted && format_ == OutputFormat::GeoPackage)
        AddGpkgSpatialIndex(datasetPath_, index_.table, index_.geometryColumn, index_.fidColumn,
                            std::move(index_.points));
    const fs::path target(path_);
    std::error_code error;
    for (const fs::path& old : TargetFiles(target, format_)) {
        if (!fs::exists(fs::path(folder_) / old.filename(), error))
            fs::remove(old, error);
    }
    for (const auto& entry : fs::directory_iterator(folder_)) {
        fs::rename(entry.path(), target.parent_path() / entry.path().filename(), error);
        if (error)
            ThrowCannotWrite(path_, error.value());
    }
    Discard();
}

void GdalOutput::Discard()
{
    if (dataset_) {
        GDALClose(GDALDataset::ToHandle(dataset_));
        dataset_ = nullptr;
    }
    if (!folder_.empty()) {
        std::error_code error;
        fs::remove_all(folder_, error);
        folder_.clear();
    }
}

std::unique_ptr<ImportOutput> MakeGdalOutput(const std::string& path, OutputFormat format)
{
    return std::make_unique<GdalOutput>(path, format);
}

} // namespace tessel
