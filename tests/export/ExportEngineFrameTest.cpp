// The export engine as the framework sees it apart from writing: identity, description,
// file paths, filter and configure dialog.

#include "ExportTestSupport.h"

#include "host/GisUtility.h"
#include "refhost/HostSide.h"

#include <gtest/gtest.h>

using namespace exporttest;

namespace {

WString Msg(unsigned id) { return VeltoGis::CModuleConfiguration::Instance()->GetMsg(id); }

WString ConfigurationWith(const std::string& path, const std::string& delimiter)
{
    Settings settings;
    settings.delimiter = delimiter;
    return ConfigurationFor(W(path), settings);
}

CExportDefinition TwoConfigurations()
{
    CExportDefinition definition;
    definition.SetExporterConfiguration(ConfigurationWith("/data/main.txt", ";").c_str());
    definition.SetExporterConfigurationNode(ConfigurationWith("/data/node.txt", ", ").c_str());
    return definition;
}

TEST(ExportEngineFrame, FixedAnswersAndHostTexts)
{
    CExportEngine_Txt engine;
    EXPECT_EQ(refhost::EngineIdOf(engine), W("EXPORT_TXT"));
    EXPECT_EQ(refhost::EngineNameOf(engine), Msg(7866));
    EXPECT_EQ(refhost::EngineDescriptionOf(engine), Msg(7866));
    EXPECT_EQ(refhost::EngineMaskOf(engine), 4369u);
    EXPECT_EQ(engine.GetFileFilter(), W("TXT (*.txt)|*.txt||"));
    const struct {
        const char* slot;
        int (CExportEngine_Txt::*answer)();
        int expected;
    } answers[] = {
        {"3", &CExportEngine_Txt::ExportCapability3, 1},   {"7", &CExportEngine_Txt::ExportCapability7, 0},
        {"8", &CExportEngine_Txt::ExportCapability8, 1},   {"10", &CExportEngine_Txt::ExportCapability10, 0},
        {"11", &CExportEngine_Txt::ExportCapability11, 0}, {"12", &CExportEngine_Txt::ExportCapability12, 0},
        {"16", &CExportEngine_Txt::ExportCapability16, 0}, {"17", &CExportEngine_Txt::ExportCapability17, 1},
    };
    for (const auto& answer : answers)
        EXPECT_EQ((engine.*answer.answer)(), answer.expected) << "slot " << answer.slot;
    WString name = W("stale");
    engine.GetExportEntityName(name, W("Pt 7/ä").c_str());
    EXPECT_EQ(name, W("Pt 7/ä"));
    // Preparing reads both configurations, refuses nothing and changes nothing.
    CExportDefinition broken;
    broken.SetExporterConfiguration(W("<cfg").c_str());
    EXPECT_EQ(engine.PrepareExport(&broken), 1);
    EXPECT_EQ(broken.GetExporterConfiguration(), W("<cfg"));
    EXPECT_EQ(broken.GetExporterConfigurationNode(), W(""));
    EXPECT_EQ(engine.PrepareExport(nullptr), 1);
    engine.ExportNotify13();
    engine.ExportNotify14();
}

TEST(ExportEngineFrame, DescriptionNamesFileAndDelimiterOfTheChosenConfiguration)
{
    CExportEngine_Txt engine;
    CExportDefinition definition = TwoConfigurations();
    CExportDefinition empty;
    WString description;
    engine.GetDescription(description, &definition, 0);
    EXPECT_EQ(description, Msg(4563) + W(": /data/main.txt \r\n") + Msg(3207) + W(": ;"));
    engine.GetDescription(description, &definition, 5);
    EXPECT_EQ(description, Msg(4563) + W(": /data/node.txt \r\n") + Msg(3207) + W(": , "));
    engine.GetDescription(description, &empty, 0);
    EXPECT_EQ(description, Msg(4563) + W(":  \r\n") + Msg(3207) + W(": \t")) << "the defaults";
    engine.GetDescription(description, nullptr, 0);
    EXPECT_EQ(description, W(""));
}

// A path set where the configuration is empty comes with the defaults; one that does not
// parse reads as no path.
TEST(ExportEngineFrame, FilePathsAreReadAndWrittenThroughTheirOwnConfiguration)
{
    CExportEngine_Txt engine;
    CExportDefinition definition = TwoConfigurations();
    EXPECT_EQ(engine.GetPrimaryFilePath(&definition), W("/data/main.txt"));
    EXPECT_EQ(engine.GetSecondaryFilePath(&definition), W("/data/node.txt"));
    EXPECT_EQ(engine.GetPrimaryFilePath(nullptr), W(""));
    EXPECT_EQ(engine.GetSecondaryFilePath(nullptr), W(""));
    EXPECT_EQ(engine.SetPrimaryFilePath(&definition, W("/new/a & \"b\".txt").c_str()), 1);
    EXPECT_EQ(definition.GetExporterConfiguration(), ConfigurationWith("/new/a & \"b\".txt", ";"));
    EXPECT_EQ(engine.SetSecondaryFilePath(&definition, W("/new/n.txt").c_str()), 1);
    EXPECT_EQ(definition.GetExporterConfigurationNode(), ConfigurationWith("/new/n.txt", ", "));

    CExportDefinition broken;
    broken.SetExporterConfiguration(W("<cfg").c_str());
    EXPECT_EQ(engine.GetPrimaryFilePath(&broken), W(""));
    CExportDefinition empty;
    EXPECT_EQ(engine.SetPrimaryFilePath(&empty, W("/out.txt").c_str()), 1);
    EXPECT_EQ(empty.GetExporterConfiguration(), ConfigurationFor(W("/out.txt")));
    EXPECT_EQ(empty.GetExporterConfigurationNode(), W(""));
}

TEST(ExportEngineFrame, RefusedPathEditLeavesConfigurationUntouched)
{
    CExportEngine_Txt engine;
    CExportDefinition definition = TwoConfigurations();
    const CExportDefinition before = definition;
    refhost::SetAllowPrimaryFilePathEdit(definition, 0);
    refhost::SetAllowSecondaryFilePathEdit(definition, 0);
    EXPECT_EQ(engine.SetPrimaryFilePath(&definition, W("/x.txt").c_str()), 0);
    EXPECT_EQ(engine.SetSecondaryFilePath(&definition, W("/x.txt").c_str()), 0);
    EXPECT_EQ(definition.GetExporterConfiguration(), before.GetExporterConfiguration());
    EXPECT_EQ(definition.GetExporterConfigurationNode(), before.GetExporterConfigurationNode());
    EXPECT_EQ(engine.SetPrimaryFilePath(nullptr, W("/x.txt").c_str()), 0);
    EXPECT_EQ(engine.SetSecondaryFilePath(nullptr, W("/x.txt").c_str()), 0);
}

TEST(ExportEngineFrame, ConfigureRunsTheDialogInsideTheDocumentBracket)
{
    CExportEngine_Txt engine;
    CExportDefinition definition;
    ScriptedDialogs dialogs;
    const struct {
        int modalResult, secondary, expected;
    } cases[] = {{ModalResultOk, 0, 1}, {ModalResultCancel, 1, 0}, {7, 0, 0}};
    for (const auto& c : cases) {
        CadShim::ClearRecordings();
        dialogs.configured.clear();
        dialogs.documentCallsBefore.clear();
        dialogs.configureResult = c.modalResult;
        EXPECT_EQ(engine.Configure(&definition, c.secondary), c.expected) << "modal result " << c.modalResult;
        ASSERT_EQ(dialogs.configured.size(), 1u);
        EXPECT_EQ(dialogs.configured[0], std::make_pair(&definition, c.secondary));
        const auto& calls = CadShim::DocumentManagerCalls();
        ASSERT_EQ(calls.size(), 2u);
        EXPECT_EQ(calls[0].kind, CadShim::DocumentCall::Kind::Lock);
        EXPECT_EQ(calls[1].kind, CadShim::DocumentCall::Kind::Unlock);
        EXPECT_EQ(dialogs.documentCallsBefore, std::vector<std::size_t>{1}) << "the dialog runs while locked";
    }
    CadShim::ClearRecordings();
    dialogs.configured.clear();
    EXPECT_EQ(engine.Configure(nullptr, 0), 0);
    EXPECT_TRUE(dialogs.configured.empty());
    EXPECT_TRUE(CadShim::DocumentManagerCalls().empty());
}

} // namespace
