// The module's exported functions as the CAD application and the GIS framework call them.

#include "LoadedModule.h"

#include "refhost/testing/TestText.h"

#include "refhost/EngineRegistry.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(ModuleEntryPoints, OnlyTheEntryPointsAndTheImportAccountLeaveTheModule)
{
    std::vector<std::string> exported = ExportedSymbols(TESSEL_MODULE_PATH);
    std::sort(exported.begin(), exported.end());
    const std::vector<std::string> expected = {"GetVeltoImpexPluginInfo", "TesselLastImportAccount", "acrxEntryPoint",
                                               "acrxGetApiVersion", "odrxCreateModuleObject", "odrxGetAPIVersion"};
    EXPECT_EQ(exported, expected);
}

TEST(ModuleEntryPoints, BothApiVersionsAre3_9_0_0)
{
    for (auto* version : {Module().acrxGetApiVersion, Module().odrxGetAPIVersion}) {
        int major = -1, minor = -1, build = -1, revision = -1;
        version(&major, &minor, &build, &revision);
        EXPECT_EQ(major, 3);
        EXPECT_EQ(minor, 9);
        EXPECT_EQ(build, 0);
        EXPECT_EQ(revision, 0);
    }
}

TEST(ModuleEntryPoints, ModuleObjectIsCreatedOnceFromTheFirstRecord)
{
    int handle = 0;
    OdRxModuleRecord first;
    first.moduleName = WTEXT("VeltoXTessel");
    first.moduleHandle = &handle;
    OdRxModule* module = Module().odrxCreateModuleObject(&first);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(module->moduleName(), refhost::testing::W("VeltoXTessel"));
    EXPECT_EQ(module->moduleHandle(), &handle);

    OdRxModuleRecord second;
    second.moduleName = WTEXT("other");
    EXPECT_EQ(Module().odrxCreateModuleObject(&second), module);
    EXPECT_EQ(module->moduleName(), refhost::testing::W("VeltoXTessel"));
}

TEST(ModuleEntryPoints, PluginInfoIsTheSameObjectEveryTime)
{
    VeltoGis::ImportExport::IImpexPluginInfo* info = Module().GetVeltoImpexPluginInfo();
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(Module().GetVeltoImpexPluginInfo(), info);
}

} // namespace

TEST(ModuleEntryPoints, EveryRegistrationAddsAFreshPairOfEnginesImporterFirst)
{
    using VeltoGis::ImportExport::CImpexManager;
    using refhost::testing::W;
    refhost::ClearEngines();
    Module().GetVeltoImpexPluginInfo()->RegisterEngines();
    Module().GetVeltoImpexPluginInfo()->RegisterEngines();
    ASSERT_EQ(refhost::Importers().size(), 2u);
    EXPECT_NE(refhost::Importers()[0], refhost::Importers()[1]);
    EXPECT_EQ(refhost::EngineRegistrations(),
              (std::vector<WString>{W("import:IMPORT_TXT"), W("export:EXPORT_TXT"), W("import:IMPORT_TXT"),
                                    W("export:EXPORT_TXT")}));
    refhost::ClearEngines();
}
