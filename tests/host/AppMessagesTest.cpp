// The application object's answers to the CAD application's messages, sent through the
// module's acrxEntryPoint.

#include "LoadedModule.h"

#include "refhost/CadShimRecording.h"

#include <gtest/gtest.h>

#include <array>

namespace {

// What one message made the module ask of the CAD application: linker calls, class
// hierarchy builds, class branch deletions, command stack calls, defined scripting
// functions, document manager calls, alerts.
using Effects = std::array<long, 7>;

Effects Recorded()
{
    return {static_cast<long>(CadShim::LinkerCalls().size()),        CadShim::ClassHierarchyBuildCount(),
            CadShim::ClassBranchDeleteCount(),                       static_cast<long>(CadShim::CommandStackCalls().size()),
            static_cast<long>(CadShim::DefinedFunctions().size()),   static_cast<long>(CadShim::DocumentManagerCalls().size()),
            static_cast<long>(CadShim::RecordedAlerts().size())};
}

constexpr Effects kNothing{0, 0, 0, 0, 0, 0, 0};
// Start: unlock and MDI-aware declarations, the class hierarchy rebuilt; the module has no
// classes, commands or functions of its own.
constexpr Effects kStart{2, 1, 0, 0, 0, 0, 0};

struct MessageCase {
    int code;
    Effects effects;
};

TEST(AppMessages, EveryCodeSucceedsAndOnlyStartReachesTheCadApplication)
{
    const MessageCase cases[] = {
        {AcRx::kNullMsg, kNothing},       {AcRx::kInitAppMsg, kStart},       {AcRx::kUnloadAppMsg, kNothing},
        {AcRx::kLoadDwgMsg, kNothing},    {AcRx::kUnloadDwgMsg, kNothing},   {AcRx::kInvkSubrMsg, kNothing},
        {AcRx::kCfgMsg, kNothing},        {AcRx::kEndMsg, kNothing},         {AcRx::kQuitMsg, kNothing},
        {AcRx::kSaveMsg, kNothing},       {AcRx::kDependencyMsg, kNothing},  {AcRx::kNoDependencyMsg, kNothing},
        {AcRx::kOleUnloadAppMsg, kNothing}, {AcRx::kPreQuitMsg, kNothing},  {AcRx::kInitDialogMsg, kNothing},
        {AcRx::kEndDialogMsg, kNothing},  {AcRx::kSuspendMsg, kNothing},
        {17, kNothing},                   {1000, kNothing},                  {-1, kNothing},
    };
    int appData = 0;
    for (const MessageCase& message : cases) {
        CadShim::ClearRecordings();
        EXPECT_EQ(Module().acrxEntryPoint(message.code, &appData), AcRx::kRetOK) << "code " << message.code;
        EXPECT_EQ(Recorded(), message.effects) << "code " << message.code;
    }
}

TEST(AppMessages, StartUnlocksAndDeclaresMdiAwarenessForTheGivenApplication)
{
    CadShim::ClearRecordings();
    int appData = 0;
    ASSERT_EQ(Module().acrxEntryPoint(AcRx::kInitAppMsg, &appData), AcRx::kRetOK);
    const auto& calls = CadShim::LinkerCalls();
    ASSERT_EQ(calls.size(), 2u);
    EXPECT_EQ(calls[0].kind, CadShim::LinkerCall::Kind::UnlockApplication);
    EXPECT_EQ(calls[0].appId, &appData);
    EXPECT_EQ(calls[1].kind, CadShim::LinkerCall::Kind::RegisterAppMDIAware);
    EXPECT_EQ(calls[1].appId, &appData);
    EXPECT_EQ(Module().acrxEntryPoint(AcRx::kUnloadAppMsg, &appData), AcRx::kRetOK);
}

TEST(AppMessages, ScriptingCallWithAnyFunctionCodeDoesNothing)
{
    int appData = 0;
    ASSERT_EQ(Module().acrxEntryPoint(AcRx::kLoadDwgMsg, &appData), AcRx::kRetOK);
    EXPECT_TRUE(CadShim::DefinedFunctions().empty()) << "the module defines no scripting functions";
    for (const int code : {0, 1, 5, 99, -3}) {
        CadShim::ClearRecordings();
        EXPECT_EQ(CadShim::InvokeFunction(code), RTERROR) << "no function is registered under " << code;
        EXPECT_EQ(Module().acrxEntryPoint(AcRx::kInvkSubrMsg, &appData), AcRx::kRetOK);
        EXPECT_EQ(Recorded(), kNothing) << "code " << code;
    }
    EXPECT_EQ(Module().acrxEntryPoint(AcRx::kUnloadDwgMsg, &appData), AcRx::kRetOK);
}

} // namespace
