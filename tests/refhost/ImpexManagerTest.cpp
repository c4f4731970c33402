#include "host/ImpexEngines.h"
#include "refhost/testing/JobBuilders.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>

using namespace VeltoGis::ImportExport;

namespace {

// Engines that only carry the base class's behaviour and a tag to tell them apart.
class BareImportEngine : public IImportEngine {
public:
    explicit BareImportEngine(const WChar* id) : IImportEngine(id, WTEXT("name"), WTEXT("description"), 0, 4915, 0, WTEXT("")) {}
    int PrepareImport(CImportDefinition*) override { return 1; }
    int ImportCapability2() override { return 1; }
    int ImportPoints(CImportDefinition*, ImpexEntityList&, int, CLq*) override { return 0; }
    int ImportLines(CImportDefinition*, ImpexEntityList&) override { return 0; }
    int ImportPolygons(CImportDefinition*, ImpexEntityList&) override { return 0; }
    int UpdateLinkedTableRows(const WChar*, boost::shared_ptr<CDBTable>, const CDataBox*) override { return 0; }
    int ImportLinkedTableRows(const WChar*, boost::shared_ptr<CDBTable>, const KeySet&) override { return 0; }
    int ImportTableRows(const WChar*, boost::shared_ptr<CDBTable>, int) override { return 0; }
    int ImportCloud(CImportDefinition*, boost::shared_ptr<CCloud>) override { return 0; }
    boost::shared_ptr<CImportExtension> GetImportExtension() override { return {}; }
    void GetSourceDataDefinitions(CImportDefinition*, DataDefinitionList&, int) override {}
    int Configure(CImportDefinition*, int) override { return 0; }
    void GetDescription(WString&, CImportDefinition*, int) override {}
    int ValidateDefinition(CImportDefinition*, WString&) override { return 1; }
    int ImportCapability15() override { return 0; }
    int ConfigureForFile(CImportDefinition*, const WChar*, WString&, int) override { return 0; }
    int ImportCapability17() override { return 0; }
    void GetRequiredTargetIds(CImportDefinition*, TargetIdList&) override {}
    void GetExcludedTargetIds(CImportDefinition*, TargetIdList&) override {}
    int ImportCapability20() override { return 1; }
    WString GetPrimaryFilePath(CImportDefinition*) override { return {}; }
    WString GetSecondaryFilePath(CImportDefinition*) override { return {}; }
    int SetPrimaryFilePath(CImportDefinition*, const WChar*) override { return 0; }
    int SetSecondaryFilePath(CImportDefinition*, const WChar*) override { return 0; }
};

class BareExportEngine : public IExportEngine {
public:
    explicit BareExportEngine(const WChar* id) : IExportEngine(id, WTEXT("name"), WTEXT("name"), 4369, 0, 0, WTEXT("")) {}
    void GetExportEntityName(WString& exportName, const WChar* name) override { exportName = name; }
    int PrepareExport(CExportDefinition*) override { return 1; }
    int ExportCapability3() override { return 1; }
    int ExportPoints(CExportDefinition*, ImpexEntityList&) override { return 0; }
    int ExportLines(CExportDefinition*, boost::shared_ptr<VeltoGis::Topology::CEntityContainer>) override { return 0; }
    int ExportPolygons(CExportDefinition*, ImpexEntityList&) override { return 0; }
    int ExportCapability7() override { return 0; }
    int ExportCapability8() override { return 1; }
    void GetDescription(WString&, CExportDefinition*, int) override {}
    int ExportCapability10() override { return 0; }
    int ExportCapability11() override { return 0; }
    int ExportCapability12() override { return 0; }
    void ExportNotify13() override {}
    void ExportNotify14() override {}
    int Configure(CExportDefinition*, int) override { return 0; }
    int ExportCapability16() override { return 0; }
    int ExportCapability17() override { return 1; }
    WString GetPrimaryFilePath(CExportDefinition*) override { return {}; }
    WString GetSecondaryFilePath(CExportDefinition*) override { return {}; }
    int SetPrimaryFilePath(CExportDefinition*, const WChar*) override { return 0; }
    int SetSecondaryFilePath(CExportDefinition*, const WChar*) override { return 0; }
};

class ImpexManager : public ::testing::Test {
protected:
    void SetUp() override { manager->Clear(); }
    void TearDown() override { manager->Clear(); }

    CImpexManager* manager = CImpexManager::Instance();
};

} // namespace

TEST_F(ImpexManager, FindsTheEngineRegisteredLastUnderAnId)
{
    auto first = boost::make_shared<BareImportEngine>(WTEXT("IMPORT_TXT"));
    auto other = boost::make_shared<BareImportEngine>(WTEXT("IMPORT_DXF"));
    auto second = boost::make_shared<BareImportEngine>(WTEXT("IMPORT_TXT"));
    manager->RegisterImporter(first);
    manager->RegisterImporter(other);
    manager->RegisterImporter(second);
    manager->RegisterExporter(boost::make_shared<BareExportEngine>(WTEXT("EXPORT_TXT")));

    EXPECT_EQ(manager->FindImporter(WTEXT("IMPORT_TXT")), second);
    EXPECT_EQ(manager->FindImporter(WTEXT("IMPORT_DXF")), other);
    EXPECT_FALSE(manager->FindImporter(WTEXT("import_txt")));
    EXPECT_FALSE(manager->FindImporter(WTEXT("EXPORT_TXT")));
    ASSERT_TRUE(manager->FindExporter(WTEXT("EXPORT_TXT")));
    EXPECT_EQ(manager->FindExporter(WTEXT("EXPORT_TXT"))->GetEngineMask(), 4369u);
    EXPECT_EQ(manager->Importers().size(), 3u);
}

TEST_F(ImpexManager, KeepsTheEnginesAliveAndIgnoresEmptyOnes)
{
    boost::weak_ptr<IImportEngine> watched;
    {
        auto engine = boost::make_shared<BareImportEngine>(WTEXT("IMPORT_TXT"));
        watched = engine;
        manager->RegisterImporter(engine);
    }
    EXPECT_FALSE(watched.expired());
    manager->RegisterImporter(boost::shared_ptr<IImportEngine>());
    manager->RegisterExporter(boost::shared_ptr<IExportEngine>());
    EXPECT_EQ(manager->Importers().size(), 1u);
    EXPECT_TRUE(manager->Exporters().empty());
    manager->Clear();
    EXPECT_TRUE(watched.expired());
}

TEST_F(ImpexManager, CreateUserDataNotesEachJob)
{
    CImportDefinition job;
    CImportDefinition otherJob;
    EXPECT_EQ(manager->CreateUserData(&job), 1);
    EXPECT_EQ(manager->CreateUserData(&job), 1);
    EXPECT_EQ(manager->CreateUserData(nullptr), 0);
    EXPECT_EQ(manager->UserDataCount(&job), 2);
    EXPECT_EQ(manager->UserDataCount(&otherJob), 0);
}

TEST(EngineBase, PathEditingIsTheJobsAnswer)
{
    BareImportEngine importer(WTEXT("IMPORT_TXT"));
    CImportDefinition importJob;
    EXPECT_EQ(importer.AllowPrimaryFilePathEdit(&importJob), 1);
    EXPECT_EQ(importer.AllowSecondaryFilePathEdit(&importJob), 1);
    importJob.SetAllowPrimaryFilePathEdit(0);
    EXPECT_EQ(importer.AllowPrimaryFilePathEdit(&importJob), 0);
    EXPECT_EQ(importer.AllowSecondaryFilePathEdit(&importJob), 1);
    EXPECT_EQ(importer.AllowPrimaryFilePathEdit(nullptr), 0);
    EXPECT_EQ(importer.AllowSecondaryFilePathEdit(nullptr), 0);

    BareExportEngine exporter(WTEXT("EXPORT_TXT"));
    CExportDefinition exportJob;
    exportJob.SetAllowSecondaryFilePathEdit(0);
    EXPECT_EQ(exporter.AllowPrimaryFilePathEdit(&exportJob), 1);
    EXPECT_EQ(exporter.AllowSecondaryFilePathEdit(&exportJob), 0);
    EXPECT_EQ(exporter.AllowPrimaryFilePathEdit(nullptr), 0);
}

TEST(EngineBase, KeepsWhatItIsShownWithAndOffersAllFiles)
{
    BareImportEngine importer(WTEXT("IMPORT_TXT"));
    EXPECT_EQ(importer.GetEngineId(), WTEXT("IMPORT_TXT"));
    EXPECT_EQ(importer.GetEngineName(), WTEXT("name"));
    EXPECT_EQ(importer.GetEngineDescription(), WTEXT("description"));
    EXPECT_EQ(importer.GetEngineMask(), 4915u);
    EXPECT_EQ(importer.GetFileFilter(), WTEXT("All files (*.*)|*.*||"));
    EXPECT_EQ(BareExportEngine(WTEXT("EXPORT_TXT")).GetFileFilter(), WTEXT("All files (*.*)|*.*||"));
}
