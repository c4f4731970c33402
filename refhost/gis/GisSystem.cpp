#include "host/GisSystem.h"

namespace VeltoGis {
namespace Topology {

CEntity::CEntity() = default;
CEntity::~CEntity() = default;

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

} // namespace System
} // namespace VeltoGis
