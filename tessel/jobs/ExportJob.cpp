#include "tessel/jobs/ExportJob.h"

#include "export/ExportSides.h"

#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
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
using VeltoGis::Topology::CEntity;

// The engine reads any text; a file without a cfg element silently gives the defaults.
void CheckExportConfiguration(const WString& text, const std::string& option, const std::string& path, bool strict)
{
    static const WString element = WTEXT("<cfg");
    for (std::size_t at = text.find(element); at != WString::npos; at = text.find(element, at + 1)) {
        const std::size_t next = at + element.size();
        if (next == text.size() || text[next] == ' ' || text[next] == '/' || text[next] == '>' || text[next] == '\t' ||
            text[next] == '\r' || text[next] == '\n')
            return;
    }
    WarnOrRefuse(strict,
                 option + ": '" + path +
                     "' holds no export configuration (no cfg element); the engine reads it as the default one");
}

// The type code of a field: that of its first value that is not null.
int FieldType(const ExportInput& input, int index)
{
    for (const InputRecord& record : input.records) {
        if (static_cast<std::size_t>(index) >= record.values.size() || !record.values[index].IsNotNull())
            continue;
        switch (refhost::KindOf(record.values[index])) {
        case CDataBox::Kind::Integer: return VeltoGis::Data::DataTypeInteger;
        case CDataBox::Kind::Real: return VeltoGis::Data::DataTypeReal;
        default: return VeltoGis::Data::DataTypeText;
        }
    }
    return VeltoGis::Data::DataTypeText;
}

std::string FieldList(const ExportInput& input)
{
    std::string names;
    for (const std::string& name : input.fieldNames)
        names += (names.empty() ? "" : ", ") + name;
    return names.empty() ? "none" : names;
}

} // namespace

int WriterEntityType(ExportKind kind)
{
    switch (kind) {
    case ExportKind::Lines: return kLineWriterType;
    case ExportKind::Polygons: return kPolygonWriterType;
    case ExportKind::Points: break;
    }
    return kPointWriterType;
}

ExportJob::~ExportJob()
{
    if (!drawingEntities_)
        return;
    // The drawing gets back to what it held before this job.
    auto& drawing = refhost::EntitiesOf(*VeltoGis::System::CSystemManager::Instance()->GetActiveSystem());
    const auto& added = drawingEntities_->GetEntities();
    drawing.erase(std::remove_if(drawing.begin(), drawing.end(),
                                 [&added](const auto& entity) {
                                     return std::find(added.begin(), added.end(), entity) != added.end();
                                 }),
                  drawing.end());
}

// A writer reads its main configuration and binds for its own entity type, else the node ones.
bool ExportJob::WriterReadsNodeSide() const
{
    return !ReadsMainSide(definition_.GetEntityType(), WriterEntityType(request_.kind));
}

void ExportJob::Build(unsigned codePage)
{
    refhost::SetEntityType(definition_, static_cast<VeltoGis::enmEntityType>(
                                            request_.entityType.value_or(WriterEntityType(request_.kind))));
    WString main;
    if (request_.config.IsComposed()) {
        main = ExportConfigDraft(request_.config, codePage);
    } else {
        main = ReadConfigurationFile("--config", *request_.config.configFile);
        CheckExportConfiguration(main, "--config", *request_.config.configFile, request_.config.strict);
    }
    WString node = main;
    if (request_.nodeConfigFile) {
        node = ReadConfigurationFile("--node-config", *request_.nodeConfigFile);
        CheckExportConfiguration(node, "--node-config", *request_.nodeConfigFile, request_.config.strict);
    }
    definition_.SetExporterConfiguration(main.c_str());
    definition_.SetExporterConfigurationNode(node.c_str());

    std::vector<BindOption> mainBinds = request_.binds;
    if (mainBinds.empty()) {
        for (const std::string& field : input_.fieldNames)
            mainBinds.push_back(BindOption{field, field});
    }
    refhost::SetDBCollection(definition_, MakeBinds(mainBinds, "--bind"));
    if (!request_.nodeBinds.empty())
        refhost::SetDBCollectionNode(definition_, MakeBinds(request_.nodeBinds, "--node-bind"));
    ApplyTransforms(request_.transforms, {definition_.GetDBCollection(), definition_.GetDBCollectionNode()});
    BuildEntities();
}

// Every bind with a source gets the source field's definition, as the framework gives its
// exported fields; a bind without a source gets none.
boost::shared_ptr<CDataBindCollection> ExportJob::MakeBinds(const std::vector<BindOption>& binds,
                                                            const char* option) const
{
    auto collection = boost::make_shared<CDataBindCollection>();
    for (const BindOption& choice : binds) {
        const WString source = FromUtf8(choice.source);
        auto bind = boost::make_shared<CDataBind>(source.c_str(), FromUtf8(choice.target).c_str());
        if (!choice.source.empty()) {
            const int index = input_.FieldIndex(choice.source);
            if (index < 0 && !input_.records.empty())
                throw UsageError(std::string(option) + ": no field '" + choice.source + "' in '" + request_.input +
                                 "' (fields: " + FieldList(input_) + ")");
            auto definition = boost::make_shared<VeltoGis::Data::CDataDefinition>();
            definition->SetDataID(source.c_str());
            definition->SetName(source.c_str());
            definition->SetDataType(index < 0 ? VeltoGis::Data::DataTypeText : FieldType(input_, index));
            refhost::SetSourceDataDefinition(*bind, definition);
        }
        refhost::AddBind(*collection, bind);
    }
    return collection;
}

// Points and polygons carry their values in bind order. Lines are the drawing's entities:
// the writer reads their fields through CDataRW::Read by the binds' source definitions.
void ExportJob::BuildEntities()
{
    const auto binds = WriterReadsNodeSide() ? definition_.GetDBCollectionNode() : definition_.GetDBCollection();
    std::vector<int> fields;
    if (binds) {
        for (const auto& bind : binds->GetDataBindCollection())
            fields.push_back(input_.FieldIndex(ToUtf8(bind->GetSourceDataId())));
    }
    const auto valueOf = [](const InputRecord& record, int field) {
        return field >= 0 && static_cast<std::size_t>(field) < record.values.size() ? record.values[field] : CDataBox();
    };

    if (request_.kind == ExportKind::Lines) {
        drawingEntities_ = boost::make_shared<VeltoGis::Topology::CEntityContainer>();
        auto& drawing = refhost::EntitiesOf(*VeltoGis::System::CSystemManager::Instance()->GetActiveSystem());
        for (const InputRecord& record : input_.records) {
            auto entity = boost::make_shared<CEntity>();
            for (const int field : fields) {
                if (field >= 0)
                    refhost::SetEntityField(*entity, FromUtf8(input_.fieldNames[field]), valueOf(record, field));
            }
            drawingEntities_->GetEntities().push_back(entity);
            drawing.push_back(entity);
        }
        return;
    }
    for (const InputRecord& record : input_.records) {
        boost::shared_ptr<CImpexEntity> entity;
        if (request_.kind == ExportKind::Points) {
            auto point = boost::make_shared<CImpexPoint>();
            if (record.position)
                point->SetPosition(*record.position);
            entity = point;
        } else {
            entity = boost::make_shared<CImpexPolygon>();
        }
        if (record.name)
            entity->SetName(record.name->c_str());
        for (const int field : fields)
            entity->AddData(boost::make_shared<CDataBox>(valueOf(record, field)));
        entities_.push_back(entity);
    }
}

int ExportJob::Run()
{
    SetPathThroughEngine(engine_, definition_, WriterReadsNodeSide(), request_.output);
    CallEngine([&] { return engine_.PrepareExport(&definition_); });
    // The framework tells the engine before and after a run; the text engine ignores both.
    CallEngine([&] { return engine_.ExportNotify13(), 0; });
    const int result = CallEngine([&] {
        switch (request_.kind) {
        case ExportKind::Lines: return engine_.ExportLines(&definition_, drawingEntities_);
        case ExportKind::Polygons: return engine_.ExportPolygons(&definition_, entities_);
        case ExportKind::Points: break;
        }
        return engine_.ExportPoints(&definition_, entities_);
    });
    CallEngine([&] { return engine_.ExportNotify14(), 0; });
    return result;
}

std::string ExportJob::EntityName()
{
    const char* const names[] = {"points", "lines", "polygons"};
    const WString given = FromUtf8(names[static_cast<int>(request_.kind)]);
    WString exported;
    CallEngine([&] { return engine_.GetExportEntityName(exported, given.c_str()), 0; });
    return ToUtf8(exported);
}

} // namespace tessel
