#pragma once
// The drawing's GIS system and its entities (VeltoXGisCore), as far as the module passes
// them on to CDataRW::Read.

#include "host/GisData.h"
#include "host/HostApi.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <utility>
#include <vector>

namespace VeltoGis {
namespace Topology {

// A drawing entity with named field values.
class VELTOGIS_CORE_API CEntity {
public:
    CEntity();
    virtual ~CEntity();

private:
    friend class VeltoGis::HostSide;
    std::vector<std::pair<WString, Data::CDataBox>> fields_;
};

// The container of topology entities that an export of lines receives.
class VELTOGIS_CORE_API CEntityContainer {
public:
    CEntityContainer();
    virtual ~CEntityContainer();
    std::vector<boost::shared_ptr<CEntity>>& GetEntities() { return entities_; }

private:
    std::vector<boost::shared_ptr<CEntity>> entities_;
};

} // namespace Topology

namespace System {

class VELTOGIS_CORE_API CGisSystem {
public:
    CGisSystem();
    virtual ~CGisSystem();

private:
    friend class VeltoGis::HostSide;
    std::vector<boost::shared_ptr<Topology::CEntity>> entities_;
};

class VELTOGIS_CORE_API CSystemManager {
public:
    static CSystemManager* Instance();
    CGisSystem* GetActiveSystem();

private:
    friend class VeltoGis::HostSide;
    CSystemManager();
    CGisSystem* active_;
};

} // namespace System
} // namespace VeltoGis
