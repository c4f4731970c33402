#include "ImportTestSupport.h"

#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"
#include "ui/DialogFactory.h"

#include <cctype>

using namespace importtest;
using namespace VeltoGis::ImportExport;

namespace {

const Layout kColumns{{";"}, "#", 0, {},
                      {{0, "name", Text}, {1, "x", Real, 0}, {2, "code", Integer}, {3, "name", Real}, {4, "odd", 7}}};

// Answers the import dialog as told; on OK stores a configuration, as the dialog does.
class ScriptedDialogs final : public DialogFactory {
public:
    int answer = ModalResultOk;
    Texts calls; // "secondary:path", plus "locked" when the document was locked meanwhile

    int RunImportConfiguration(CImportDefinition* definition, int secondary, const WChar* filePath) override
    {
        const bool locked = CadShim::DocumentManagerCalls().size() == 1;
        calls.push_back(std::to_string(secondary) + ":" + (filePath ? U8(filePath) : "-") + (locked ? " locked" : ""));
        if (answer == ModalResultOk && secondary)
            definition->SetImporterConfigurationNode(WTEXT("<cfg txtFile=\"node\"/>"));
        else if (answer == ModalResultOk)
            definition->SetImporterConfiguration(WTEXT("<cfg txtFile=\"primary\"/>"));
        return answer;
    }
    int RunExportConfiguration(CExportDefinition*, int) override { return ModalResultCancel; }
    int RunFileChoice(const WChar*) override { return FileChoiceCancel; }
};

class ImportEngineFrame : public ImportTest {
protected:
    void SetUp() override
    {
        ImportTest::SetUp();
        previous = InstallDialogFactory(&dialogs);
    }
    void TearDown() override
    {
        InstallDialogFactory(previous);
        ImportTest::TearDown();
    }
    // Lock, then unlock of the same document; "none" when the document manager was not asked.
    static std::string DocumentBracket()
    {
        const auto& calls = CadShim::DocumentManagerCalls();
        if (calls.empty())
            return "none";
        const bool bracket = calls.size() == 2 && calls[0].kind == CadShim::DocumentCall::Kind::Lock &&
                             calls[1].kind == CadShim::DocumentCall::Kind::Unlock &&
                             calls[0].document == calls[1].document;
        return bracket ? "lock-unlock" : "unbalanced";
    }
    CImportDefinition job = refhost::testing::MakeImportDefinition(
        VeltoGis::EntityTypePoint, ConfigurationXml(W("/data/ä b.txt"), kColumns), {});
    ScriptedDialogs dialogs;
    DialogFactory* previous = nullptr;
};

} // namespace

TEST_F(ImportEngineFrame, FixedAnswersAndHostTexts)
{
    EXPECT_EQ(U8(refhost::EngineIdOf(engine)), "IMPORT_TXT");
    EXPECT_EQ(refhost::EngineNameOf(engine), Msg(7873));
    EXPECT_EQ(refhost::EngineDescriptionOf(engine), Msg(7874));
    EXPECT_EQ(refhost::EngineMaskOf(engine), 4915u);
    EXPECT_EQ((std::vector<int>{engine.ImportCapability2(), engine.ImportCapability15(), engine.ImportCapability17(),
                                engine.ImportCapability20()}),
              (std::vector<int>{1, 0, 0, 1}));
    EXPECT_FALSE(engine.GetImportExtension());
    const int before = refhost::UserDataCount(&job);
    EXPECT_EQ(engine.PrepareImport(&job), 1);
    EXPECT_EQ(refhost::UserDataCount(&job), before + 1);
    EXPECT_EQ(engine.PrepareImport(nullptr), 1);
}

TEST_F(ImportEngineFrame, SourceFieldsAndDescriptionComeFromTheChosenConfiguration)
{
    DataDefinitionList fields;
    engine.GetSourceDataDefinitions(&job, fields, 0);
    Texts described;
    for (const auto& field : fields)
        described.push_back(U8(field->GetDataID()) + "|" + U8(field->GetName()) + "|" +
                            std::to_string(field->GetDataType()));
    EXPECT_EQ(described, (Texts{"name|name|5005", "code|code|5010", "name|name|5001", "odd|odd|7"}));
    fields.clear();
    engine.GetSourceDataDefinitions(&job, fields, 1); // the secondary configuration is empty
    engine.GetSourceDataDefinitions(nullptr, fields, 0);
    EXPECT_TRUE(fields.empty());

    WString description = W("stale");
    engine.GetDescription(description, &job, 0);
    EXPECT_EQ(U8(description), U8(Msg(250)) + ":/data/ä b.txt");
    engine.GetDescription(description, &job, 1);
    EXPECT_EQ(U8(description), "");
}

TEST_F(ImportEngineFrame, FilePathsAreReadAndWrittenThroughTheChosenConfiguration)
{
    job.SetImporterConfigurationNode(WTEXT("garbage"));
    EXPECT_EQ(U8(engine.GetPrimaryFilePath(&job)), "/data/ä b.txt");
    EXPECT_EQ(U8(engine.GetSecondaryFilePath(&job)), "");
    EXPECT_EQ(U8(engine.GetPrimaryFilePath(nullptr)), "");

    ASSERT_EQ(engine.SetPrimaryFilePath(&job, W("/data/say \"hi\".txt").c_str()), 1);
    EXPECT_EQ(U8(engine.GetPrimaryFilePath(&job)), "/data/say \"hi\".txt");
    DataDefinitionList fields; // the columns survive the rewrite
    engine.GetSourceDataDefinitions(&job, fields, 0);
    EXPECT_EQ(fields.size(), 4u);
    ASSERT_EQ(engine.SetSecondaryFilePath(&job, WTEXT("/data/nodes.txt")), 1); // unparsable: from the defaults
    EXPECT_EQ(U8(engine.GetSecondaryFilePath(&job)), "/data/nodes.txt");

    const WString primary = job.GetImporterConfiguration(), secondary = job.GetImporterConfigurationNode();
    refhost::SetAllowPrimaryFilePathEdit(job, 0);
    refhost::SetAllowSecondaryFilePathEdit(job, 0);
    EXPECT_EQ(engine.SetPrimaryFilePath(&job, WTEXT("/elsewhere.txt")), 0);
    EXPECT_EQ(engine.SetSecondaryFilePath(&job, WTEXT("/elsewhere.txt")), 0);
    EXPECT_EQ(engine.SetPrimaryFilePath(nullptr, WTEXT("/x.txt")), 0);
    EXPECT_EQ(job.GetImporterConfiguration(), primary);
    EXPECT_EQ(job.GetImporterConfigurationNode(), secondary);
}

TEST_F(ImportEngineFrame, ConfigureRunsTheDialogWithTheDocumentLocked)
{
    EXPECT_EQ(engine.Configure(&job, 1), 1);
    EXPECT_EQ(DocumentBracket(), "lock-unlock");
    EXPECT_EQ(U8(job.GetImporterConfigurationNode()), "<cfg txtFile=\"node\"/>");
    CadShim::ClearRecordings();
    dialogs.answer = ModalResultCancel;
    EXPECT_EQ(engine.Configure(&job, 0), 0);
    EXPECT_EQ(DocumentBracket(), "lock-unlock");
    EXPECT_EQ(dialogs.calls, (Texts{"1:- locked", "0:- locked"}));
    CadShim::ClearRecordings();
    EXPECT_EQ(engine.Configure(nullptr, 0), 0);
    EXPECT_EQ(DocumentBracket(), "none");
}

TEST_F(ImportEngineFrame, ConfigureForFileAcceptsOnlyKnownExtensionsInAnyCase)
{
    std::vector<std::pair<std::string, bool>> cases;
    for (std::string extension : {"txt", "toc", "pt", "uzd", "xyz", "kol", "niv", "kr", "okn", "pad", "sys", "ter", "vnv"}) {
        cases.emplace_back("/data/a." + extension, true);
        for (char& c : extension)
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        cases.emplace_back("c:\\m\\A." + extension, true);
    }
    // The text after the last dot anywhere in the path is the extension.
    for (const char* refused : {"/data/a.csv", "/data/survey", "/d.txt/survey", "/data/a.txt.bak", "/data/a.", "",
                                "/data/a.tx", "/data/a.txtx"})
        cases.emplace_back(refused, false);
    for (const auto& [path, accepted] : cases) {
        CadShim::ClearRecordings();
        dialogs.calls.clear();
        WString configuration = W("untouched");
        EXPECT_EQ(engine.ConfigureForFile(&job, W(path).c_str(), configuration, 0), accepted ? 1 : 0) << path;
        EXPECT_EQ(DocumentBracket(), accepted ? "lock-unlock" : "none") << path;
        EXPECT_EQ(dialogs.calls, accepted ? (Texts{"0:" + path + " locked"}) : Texts{}) << path;
        EXPECT_EQ(U8(configuration), accepted ? "<cfg txtFile=\"primary\"/>" : "untouched") << path;
    }
}

// On OK the configuration the dialog stored is handed back: the node one for the secondary file.
TEST_F(ImportEngineFrame, ConfigureForFileHandsBackTheChosenConfigurationOnlyOnOk)
{
    const WString primary = job.GetImporterConfiguration();
    WString configuration;
    EXPECT_EQ(engine.ConfigureForFile(&job, WTEXT("/data/nodes.xyz"), configuration, 2), 1);
    EXPECT_EQ(U8(configuration), "<cfg txtFile=\"node\"/>");
    EXPECT_EQ(job.GetImporterConfiguration(), primary);
    dialogs.answer = ModalResultCancel;
    CadShim::ClearRecordings();
    configuration = W("untouched");
    EXPECT_EQ(engine.ConfigureForFile(&job, WTEXT("/data/a.txt"), configuration, 1), 0);
    EXPECT_EQ(engine.ConfigureForFile(nullptr, WTEXT("/data/a.txt"), configuration, 0), 0);
    EXPECT_EQ(U8(configuration), "untouched");
    EXPECT_EQ(dialogs.calls, (Texts{"2:/data/nodes.xyz locked", "1:/data/a.txt locked"}));
}
