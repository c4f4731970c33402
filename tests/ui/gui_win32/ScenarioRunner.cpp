// The shared dialog scenarios (tests/ui/scenarios) played on the Win32 views with window
// messages: each row is one test, named after the row, held to the same results and stored
// configurations as on Linux. The import wizard's rows join once its Win32 view is built.

#include "DrivenDialog.h"

#include "../scenarios/DialogScenarios.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/win32/DlgFileChoice.h"
#include "ui/win32/DlgTxtConfigurationExport.h"
#include "ui/win32/Win32.h"

#include <gtest/gtest.h>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CExportDefinition;

namespace {

class ScenarioPlayer {
public:
    ScenarioPlayer(const DialogScenario& scenario, std::string file, std::string folder)
        : scenario_(scenario), file_(std::move(file)), folder_(std::move(folder))
    {
    }

    std::string Paths(const std::string& text) const { return SubstitutePaths(text, file_, folder_); }

    void Play(const DrivenDialog& dialog)
    {
        for (std::size_t i = 0; i < scenario_.steps.size() && !::testing::Test::HasFatalFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i + 1));
            if (i + 1 == scenario_.steps.size())
                dialog.Screenshot(std::string("scenario-") + scenario_.name);
            PlayStep(dialog, scenario_.steps[i]);
        }
    }

    std::size_t AlertsSeen() const { return alertsSeen_; }

private:
    void PlayStep(const DrivenDialog& dialog, const ScenarioStep& step)
    {
        const WString text = W(Paths(step.text));
        switch (step.kind) {
        case ScenarioStep::TypeText: dialog.TypeText(step.control, text); break;
        case ScenarioStep::Click: dialog.Click(step.control); break;
        case ScenarioStep::PressEnter: dialog.PressKey(VK_RETURN); break;
        case ScenarioStep::PressEscape: dialog.PressKey(VK_ESCAPE); break;
        case ScenarioStep::ExpectEnabled: EXPECT_TRUE(dialog.IsEnabled(step.control)) << step.control; break;
        case ScenarioStep::ExpectDisabled: EXPECT_FALSE(dialog.IsEnabled(step.control)) << step.control; break;
        case ScenarioStep::ExpectText: EXPECT_EQ(U8(dialog.Text(step.control)), U8(text)); break;
        case ScenarioStep::ExpectTextIncludes:
            EXPECT_NE(dialog.Text(step.control).find(text), WString::npos) << U8(text);
            break;
        case ScenarioStep::ExpectChecked: EXPECT_TRUE(dialog.IsChecked(step.control)) << step.control; break;
        case ScenarioStep::ExpectUnchecked: EXPECT_FALSE(dialog.IsChecked(step.control)) << step.control; break;
        case ScenarioStep::ExpectAlert:
            ExpectAlert(dialog, static_cast<MessageId>(step.control), Paths(step.text));
            break;
        case ScenarioStep::ExpectDialogOpen: EXPECT_TRUE(dialog.IsOpen()); break;
        default: ADD_FAILURE() << "a step of the import wizard in a scenario of dialog " << scenario_.dialog;
        }
    }

    void ExpectAlert(const DrivenDialog& dialog, MessageId message, const std::string& argument)
    {
        // Alerts are given in the dialog's thread: read them there.
        std::vector<WString> alerts;
        dialog.InDialogThread([&] { alerts = CadShim::RecordedAlerts(); });
        ASSERT_LT(alertsSeen_, alerts.size()) << "no alert given";
        EXPECT_EQ(U8(alerts[alertsSeen_++]), U8(FormatWide(LoadMessage(message), {W(argument)})));
    }

    const DialogScenario& scenario_;
    std::string file_;
    std::string folder_;
    std::size_t alertsSeen_ = 0;
};

std::vector<DialogScenario> Win32Scenarios()
{
    std::vector<DialogScenario> rows;
    for (const DialogScenario& scenario : DialogScenarios()) {
        if (scenario.dialog != kImportDialogId)
            rows.push_back(scenario);
    }
    return rows;
}

class DialogScenarioTest : public ::testing::TestWithParam<DialogScenario> {
protected:
    void SetUp() override
    {
        CadShim::ClearRecordings();
        CadShim::ClearRecordedDialogs();
    }
};

} // namespace

// Failures name the scenario, not its bytes.
void PrintTo(const DialogScenario& scenario, std::ostream* out) { *out << scenario.name; }

TEST_P(DialogScenarioTest, PlayedWithWindowMessages)
{
    const DialogScenario& scenario = GetParam();
    refhost::testing::TempDir folder;
    ScenarioPlayer player(scenario, U8(folder.FilePath(scenario.fileName)), folder.Path());

    CExportDefinition definition;
    const WString before = W(player.Paths(scenario.storedBefore));
    if (scenario.node)
        definition.SetExporterConfigurationNode(before.c_str());
    else
        definition.SetExporterConfiguration(before.c_str());

    const int result = RunDriven(
        [&] {
            if (scenario.dialog == kExportDialogId)
                return CDlgTxtConfigurationExport(definition, scenario.node).DoModal();
            CDlgFileChoice dialog;
            dialog.SetFilePath(W(player.Paths(scenario.path)));
            return dialog.DoModal();
        },
        [&](const DrivenDialog& dialog) { player.Play(dialog); });
    EXPECT_EQ(result, scenario.result);

    const std::string expected = player.Paths(scenario.storedAfter.empty() ? scenario.storedBefore : scenario.storedAfter);
    if (scenario.dialog == kExportDialogId) {
        EXPECT_EQ(U8(scenario.node ? definition.GetExporterConfigurationNode() : definition.GetExporterConfiguration()),
                  expected);
    }
    EXPECT_EQ(CadShim::RecordedAlerts().size(), player.AlertsSeen()) << "alerts the scenario did not expect";
}

INSTANTIATE_TEST_SUITE_P(Table, DialogScenarioTest, ::testing::ValuesIn(Win32Scenarios()),
                         [](const ::testing::TestParamInfo<DialogScenario>& info) { return info.param.name; });
