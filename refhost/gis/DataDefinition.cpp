#include "host/GisData.h"
#include "host/GisSystem.h"
#include "refhost/HostSide.h"

namespace VeltoGis {
namespace Data {

void CDataDefinition::SetDataID(const WChar* id) { id_.assign(id ? id : WTEXT("")); }

void CDataDefinition::SetName(const WChar* name) { name_.assign(name ? name : WTEXT("")); }

void CDataDefinition::SetDataType(int type) { type_ = type; }

// The in-memory drawing keeps every field as a value already; reading one is a lookup by the
// definition's data id. The flags and the system select nothing here.
int CDataRW::Read(CDataDefinition* definition, Topology::CEntity* entity, CDataBox& value, int /*flags*/,
                  System::CGisSystem* /*system*/)
{
    if (!definition || !entity)
        return 0;
    const CDataBox* field = refhost::FindEntityField(*entity, definition->GetDataID());
    if (!field)
        return 0;
    value = *field;
    return 1;
}

} // namespace Data
} // namespace VeltoGis
