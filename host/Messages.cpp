#include "host/Messages.h"

#include "host/GisUtility.h"

WString LoadMessage(MessageId id)
{
    return VeltoGis::CModuleConfiguration::Instance()->GetMsg(static_cast<unsigned>(id));
}
