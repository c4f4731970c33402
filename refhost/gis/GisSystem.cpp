#include "host/GisSystem.h"

namespace VeltoGis {
namespace Topology {

CEntity::CEntity() = default;
CEntity::~CEntity() = default;

void CEntity::SetField(const WString& fieldId, const Data::CDataBox& value)
{
    for (auto& field : fields_) {
        if (field.first == fieldId) {
            field.second = value;
            return;
        }
    }
    fields_.emplace_back(fieldId, value);
}

const Data::CDataBox* CEntity::FindField(const WString& fieldId) const
{
    for (const auto& field : fields_) {
        if (field.first == fieldId)
            return &field.second;
    }
    return nullptr;
}

CEntityContainer::CEntityContainer() = default;
CEntityContainer::~CEntityContainer() = default;

} // namespace Topology

namespace System {

CGisSystem::CGisSystem() = default;
CGisSystem::~CGisSystem() = default;

namespace {

// A drawing is always open in the CAD application, so there is an active system from the
// start: the process's one in-memory drawing.
CGisSystem& OpenDrawing()
{
    static CGisSystem drawing;
    return drawing;
}

} // namespace

CSystemManager* CSystemManager::Instance()
{
    static CSystemManager manager;
    return &manager;
}

CSystemManager::CSystemManager() : active_(&OpenDrawing()) {}

CGisSystem* CSystemManager::GetActiveSystem() { return active_; }

void CSystemManager::SetActiveSystem(CGisSystem* system) { active_ = system; }

} // namespace System
} // namespace VeltoGis
