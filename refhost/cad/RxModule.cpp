#include "host/CadPlatform.h"

#include <cstdlib>

void* odrxAlloc(std::size_t size) { return std::malloc(size == 0 ? 1 : size); }

void odrxFree(void* block) { std::free(block); }

OdRxModule::OdRxModule(const OdRxModuleRecord& record)
    : moduleName_(record.moduleName ? record.moduleName : WTEXT("")), moduleHandle_(record.moduleHandle)
{
}

OdRxModule::~OdRxModule() = default;

// A module derives from OdRxModule to act on being started and stopped; the runtime's own
// module object has nothing to do then.
void OdRxModule::initApp() {}

void OdRxModule::uninitApp() {}
