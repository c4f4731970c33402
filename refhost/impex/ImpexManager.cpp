#include "host/ImpexEngines.h"
#include "refhost/ImpexManagerRecording.h"

#include <algorithm>

namespace VeltoGis {
namespace ImportExport {
namespace {

// The engine registered last under the id wins, as a module loaded later replaces an
// earlier one's engine.
template <typename Engine>
boost::shared_ptr<Engine> FindLast(const std::vector<boost::shared_ptr<Engine>>& engines, const WString& id)
{
    const auto found = std::find_if(engines.rbegin(), engines.rend(),
                                    [&id](const boost::shared_ptr<Engine>& engine) { return engine->GetEngineId() == id; });
    return found == engines.rend() ? boost::shared_ptr<Engine>() : *found;
}

std::vector<WString>& Registrations()
{
    static std::vector<WString> registrations;
    return registrations;
}

template <typename Engine>
void NoteRegistration(const WChar* kind, const boost::shared_ptr<Engine>& engine)
{
    Registrations().push_back(WString(kind) + (engine ? engine->GetEngineId() : WString()));
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
        importers_.push_back(std::move(engine));
}

void CImpexManager::RegisterExporter(boost::shared_ptr<IExportEngine> engine)
{
    NoteRegistration(WTEXT("export:"), engine);
    if (engine)
        exporters_.push_back(std::move(engine));
}

// The reference host keeps no per-job data beyond the note that the job asked for it.
int CImpexManager::CreateUserData(CImportDefinition* definition)
{
    if (!definition)
        return 0;
    userData_.push_back(definition);
    return 1;
}

boost::shared_ptr<IImportEngine> CImpexManager::FindImporter(const WString& id) const { return FindLast(importers_, id); }

boost::shared_ptr<IExportEngine> CImpexManager::FindExporter(const WString& id) const { return FindLast(exporters_, id); }

int CImpexManager::UserDataCount(const CImportDefinition* definition) const
{
    return static_cast<int>(std::count(userData_.begin(), userData_.end(), definition));
}

void CImpexManager::Clear()
{
    importers_.clear();
    exporters_.clear();
    userData_.clear();
    Registrations().clear();
}

} // namespace ImportExport
} // namespace VeltoGis

const std::vector<WString>& refhost::EngineRegistrations() { return VeltoGis::ImportExport::Registrations(); }
