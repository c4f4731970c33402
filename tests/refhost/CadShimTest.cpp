#include "host/CadPlatform.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"

#include <gtest/gtest.h>


using refhost::testing::TempDir;
using refhost::testing::W;

namespace {

class CadShimTest : public ::testing::Test {
protected:
    void SetUp() override { CadShim::ClearRecordings(); }
    void TearDown() override
    {
        CadShim::ClearRecordings();
        CadShim::SetSupportPath({});
    }
};

// Asks with the keywords as the module's file question does.
int AskKeyword(WString& answer, int resultLength = 32)
{
    acedInitGet(0, WTEXT("Overwrite Append Cancel"));
    WChar result[32] = {};
    const int status = acedGetKword(WTEXT("Overwrite? "), result, resultLength);
    answer = result;
    return status;
}

int CountedFunction() { return 77; }

} // namespace

TEST_F(CadShimTest, AlertsArePrintedAndRecorded)
{
    ::testing::internal::CaptureStderr();
    acedAlert(W("Die Datei Müller.txt fehlt").c_str());
    const std::string printed = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ(printed, "alert: Die Datei Müller.txt fehlt\n");
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 1u);
    EXPECT_EQ(CadShim::RecordedAlerts()[0], W("Die Datei Müller.txt fehlt"));
}

TEST_F(CadShimTest, DocumentManagerRecordsTheModalBracket)
{
    AcApDocManager* manager = acDocManagerPtr();
    AcApDocument* document = manager->curDocument();
    ASSERT_NE(document, nullptr);
    EXPECT_EQ(manager->lockDocument(document), 0);
    EXPECT_EQ(manager->unlockDocument(document), 0);
    EXPECT_NE(manager->lockDocument(nullptr), 0);

    const auto& calls = CadShim::DocumentManagerCalls();
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].kind, CadShim::DocumentCall::Kind::Lock);
    EXPECT_EQ(calls[0].document, document);
    EXPECT_EQ(calls[1].kind, CadShim::DocumentCall::Kind::Unlock);
    EXPECT_EQ(calls[2].document, nullptr);
}

TEST_F(CadShimTest, RegistryGivesTheLinkerAndTheCommandStack)
{
    AcRxDictionary* registry = acrxSysRegistry();
    auto* linker = dynamic_cast<AcRxDynamicLinker*>(registry->at(WTEXT("DynamicLinker")));
    auto* commands = dynamic_cast<AcEdCommandStack*>(registry->at(WTEXT("ACAD_REGISTERED_COMMANDS")));
    ASSERT_NE(linker, nullptr);
    ASSERT_NE(commands, nullptr);
    EXPECT_EQ(registry->at(WTEXT("dynamiclinker")), nullptr);
    EXPECT_EQ(registry->at(nullptr), nullptr);

    int appData = 0;
    EXPECT_TRUE(linker->unlockApplication(&appData));
    EXPECT_TRUE(linker->registerAppMDIAware(&appData));
    const auto& calls = CadShim::LinkerCalls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].kind, CadShim::LinkerCall::Kind::UnlockApplication);
    EXPECT_EQ(calls[1].kind, CadShim::LinkerCall::Kind::RegisterAppMDIAware);
    EXPECT_EQ(calls[1].appId, &appData);
}

TEST_F(CadShimTest, CommandStackAddsAndRemovesGroups)
{
    auto* commands = dynamic_cast<AcEdCommandStack*>(acrxSysRegistry()->at(WTEXT("ACAD_REGISTERED_COMMANDS")));
    ASSERT_NE(commands, nullptr);
    EXPECT_EQ(commands->addCommand(WTEXT("TESSEL"), WTEXT("TXTIN"), WTEXT("TXTEIN"), 0, nullptr), 0);
    EXPECT_EQ(commands->addCommand(WTEXT("TESSEL"), WTEXT("TXTIN"), WTEXT("TXTEIN"), 0, nullptr),
              CadShim::kDuplicateCommand);
    EXPECT_EQ(commands->removeGroup(WTEXT("TESSEL")), 0);
    EXPECT_EQ(commands->removeGroup(WTEXT("TESSEL")), CadShim::kGroupNotFound);

    const auto& calls = CadShim::CommandStackCalls();
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[0].kind, CadShim::CommandStackCall::Kind::AddCommand);
    EXPECT_EQ(calls[0].localName, WTEXT("TXTEIN"));
    EXPECT_EQ(calls[2].kind, CadShim::CommandStackCall::Kind::RemoveGroup);
    EXPECT_EQ(calls[2].groupName, WTEXT("TESSEL"));
}

TEST_F(CadShimTest, ScriptingFunctionsAreDefinedInvokedAndUndefined)
{
    EXPECT_EQ(acedDefun(WTEXT("c:txtin"), 7), RTNORM);
    EXPECT_EQ(acedRegFunc(&CountedFunction, 7), RTNORM);
    ASSERT_EQ(CadShim::DefinedFunctions().size(), 1u);
    EXPECT_EQ(CadShim::DefinedFunctions()[0].name, WTEXT("c:txtin"));

    EXPECT_EQ(CadShim::InvokeFunction(7), 77);
    EXPECT_EQ(acedGetFunCode(), 7);
    EXPECT_EQ(CadShim::InvokeFunction(8), RTERROR); // nothing registered: the caller sends kInvkSubrMsg
    EXPECT_EQ(acedGetFunCode(), 8);

    EXPECT_EQ(acedUndef(WTEXT("c:txtin"), 6), RTERROR);
    EXPECT_EQ(acedUndef(WTEXT("c:txtin"), 7), RTNORM);
    EXPECT_TRUE(CadShim::DefinedFunctions().empty());
    acedRegFunc(nullptr, 7);
    EXPECT_EQ(CadShim::InvokeFunction(7), RTERROR);
}

TEST_F(CadShimTest, KeywordPromptsTakeQueuedAnswers)
{
    CadShim::QueueKeywordAnswers({WTEXT("overwrite"), WTEXT(" ap "), WTEXT(""), WTEXT("maybe")});
    WString answer;
    EXPECT_EQ(AskKeyword(answer), RTNORM);
    EXPECT_EQ(answer, WTEXT("Overwrite"));
    EXPECT_EQ(AskKeyword(answer), RTNORM);
    EXPECT_EQ(answer, WTEXT("Append"));
    EXPECT_EQ(AskKeyword(answer), RTNONE);
    EXPECT_EQ(AskKeyword(answer), RTCAN); // not a keyword, and nobody else to ask
    EXPECT_EQ(AskKeyword(answer), RTCAN); // no answers left
    ASSERT_EQ(CadShim::RecordedPrompts().size(), 5u);
    EXPECT_EQ(CadShim::RecordedPrompts()[0], WTEXT("Overwrite? "));
}

TEST_F(CadShimTest, KeywordAnswerThatDoesNotFitIsAnError)
{
    CadShim::QueueKeywordAnswers({WTEXT("Overwrite")});
    WString answer;
    EXPECT_EQ(AskKeyword(answer, 9), RTERROR);
    EXPECT_EQ(answer, WTEXT(""));
}

TEST_F(CadShimTest, FindFileSearchesTheSupportPath)
{
    TempDir folder;
    folder.WriteFile("support.txt", "x");
    WChar result[4096] = {};
    EXPECT_EQ(acedFindFile(WTEXT("support.txt"), result, 4096), RTERROR);
    CadShim::SetSupportPath({"/nonexistent", folder.Path()});
    ASSERT_EQ(acedFindFile(WTEXT("support.txt"), result, 4096), RTNORM);
    EXPECT_EQ(WString(result), folder.FilePath("support.txt"));
    EXPECT_EQ(acedFindFile(WTEXT("support.txt"), result, 4), RTERROR);
    EXPECT_EQ(acedFindFile(WTEXT("missing.txt"), result, 4096), RTERROR);
}
