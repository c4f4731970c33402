// The plug-in info object's registration as the framework's engine manager receives it. This
// program defines the manager's two registration calls itself, in place of the host
// library's, so that they record the order in which the module calls them.

#include "host/ImpexModule_Txt.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace VeltoGis::ImportExport;
using refhost::testing::U8;

namespace {

struct Registration {
    std::string call; // "importer IMPORT_TXT", "exporter EXPORT_TXT"; "... none" for an empty pointer
    boost::shared_ptr<void> engine;
};

std::vector<Registration>& Registrations()
{
    static std::vector<Registration> registrations;
    return registrations;
}

template <typename Engine>
void Record(const char* call, const boost::shared_ptr<Engine>& engine)
{
    Registrations().push_back({std::string(call) + " " + (engine ? U8(engine->GetEngineId()) : "none"), engine});
}

} // namespace

void CImpexManager::RegisterImporter(boost::shared_ptr<IImportEngine> engine) { Record("importer", engine); }
void CImpexManager::RegisterExporter(boost::shared_ptr<IExportEngine> engine) { Record("exporter", engine); }

namespace {

// Every call registers a fresh pair; the module keeps no reference of its own.
TEST(EngineRegistration, ImporterFirstThenExporterEachTimeAndTheManagerHoldsTheOnlyReference)
{
    Registrations().clear();
    CImpexModule_Txt::Instance()->RegisterEngines();
    CImpexModule_Txt::Instance()->RegisterEngines();
    std::vector<std::string> calls;
    for (const Registration& registration : Registrations()) {
        calls.push_back(registration.call);
        EXPECT_EQ(registration.engine.use_count(), 1) << registration.call;
    }
    EXPECT_EQ(calls, (std::vector<std::string>{"importer IMPORT_TXT", "exporter EXPORT_TXT", "importer IMPORT_TXT",
                                               "exporter EXPORT_TXT"}));
    Registrations().clear();
}

} // namespace
