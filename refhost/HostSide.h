#pragma once
// What the reference host (its libraries, the host application and the tests) reads and sets
// on the framework's objects beyond what modules may call: values and entities as handed
// over, jobs being built, and what the framework shows of an engine. Modules never include
// this; the build checks that they do not. The registry's and the progress bar's extras come
// with it.

#include "host/GisData.h"
#include "host/GisSystem.h"
#include "host/ImpexData.h"
#include "host/ImpexDefinitions.h"
#include "host/ImpexEngines.h"
#include "refhost/EngineRegistry.h"
#include "refhost/ProgressBarRecording.h"

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace VeltoGis {

// The one friend of the framework's classes: plain access to their state, used only by the
// functions below.
class HostSide {
public:
    static const Data::CDataBox& Name(const ImportExport::CImpexEntity& entity) { return entity.name_; }
    static const ImportExport::DataValueList& Values(const ImportExport::CImpexEntity& entity)
    {
        return entity.values_;
    }

    static Data::CDataBox::Kind Kind(const Data::CDataBox& box) { return box.kind_; }
    static int Integer(const Data::CDataBox& box)
    {
        return box.kind_ == Data::CDataBox::Kind::Integer ? box.storage_.integer : 0;
    }
    static double Real(const Data::CDataBox& box)
    {
        return box.kind_ == Data::CDataBox::Kind::Real ? box.storage_.real : 0.0;
    }
    static WString Text(const Data::CDataBox& box)
    {
        return box.kind_ == Data::CDataBox::Kind::Text ? WString(box.TextData(), box.length_) : WString();
    }

    // The text of a text value where the value keeps it; empty for other kinds.
    static std::basic_string_view<WChar> TextView(const Data::CDataBox& box)
    {
        return box.kind_ == Data::CDataBox::Kind::Text ? std::basic_string_view<WChar>(box.TextData(), box.length_)
                                                       : std::basic_string_view<WChar>();
    }

    static auto& Fields(Topology::CEntity& entity) { return entity.fields_; }
    static const auto& Fields(const Topology::CEntity& entity) { return entity.fields_; }
    static auto& Entities(System::CGisSystem& system) { return system.entities_; }
    static auto& Active(System::CSystemManager& manager) { return manager.active_; }

    static bool HasPosition(const ImportExport::CImpexPoint& point) { return point.hasPosition_; }
    static const AcGePoint3d& Position(const ImportExport::CImpexPoint& point) { return point.position_; }
    static bool HasStart(const ImportExport::CImpexLine& line) { return line.hasStart_; }
    static bool HasEnd(const ImportExport::CImpexLine& line) { return line.hasEnd_; }
    static const WString& Start(const ImportExport::CImpexLine& line) { return line.start_; }
    static const WString& End(const ImportExport::CImpexLine& line) { return line.end_; }

    static std::size_t PointCount(const ImportExport::CCloud& cloud) { return cloud.count_; }
    static const std::vector<double>& Coordinates(const ImportExport::CCloud& cloud) { return cloud.coordinates_; }
    static std::uint64_t Checksum(const ImportExport::CCloud& cloud) { return cloud.checksum_; }

    static int& LinkedFieldIndex(ImportExport::CDBTable& table) { return table.linkedFieldIndex_; }
    static const auto& Rows(const ImportExport::CDBTable& table) { return table.rows_; }

    static WString& SourceId(ImportExport::CDataBind& bind) { return bind.sourceId_; }
    static WString& TargetId(ImportExport::CDataBind& bind) { return bind.targetId_; }
    static auto& SourceDefinition(ImportExport::CDataBind& bind) { return bind.sourceDefinition_; }
    static auto& ImportTransform(ImportExport::CDataBind& bind) { return bind.importTransform_; }
    static auto& ExportTransform(ImportExport::CDataBind& bind) { return bind.exportTransform_; }
    static auto& Binds(ImportExport::CDataBindCollection& binds) { return binds.binds_; }

    static enmEntityType& EntityType(CRepositoryItem& item) { return item.entityType_; }
    template <typename Definition> static auto& BindsOf(Definition& definition) { return definition.binds_; }
    template <typename Definition> static auto& NodeBindsOf(Definition& definition) { return definition.bindsNode_; }
    template <typename Definition> static auto& AllowPrimaryEdit(Definition& definition)
    {
        return definition.allowPrimaryEdit_;
    }
    template <typename Definition> static auto& AllowSecondaryEdit(Definition& definition)
    {
        return definition.allowSecondaryEdit_;
    }
    static int& DataOnly(ImportExport::CImportDefinition& definition) { return definition.dataOnly_; }
    static int& SectionNodes(ImportExport::CImportDefinition& definition) { return definition.sectionNodes_; }

    template <typename Engine> static const WString& EngineId(const Engine& engine) { return engine.id_; }
    template <typename Engine> static const WString& EngineName(const Engine& engine) { return engine.name_; }
    template <typename Engine> static const WString& EngineDescription(const Engine& engine)
    {
        return engine.description_;
    }
    template <typename Engine> static unsigned int EngineMask(const Engine& engine) { return engine.mask_; }
};

} // namespace VeltoGis

namespace refhost {

using VeltoGis::HostSide;
namespace Data = VeltoGis::Data;
namespace ImportExport = VeltoGis::ImportExport;

// Values: each reader gives 0 or "" for a value of another kind.
inline Data::CDataBox::Kind KindOf(const Data::CDataBox& box) { return HostSide::Kind(box); }
inline int IntegerOf(const Data::CDataBox& box) { return HostSide::Integer(box); }
inline double RealOf(const Data::CDataBox& box) { return HostSide::Real(box); }
inline WString TextOf(const Data::CDataBox& box) { return HostSide::Text(box); }
// Valid while the value is neither changed nor destroyed.
inline std::basic_string_view<WChar> TextViewOf(const Data::CDataBox& box)
{
    return HostSide::TextView(box);
}

// Drawing entities: field values by field id.
inline void SetEntityField(VeltoGis::Topology::CEntity& entity, const WString& fieldId, const Data::CDataBox& value)
{
    for (auto& field : HostSide::Fields(entity)) {
        if (field.first == fieldId) {
            field.second = value;
            return;
        }
    }
    HostSide::Fields(entity).emplace_back(fieldId, value);
}
inline const Data::CDataBox* FindEntityField(const VeltoGis::Topology::CEntity& entity, const WString& fieldId)
{
    for (const auto& field : HostSide::Fields(entity)) {
        if (field.first == fieldId)
            return &field.second;
    }
    return nullptr;
}
// The drawing's entities.
inline auto& EntitiesOf(VeltoGis::System::CGisSystem& system) { return HostSide::Entities(system); }
// Replaces the active system (null: none).
inline void SetActiveSystem(VeltoGis::System::CGisSystem* system)
{
    HostSide::Active(*VeltoGis::System::CSystemManager::Instance()) = system;
}

// Entities as a module handed them over.
inline bool HasName(const ImportExport::CImpexEntity& entity) { return HostSide::Name(entity).IsNotNull(); }
inline WString NameOf(const ImportExport::CImpexEntity& entity) { return HostSide::Text(HostSide::Name(entity)); }
inline const ImportExport::DataValueList& ValuesOf(const ImportExport::CImpexEntity& entity)
{
    return HostSide::Values(entity);
}
inline bool HasPosition(const ImportExport::CImpexPoint& point) { return HostSide::HasPosition(point); }
inline const AcGePoint3d& PositionOf(const ImportExport::CImpexPoint& point) { return HostSide::Position(point); }
inline bool HasStartingNodeName(const ImportExport::CImpexLine& line) { return HostSide::HasStart(line); }
inline bool HasEndingNodeName(const ImportExport::CImpexLine& line) { return HostSide::HasEnd(line); }
inline const WString& StartingNodeNameOf(const ImportExport::CImpexLine& line) { return HostSide::Start(line); }
inline const WString& EndingNodeNameOf(const ImportExport::CImpexLine& line) { return HostSide::End(line); }

// Clouds: the kept points as x0, y0, x1, y1, ... (none when only counting), and an
// order-sensitive checksum over the bits of every coordinate added.
inline std::size_t PointCountOf(const ImportExport::CCloud& cloud) { return HostSide::PointCount(cloud); }
inline const std::vector<double>& CoordinatesOf(const ImportExport::CCloud& cloud)
{
    return HostSide::Coordinates(cloud);
}
inline std::uint64_t ChecksumOf(const ImportExport::CCloud& cloud) { return HostSide::Checksum(cloud); }

// Data tables.
inline void SetLinkedFieldIndex(ImportExport::CDBTable& table, int index) { HostSide::LinkedFieldIndex(table) = index; }
inline const std::vector<boost::shared_ptr<ImportExport::CDBRow>>& RowsOf(const ImportExport::CDBTable& table)
{
    return HostSide::Rows(table);
}

// Building binds.
inline void SetSourceDataId(ImportExport::CDataBind& bind, const WChar* id)
{
    HostSide::SourceId(bind).assign(id ? id : WTEXT(""));
}
inline void SetTargetDataId(ImportExport::CDataBind& bind, const WChar* id)
{
    HostSide::TargetId(bind).assign(id ? id : WTEXT(""));
}
inline void SetSourceDataDefinition(ImportExport::CDataBind& bind, boost::shared_ptr<Data::CDataDefinition> definition)
{
    HostSide::SourceDefinition(bind) = std::move(definition);
}
inline void SetImportTransform(ImportExport::CDataBind& bind, ImportExport::CDataBind::Transform transform)
{
    HostSide::ImportTransform(bind) = std::move(transform);
}
inline void SetExportTransform(ImportExport::CDataBind& bind, ImportExport::CDataBind::Transform transform)
{
    HostSide::ExportTransform(bind) = std::move(transform);
}
inline void AddBind(ImportExport::CDataBindCollection& binds, boost::shared_ptr<ImportExport::CDataBind> bind)
{
    HostSide::Binds(binds).push_back(std::move(bind));
}

// Building jobs, and the answers the engines' base class gives for path editing on a job
// (both allowed unless changed).
inline void SetEntityType(VeltoGis::CRepositoryItem& item, VeltoGis::enmEntityType type)
{
    HostSide::EntityType(item) = type;
}
template <typename Definition>
void SetDBCollection(Definition& definition, boost::shared_ptr<ImportExport::CDataBindCollection> binds)
{
    HostSide::BindsOf(definition) = std::move(binds);
}
template <typename Definition>
void SetDBCollectionNode(Definition& definition, boost::shared_ptr<ImportExport::CDataBindCollection> binds)
{
    HostSide::NodeBindsOf(definition) = std::move(binds);
}
inline void SetImportDataOnly(ImportExport::CImportDefinition& definition, int dataOnly)
{
    HostSide::DataOnly(definition) = dataOnly;
}
inline void SetImportSectionNodes(ImportExport::CImportDefinition& definition, int sectionNodes)
{
    HostSide::SectionNodes(definition) = sectionNodes;
}
template <typename Definition> void SetAllowPrimaryFilePathEdit(Definition& definition, int allow)
{
    HostSide::AllowPrimaryEdit(definition) = allow;
}
template <typename Definition> void SetAllowSecondaryFilePathEdit(Definition& definition, int allow)
{
    HostSide::AllowSecondaryEdit(definition) = allow;
}
template <typename Definition> int AllowsPrimaryFilePathEdit(const Definition& definition)
{
    return HostSide::AllowPrimaryEdit(definition);
}
template <typename Definition> int AllowsSecondaryFilePathEdit(const Definition& definition)
{
    return HostSide::AllowSecondaryEdit(definition);
}

// What the framework shows of an engine: the values it gave its base class.
template <typename Engine> const WString& EngineIdOf(const Engine& engine) { return HostSide::EngineId(engine); }
template <typename Engine> const WString& EngineNameOf(const Engine& engine) { return HostSide::EngineName(engine); }
template <typename Engine> const WString& EngineDescriptionOf(const Engine& engine)
{
    return HostSide::EngineDescription(engine);
}
template <typename Engine> unsigned int EngineMaskOf(const Engine& engine) { return HostSide::EngineMask(engine); }

} // namespace refhost
