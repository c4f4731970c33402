#include "tessel/jobs/ImportJob.h"

#include "host/GisUtility.h"
#include "host/Utf8.h"
#include "import/ImportSides.h"
#include "import/ImportTargets.h"
#include "import/ImportTxtConfiguration.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
#include "tessel/core/OptionSyntax.h"
#include "tessel/jobs/BindTransforms.h"
#include "tessel/jobs/ConfigDraft.h"
#include "tessel/jobs/EnginePaths.h"
#include "tessel/jobs/Warnings.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace tessel {
namespace {

using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;

bool StartsWith(const std::string& text, const char* prefix) { return text.rfind(prefix, 0) == 0; }

// Targets that look reserved but are none are typing errors, not attribute names.
void CheckTarget(const std::string& target, const char* option)
{
    if (!StartsWith(target, "NODE_") && !StartsWith(target, "ENTITY_"))
        return;
    std::string known;
    for (const WChar* reserved : ImportTarget::kAll) {
        const std::string name = ToUtf8(reserved);
        if (target == name)
            return;
        known += (known.empty() ? "" : ", ") + name;
    }
    throw UsageError(std::string(option) + ": unknown reserved target '" + target + "' (reserved: " + known + ")");
}

std::string NamesOf(const DataDefinitionList& definitions)
{
    std::string names;
    for (const auto& definition : definitions)
        names += (names.empty() ? "" : ", ") + ToUtf8(definition->GetDataID());
    return names.empty() ? "none" : names;
}

CDataBox KeyValueBox(const ImportRequest& request)
{
    CDataBox value;
    double real = 0.0;
    int integer = 0;
    switch (request.keyValueType) {
    case KeyValueType::Text: value.SetValue(FromUtf8(request.keyValue).c_str()); break;
    case KeyValueType::Real:
        ParseDouble(request.keyValue, real); // checked when the option was read
        value.SetValue(real);
        break;
    case KeyValueType::Integer:
        ParseInt(request.keyValue, integer);
        value.SetValue(integer);
        break;
    case KeyValueType::Null: break;
    }
    return value;
}

// A stored configuration with --header-lines in place of its own; unchanged without it.
WString WithHeaderLines(const WString& configuration, std::optional<int> headerLines)
{
    ImportTxtConfiguration record;
    if (!headerLines || record.Parse(configuration.c_str()) != 1)
        return configuration;
    record.SetHeaderLines(*headerLines);
    return record.ToXml();
}

RecordKind RecordKindOf(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Points: return RecordKind::Point;
    case ImportKind::Lines: return RecordKind::Line;
    case ImportKind::Polygons: return RecordKind::Polygon;
    case ImportKind::Table: return RecordKind::Row;
    case ImportKind::Cloud: break;
    }
    return RecordKind::Cloud;
}

} // namespace

int DefaultEntityType(ImportKind kind)
{
    switch (kind) {
    case ImportKind::Lines: return VeltoGis::EntityTypeLine;
    case ImportKind::Polygons: return VeltoGis::EntityTypePolygon;
    case ImportKind::Table: return VeltoGis::EntityTypeNone;
    case ImportKind::Points:
    case ImportKind::Cloud: break;
    }
    return VeltoGis::EntityTypePoint;
}

// The sides the builder of this kind reads, by the module's own rules (the job's options
// are set on the definition before this is asked).
ImportSides ImportJob::Sides() const
{
    switch (request_.kind) {
    case ImportKind::Points: return PointSides(request_.secondary ? 1 : 0);
    case ImportKind::Polygons: return PolygonSides(definition_);
    case ImportKind::Cloud: return CloudSides(definition_);
    case ImportKind::Lines:
    case ImportKind::Table: break;
    }
    return PrimarySides();
}

void ImportJob::Build(unsigned codePage)
{
    refhost::SetEntityType(definition_, static_cast<VeltoGis::enmEntityType>(
                                            request_.entityType.value_or(DefaultEntityType(request_.kind))));
    refhost::SetImportDataOnly(definition_, request_.dataOnly ? 1 : 0);
    refhost::SetImportSectionNodes(definition_, request_.sectionNodes ? 1 : 0);

    const WString primary = request_.config.IsComposed()
                                ? ImportConfigDraft(request_.config, codePage)
                                : WithHeaderLines(ReadConfigurationFile("--config", *request_.config.configFile),
                                                  request_.config.headerLines);
    if (request_.config.IsComposed()) {
        for (const ColumnOption& column : request_.config.columns)
            composedColumnNames_.push_back(column.name);
    }
    const WString secondary =
        request_.nodeConfigFile ? ReadConfigurationFile("--node-config", *request_.nodeConfigFile) : primary;
    definition_.SetImporterConfiguration(primary.c_str());
    definition_.SetImporterConfigurationNode(secondary.c_str());

    // A configuration the engine cannot read has no description.
    for (const int node : {0, 1}) {
        WString description;
        CallEngine([&] { return engine_.GetDescription(description, &definition_, node), 0; });
        if (description.empty() && (node == 0 || request_.nodeConfigFile))
            WarnOrRefuse(
                request_.config.strict,
                (node ? "--node-config: '" + request_.nodeConfigFile.value_or("")
                      : "--config: '" + request_.config.configFile.value_or("")) +
                    "' holds no import configuration (no cfg element); the engine reads it as the default one");
    }

    // FILE becomes the file path of the configuration the builder reads.
    SetPathThroughEngine(engine_, definition_, Sides().secondaryConfiguration, request_.file);
    refhost::SetDBCollection(definition_, MakeBinds(request_.binds, 0, "--bind"));
    if (!request_.nodeBinds.empty()) {
        // The polygon builder, and the cloud builder outside line jobs, match the secondary
        // binds against the primary configuration's columns.
        const bool primaryColumns =
            request_.kind == ImportKind::Polygons ||
            (request_.kind == ImportKind::Cloud && definition_.GetEntityType() != VeltoGis::EntityTypeLine);
        refhost::SetDBCollectionNode(definition_, MakeBinds(request_.nodeBinds, primaryColumns ? 0 : 1, "--node-bind"));
    }
    ApplyTransforms(request_.transforms, {definition_.GetDBCollection(), definition_.GetDBCollectionNode()});
}

boost::shared_ptr<CDataBindCollection> ImportJob::MakeBinds(const std::vector<BindOption>& binds, int secondary,
                                                            const char* option)
{
    DataDefinitionList offered;
    CallEngine([&] { return engine_.GetSourceDataDefinitions(&definition_, offered, secondary), 0; });
    TargetIdList excluded;
    CallEngine([&] { return engine_.GetExcludedTargetIds(&definition_, excluded), 0; });

    auto collection = boost::make_shared<CDataBindCollection>();
    for (const BindOption& choice : binds) {
        const WString source = FromUtf8(choice.source);
        const WString target = FromUtf8(choice.target);
        const auto column = std::find_if(offered.begin(), offered.end(), [&source](const auto& definition) {
            return definition->GetDataID() == source;
        });
        if (!choice.source.empty() && column == offered.end())
            WarnOrRefuse(request_.config.strict, std::string(option) + ": no column '" + choice.source +
                                                     "' among the configuration's source fields (" + NamesOf(offered) +
                                                     "); the engine adds nothing for it");
        CheckTarget(choice.target, option);
        if (std::find(excluded.begin(), excluded.end(), target) != excluded.end())
            throw UsageError(std::string(option) + ": a data-only job does not offer the target '" + choice.target + "'");
        auto bind = boost::make_shared<CDataBind>(source.c_str(), target.c_str());
        if (column != offered.end())
            refhost::SetSourceDataDefinition(*bind, *column);
        refhost::AddBind(*collection, bind);
    }
    return collection;
}

std::optional<std::string> ImportJob::Check()
{
    if (request_.kind == ImportKind::Table)
        return std::nullopt;
    CallEngine([&] { return engine_.PrepareImport(&definition_); });
    WString message;
    if (CallEngine([&] { return engine_.ValidateDefinition(&definition_, message); }))
        return std::nullopt;
    return message.empty() ? std::string("the job does not validate") : ToUtf8(message);
}

int ImportJob::Run()
{
    const int result = RunBuilder();
    layout_ = ComputeLayout();
    // The builders announce the file's line count on the framework's progress bar.
    const int lines = refhost::LastShownProgressUpper();
    linesRead_ = result == 1 && lines > 0 ? static_cast<std::size_t>(lines) : 0;
    if (request_.kind == ImportKind::Table && request_.tableVariant == TableVariant::AllRows && request_.maxLines > 0)
        linesRead_ = std::min(linesRead_, static_cast<std::size_t>(request_.maxLines));
    return result;
}

int ImportJob::RunBuilder()
{
    CImportDefinition* definition = &definition_;
    switch (request_.kind) {
    case ImportKind::Points: {
        const CoordinateFilter bounds = request_.filter.value_or(CoordinateFilter());
        CLq filter(bounds.xMin, bounds.yMin, bounds.xMax, bounds.yMax);
        return CallEngine([&] {
            return engine_.ImportPoints(definition, entities_, request_.secondary ? 1 : 0,
                                        request_.filter ? &filter : nullptr);
        });
    }
    case ImportKind::Lines: return CallEngine([&] { return engine_.ImportLines(definition, entities_); });
    case ImportKind::Polygons: return CallEngine([&] { return engine_.ImportPolygons(definition, entities_); });
    case ImportKind::Cloud:
        cloud_ = boost::make_shared<CCloud>(CCloud::Storage::KeepPoints);
        return CallEngine([&] { return engine_.ImportCloud(definition, cloud_); });
    case ImportKind::Table: break;
    }

    table_ = boost::make_shared<CDBTable>();
    refhost::SetLinkedFieldIndex(*table_, request_.keyIndex);
    const WString configuration = definition_.GetImporterConfiguration();
    switch (request_.tableVariant) {
    case TableVariant::LinkedKeys: {
        KeySet keys;
        for (const std::string& key : request_.keys)
            keys.insert(FromUtf8(key));
        return CallEngine([&] { return engine_.ImportLinkedTableRows(configuration.c_str(), table_, keys); });
    }
    case TableVariant::KeyValue: {
        const CDataBox value = KeyValueBox(request_);
        const CDataBox* given = request_.keyValueType == KeyValueType::Null ? nullptr : &value;
        return CallEngine([&] { return engine_.UpdateLinkedTableRows(configuration.c_str(), table_, given); });
    }
    case TableVariant::AllRows: break;
    }
    return CallEngine([&] { return engine_.ImportTableRows(configuration.c_str(), table_, request_.maxLines); });
}

// Field names: for entities the target of every bind that gives a value (its source names a
// column of the configuration the builder reads), in bind order; for rows the column names,
// all of them, when they are known in full.
RecordLayout ImportJob::ComputeLayout()
{
    RecordLayout layout;
    layout.kind = RecordKindOf(request_.kind);
    std::vector<std::string> names;
    if (request_.kind == ImportKind::Table) {
        DataDefinitionList offered;
        CallEngine([&] { return engine_.GetSourceDataDefinitions(&definition_, offered, 0), 0; });
        const std::size_t width =
            table_ && !refhost::RowsOf(*table_).empty() ? refhost::RowsOf(*table_).front()->Data().size() : 0;
        if (!composedColumnNames_.empty()) {
            names = composedColumnNames_;
        } else if (offered.size() == width) {
            for (const auto& definition : offered)
                names.push_back(ToUtf8(definition->GetDataID()));
        }
    } else if (request_.kind != ImportKind::Cloud) {
        const auto binds = Sides().secondaryBinds ? definition_.GetDBCollectionNode() : definition_.GetDBCollection();
        DataDefinitionList offered;
        const int secondary = Sides().secondaryConfiguration ? 1 : 0;
        CallEngine([&] { return engine_.GetSourceDataDefinitions(&definition_, offered, secondary), 0; });
        for (const auto& bind : binds ? binds->GetDataBindCollection() : std::vector<boost::shared_ptr<CDataBind>>()) {
            const bool givesValue =
                bind && std::any_of(offered.begin(), offered.end(), [&bind](const auto& definition) {
                    return definition->GetDataID() == bind->GetSourceDataId();
                });
            if (givesValue)
                names.push_back(ToUtf8(bind->GetTargetDataId()));
        }
    }
    layout.fieldNames = UniqueFieldNames(names);
    layout.fieldTypes = FieldTypes(layout.fieldNames.size());
    return layout;
}

// The narrowest type that holds every value of each field.
std::vector<FieldType> ImportJob::FieldTypes(std::size_t fields) const
{
    using Kind = CDataBox::Kind;
    std::vector<bool> anyInteger(fields), anyReal(fields), anyText(fields);
    const auto note = [&](const DataValueList& values) {
        for (std::size_t i = 0; i < fields && i < values.size(); ++i) {
            if (!values[i])
                continue;
            switch (refhost::KindOf(*values[i])) {
            case Kind::Integer: anyInteger[i] = true; break;
            case Kind::Real: anyReal[i] = true; break;
            case Kind::Text: anyText[i] = true; break;
            case Kind::Null: break;
            }
        }
    };
    for (const auto& entity : entities_) {
        if (entity)
            note(refhost::ValuesOf(*entity));
    }
    if (table_) {
        for (const auto& row : refhost::RowsOf(*table_)) {
            if (row)
                note(row->Data());
        }
    }
    std::vector<FieldType> types(fields, FieldType::Text);
    for (std::size_t i = 0; i < fields; ++i) {
        if (!anyText[i] && anyReal[i])
            types[i] = FieldType::Real;
        else if (!anyText[i] && anyInteger[i])
            types[i] = FieldType::Integer;
    }
    return types;
}

void ImportJob::Write(RecordWriter& writer, std::shared_ptr<const CoordinateSystem> crs) const
{
    RecordLayout layout = layout_;
    layout.crs = std::move(crs);
    layout.records = RecordCount();
    writer.Begin(layout);
    for (const auto& entity : entities_) {
        if (!entity)
            continue;
        EntityRecord record;
        const WString name = refhost::NameOf(*entity);
        record.name = refhost::HasName(*entity) ? &name : nullptr;
        record.values = &refhost::ValuesOf(*entity);
        if (const auto* point = dynamic_cast<const CImpexPoint*>(entity.get()); point && refhost::HasPosition(*point))
            record.position = &refhost::PositionOf(*point);
        if (const auto* line = dynamic_cast<const CImpexLine*>(entity.get())) {
            record.start = refhost::HasStartingNodeName(*line) ? &refhost::StartingNodeNameOf(*line) : nullptr;
            record.end = refhost::HasEndingNodeName(*line) ? &refhost::EndingNodeNameOf(*line) : nullptr;
        }
        writer.Entity(record);
    }
    if (table_) {
        for (const auto& row : refhost::RowsOf(*table_)) {
            if (row)
                writer.Row(row->Data());
        }
    }
    if (cloud_) {
        const std::vector<double>& coordinates = refhost::CoordinatesOf(*cloud_);
        for (std::size_t i = 0; i + 1 < coordinates.size(); i += 2)
            writer.CloudPoint(coordinates[i], coordinates[i + 1]);
    }
    writer.End();
}

void ImportJob::KeepRecordsUntilExit()
{
    struct Records {
        ImpexEntityList entities;
        boost::shared_ptr<CDBTable> table;
        boost::shared_ptr<CCloud> cloud;
    };
    static std::vector<Records>* const kept = new std::vector<Records>();
    kept->push_back(Records{std::move(entities_), std::move(table_), std::move(cloud_)});
    entities_.clear();
}

std::size_t ImportJob::RecordCount() const
{
    if (table_)
        return refhost::RowsOf(*table_).size();
    if (cloud_)
        return refhost::PointCountOf(*cloud_);
    return entities_.size();
}

std::string ImportJob::RecordNoun() const
{
    switch (request_.kind) {
    case ImportKind::Points: return "point";
    case ImportKind::Lines: return "line";
    case ImportKind::Polygons: return "polygon";
    case ImportKind::Table: return "row";
    case ImportKind::Cloud: break;
    }
    return "cloud point";
}

WString ImportJob::ConfigurationString() const
{
    return Sides().secondaryConfiguration ? definition_.GetImporterConfigurationNode()
                                         : definition_.GetImporterConfiguration();
}

} // namespace tessel
