#include "host/ImpexEngines.h"
#include "refhost/EngineRegistry.h"
#include "refhost/HostSide.h"

#include <algorithm>

namespace VeltoGis {
namespace ImportExport {
namespace {

// The one manager's state. The manager is a process-wide singleton, so its state lives here
// rather than in the class the modules see.
struct Registry {
    std::vector<boost::shared_ptr<IImportEngine>> importers;
    std::vector<boost::shared_ptr<IExportEngine>> exporters;
    std::vector<const CImportDefinition*> userData;
    std::vector<WString> registrations;
};

Registry& TheRegistry()
{
    static Registry registry;
    return registry;
}

// The engine registered last under the id wins, as a module loaded later replaces an
// earlier one's engine.
template <typename Engine>
boost::shared_ptr<Engine> FindLast(const std::vector<boost::shared_ptr<Engine>>& engines, const WString& id)
{
    const auto found = std::find_if(engines.rbegin(), engines.rend(), [&id](const boost::shared_ptr<Engine>& engine) {
        return refhost::EngineIdOf(*engine) == id;
    });
    return found == engines.rend() ? boost::shared_ptr<Engine>() : *found;
}

template <typename Engine>
void NoteRegistration(const WChar* kind, const boost::shared_ptr<Engine>& engine)
{
    TheRegistry().registrations.push_back(WString(kind) + (engine ? refhost::EngineIdOf(*engine) : WString()));
}

} // namespace

CImpexManager* CImpexManager::Instance()
{
    static CImpexManager manager;
    return &manager;
}

// An empty pointer (an engine that could not be created) registers nothing.
void CImpexManager::RegisterImporter(boost::shared_ptr<IImportEngine> engine)
{
    NoteRegistration(WTEXT("import:"), engine);
    if (engine)
        TheRegistry().importers.push_back(std::move(engine));
}

void CImpexManager::RegisterExporter(boost::shared_ptr<IExportEngine> engine)
{
    NoteRegistration(WTEXT("export:"), engine);
    if (engine)
        TheRegistry().exporters.push_back(std::move(engine));
}

// The reference host keeps no per-job data beyond the note that the job asked for it.
int CImpexManager::CreateUserData(CImportDefinition* definition)
{
    if (!definition)
        return 0;
    TheRegistry().userData.push_back(definition);
    return 1;
}

} // namespace ImportExport
} // namespace VeltoGis

namespace refhost {

using namespace VeltoGis::ImportExport;

boost::shared_ptr<IImportEngine> FindImporter(const WString& id) { return FindLast(TheRegistry().importers, id); }

boost::shared_ptr<IExportEngine> FindExporter(const WString& id) { return FindLast(TheRegistry().exporters, id); }

const std::vector<boost::shared_ptr<IImportEngine>>& Importers() { return TheRegistry().importers; }

const std::vector<boost::shared_ptr<IExportEngine>>& Exporters() { return TheRegistry().exporters; }

int UserDataCount(const CImportDefinition* definition)
{
    const auto& userData = TheRegistry().userData;
    return static_cast<int>(std::count(userData.begin(), userData.end(), definition));
}

const std::vector<WString>& EngineRegistrations() { return TheRegistry().registrations; }

void ClearEngines() { TheRegistry() = Registry(); }

} // namespace refhost
