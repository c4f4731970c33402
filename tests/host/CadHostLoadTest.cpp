// The whole life of the module in a CAD application: started, asked for its plug-in info,
// engines registered and driven through their interfaces, stopped.

#include "LoadedModule.h"

#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"
#include "refhost/testing/JobBuilders.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>

namespace {

using namespace VeltoGis::ImportExport;
using refhost::testing::W;

std::string ImportConfiguration(const std::string& path)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?><cfg txtFile=\"" + path +
           "\" delimiter=\";\" comments=\"#\" mode=\"0\" colPositions=\"\">"
           "<col no=\"0\" name=\"Name\" type=\"5005\" onOff=\"1\"/>"
           "<col no=\"1\" name=\"X\" type=\"5001\" onOff=\"1\"/>"
           "<col no=\"2\" name=\"Y\" type=\"5001\" onOff=\"1\"/>"
           "<col no=\"3\" name=\"Code\" type=\"5010\" onOff=\"1\"/></cfg>";
}

TEST(CadHostLoad, StartedModuleRegistersEnginesThatImportAndExportAFile)
{
    refhost::ClearEngines();
    CadShim::ClearRecordings();
    int appData = 0;
    ASSERT_EQ(Module().acrxEntryPoint(AcRx::kInitAppMsg, &appData), AcRx::kRetOK);

    IImpexPluginInfo* info = Module().GetVeltoImpexPluginInfo();
    ASSERT_NE(info, nullptr);
    info->RegisterEngines();
    const boost::shared_ptr<IImportEngine> importer = refhost::FindImporter(W("IMPORT_TXT"));
    const boost::shared_ptr<IExportEngine> exporter = refhost::FindExporter(W("EXPORT_TXT"));
    ASSERT_TRUE(importer);
    ASSERT_TRUE(exporter);

    refhost::testing::TempDir dir;
    dir.WriteFile("survey.txt", "# name;x;y;code\r\nP1;100.5;200.25;7\r\nP2;1.5;2;8\r\n");
    CImportDefinition import = refhost::testing::MakeImportDefinition(
        VeltoGis::EntityTypePoint, W(ImportConfiguration(dir.Path() + "/survey.txt")),
        {{"Name", "ENTITY_NAME"}, {"X", "NODE_COORDINATE_X"}, {"Y", "NODE_COORDINATE_Y"}, {"Code", "CODE"}});
    ImpexEntityList points;
    ASSERT_EQ(importer->ImportPoints(&import, points, 0, nullptr), 1);
    ASSERT_EQ(points.size(), 2u);

    CExportDefinition job = refhost::testing::MakeExportDefinition(
        VeltoGis::EntityTypePoint, WString(), {{"Name", "NAME"}, {"X", "X"}, {"Y", "Y"}, {"Code", "CODE"}});
    ASSERT_EQ(exporter->SetPrimaryFilePath(&job, dir.FilePath("points.txt").c_str()), 1);
    ASSERT_EQ(exporter->ExportPoints(&job, points), 1);
    const std::string exported = "#NAME\tX\tY\tCODE\r\nP1\t100.5\t200.25\t7\r\nP2\t1.5\t2\t8\r\n";
    EXPECT_EQ(dir.ReadFile("points.txt"), exported);

    // Without dialogs the module asks on the CAD command line what to do with the file.
    CadShim::QueueKeywordAnswers({W("Append")});
    ASSERT_EQ(exporter->ExportPoints(&job, points), 1);
    EXPECT_EQ(dir.ReadFile("points.txt"), exported + exported);
    EXPECT_EQ(CadShim::RecordedPrompts().size(), 1u);

    EXPECT_EQ(Module().acrxEntryPoint(AcRx::kUnloadAppMsg, &appData), AcRx::kRetOK);
    EXPECT_EQ(refhost::FindExporter(W("EXPORT_TXT")), exporter) << "stopping leaves the engines registered";
    EXPECT_EQ(refhost::FindImporter(W("IMPORT_TXT")), importer);
    refhost::ClearEngines();
}

} // namespace
