// The shared dialog scenarios played on the wx views with real input: each row of
// tests/ui/scenarios/DialogScenarios.cpp is one test, named after the row.

#include "DialogDriving.h"

#include "../scenarios/DialogScenarios.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/ScopedEnvironment.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/DialogTemplates.h"
#include "ui/ImportConfigurationModel.h"
#include "ui/wx/ColumnListCtrl.h"
#include "ui/wx/DlgFileChoice.h"
#include "ui/wx/DlgTxtConfiguration.h"
#include "ui/wx/DlgTxtConfigurationExport.h"
#include "ui/wx/RulerWnd.h"

#include <gtest/gtest.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/listctrl.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CExportDefinition;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

// The wizard's column list, ruler and the column list's columns.
constexpr int kColumnListId = 104;
constexpr int kRulerId = 221;
constexpr int kNameColumn = 1, kTypeColumn = 2, kOnColumn = 3;

void Press(int key)
{
    wxUIActionSimulator simulator;
    simulator.Char(key);
    Pump();
}

void ClickPoint(wxWindow* window, const wxPoint& point)
{
    wxUIActionSimulator simulator;
    simulator.MouseMove(window->ClientToScreen(point));
    Pump(30);
    simulator.MouseClick();
    Pump();
}

ColumnListCtrl* ColumnList(wxWindow* dialog) { return dynamic_cast<ColumnListCtrl*>(Control(dialog, kColumnListId)); }

void ClickCell(ColumnListCtrl* grid, int row, int column)
{
    const wxRect cell = grid->CellToRect(row, column);
    ClickPoint(grid->GetGridWindow(),
               grid->CalcScrolledPosition(cell.GetPosition()) + wxPoint(cell.width / 2, cell.height / 2));
}

void TypeIntoCell(ColumnListCtrl* grid, int row, const std::string& text, int closingKey)
{
    ClickCell(grid, row, kNameColumn);
    wxUIActionSimulator simulator;
    simulator.Text(text.c_str());
    Pump();
    EXPECT_TRUE(grid->IsEditing()) << "typing opens the name's editor";
    Press(closingKey);
}

void ChooseType(ColumnListCtrl* grid, int row, const std::string& typeName)
{
    ClickCell(grid, row, kTypeColumn);
    ClickCell(grid, row, kTypeColumn);
    ASSERT_TRUE(PumpUntil([grid] { return grid->IsEditing(); }));
    wxGridCellEditor* editor = grid->GetCellEditor(row, kTypeColumn);
    auto* combo = dynamic_cast<wxComboBox*>(editor->GetControl());
    editor->DecRef();
    ASSERT_NE(combo, nullptr);
    // The drop-down is the toolkit's own popup, out of reach of the input simulator.
    combo->SetValue(wxString::FromUTF8(typeName));
    Press(WXK_RETURN);
    EXPECT_EQ(grid->Text(row, kTypeColumn), wxString::FromUTF8(typeName));
}

void ChooseEntry(wxWindow* dialog, int id, const wxString& entry)
{
    auto* combo = dynamic_cast<wxComboBox*>(Control(dialog, id));
    ASSERT_NE(combo, nullptr);
    Click(dialog, id);
    // The drop-down is the toolkit's own popup, out of reach of the input simulator: the entry
    // is typed, and Enter chooses it.
    combo->SetValue(entry);
    Press(WXK_RETURN);
    EXPECT_EQ(combo->GetValue(), entry);
}

void ClickRuler(wxWindow* dialog, int character)
{
    auto* ruler = dynamic_cast<CRulerWnd*>(Control(dialog, kRulerId));
    ASSERT_NE(ruler, nullptr);
    // The ruler takes a point 7 pixels right of where it draws a position as that position.
    const int x = ruler->Model().PixelOf(character + ImportConfigurationModel::kRulerToCharacter) + 7;
    ClickPoint(ruler, wxPoint(x, ruler->GetClientSize().y / 2));
}

wxString TextOf(wxWindow* control)
{
    if (auto* edit = dynamic_cast<wxTextEntry*>(control))
        return edit->GetValue();
    return control->GetLabel();
}

bool IsChecked(wxWindow* control)
{
    if (auto* box = dynamic_cast<wxCheckBox*>(control))
        return box->GetValue();
    if (auto* radio = dynamic_cast<wxRadioButton*>(control))
        return radio->GetValue();
    ADD_FAILURE() << "control " << control->GetId() << " has no check mark";
    return false;
}

// Waits for a count that a reload may still be changing, then checks it.
void ExpectCount(const std::function<int()>& count, int expected, const char* what)
{
    PumpUntil([&] { return count() == expected; }, 5000);
    EXPECT_EQ(count(), expected) << what;
}

class ScenarioPlayer {
public:
    ScenarioPlayer(const DialogScenario& scenario, std::string file, std::string folder)
        : scenario_(scenario), file_(std::move(file)), folder_(std::move(folder))
    {
    }

    std::string Paths(const std::string& text) const { return SubstitutePaths(text, file_, folder_); }

    void Play(wxWindow* dialog)
    {
        for (std::size_t i = 0; i < scenario_.steps.size() && !::testing::Test::HasFatalFailure(); ++i) {
            SCOPED_TRACE("step " + std::to_string(i + 1));
            if (i + 1 == scenario_.steps.size())
                Screenshot(dialog, std::string("scenario-") + scenario_.name);
            PlayStep(dialog, scenario_.steps[i]);
        }
    }

    std::size_t AlertsSeen() const { return alertsSeen_; }

private:
    void PlayStep(wxWindow* dialog, const ScenarioStep& step)
    {
        const wxString text = wxString::FromUTF8(Paths(step.text));
        switch (step.kind) {
        case ScenarioStep::TypeText: TypeInto(dialog, step.control, step.text); break;
        case ScenarioStep::Click: Click(dialog, step.control); break;
        case ScenarioStep::PressEnter: Press(WXK_RETURN); break;
        case ScenarioStep::PressEscape: Press(WXK_ESCAPE); break;
        case ScenarioStep::ChooseColumnType: ChooseType(ColumnList(dialog), step.row, step.text); break;
        case ScenarioStep::EditColumnName: TypeIntoCell(ColumnList(dialog), step.row, step.text, WXK_RETURN); break;
        case ScenarioStep::CancelColumnNameEdit:
            TypeIntoCell(ColumnList(dialog), step.row, step.text, WXK_ESCAPE);
            break;
        case ScenarioStep::ToggleColumnOn: ClickCell(ColumnList(dialog), step.row, kOnColumn); break;
        case ScenarioStep::ClickRulerAt: ClickRuler(dialog, step.row); break;
        case ScenarioStep::ChooseEntry: ChooseEntry(dialog, step.control, text); break;
        case ScenarioStep::ExpectEnabled: EXPECT_TRUE(Control(dialog, step.control)->IsEnabled()); break;
        case ScenarioStep::ExpectDisabled: EXPECT_FALSE(Control(dialog, step.control)->IsEnabled()); break;
        case ScenarioStep::ExpectText: EXPECT_EQ(TextOf(Control(dialog, step.control)), text); break;
        case ScenarioStep::ExpectTextIncludes:
            EXPECT_TRUE(TextOf(Control(dialog, step.control)).Contains(text)) << text;
            break;
        case ScenarioStep::ExpectChecked: EXPECT_TRUE(IsChecked(Control(dialog, step.control))); break;
        case ScenarioStep::ExpectUnchecked: EXPECT_FALSE(IsChecked(Control(dialog, step.control))); break;
        case ScenarioStep::ExpectAlert: ExpectAlert(static_cast<MessageId>(step.control), Paths(step.text)); break;
        case ScenarioStep::ExpectDialogOpen: EXPECT_TRUE(dialog->IsShown()); break;
        case ScenarioStep::ExpectPreviewRows:
            ExpectCount([&] { return static_cast<int>(Preview(dialog)->GetItemCount()); }, step.row, "preview rows");
            break;
        case ScenarioStep::ExpectPreviewColumns:
            ExpectCount([&] { return Preview(dialog)->GetColumnCount(); }, step.row, "preview columns");
            break;
        case ScenarioStep::ExpectColumnRows:
            ExpectCount([&] { return ColumnList(dialog)->GetNumberRows(); }, step.row, "column list rows");
            break;
        case ScenarioStep::ExpectColumnName:
            // Asked beyond its rows, the grid stops on an assertion box.
            ASSERT_LT(step.row, ColumnList(dialog)->GetNumberRows());
            EXPECT_EQ(ColumnList(dialog)->Text(step.row, kNameColumn), text);
            break;
        }
    }

    static wxListCtrl* Preview(wxWindow* dialog) { return dynamic_cast<wxListCtrl*>(Control(dialog, kPreviewListId)); }

    void ExpectAlert(MessageId message, const std::string& argument)
    {
        const auto& alerts = CadShim::RecordedAlerts();
        ASSERT_LT(alertsSeen_, alerts.size()) << "no alert given";
        EXPECT_EQ(U8(alerts[alertsSeen_++]), U8(FormatWide(LoadMessage(message), {W(argument)})));
    }

    const DialogScenario& scenario_;
    std::string file_;
    std::string folder_;
    std::size_t alertsSeen_ = 0;
};

class DialogScenarioTest : public ::testing::TestWithParam<DialogScenario> {
protected:
    void SetUp() override
    {
        CadShim::ClearRecordings();
        CadShim::ClearRecordedDialogs();
    }
};

const DialogTemplate& TemplateOf(unsigned dialog)
{
    return dialog == kImportDialogId ? ImportDialogTemplate()
           : dialog == kExportDialogId ? ExportDialogTemplate()
                                       : FileChoiceDialogTemplate();
}

int RunDialog(const DialogScenario& scenario, const ScenarioPlayer& player, CImportDefinition& import,
              CExportDefinition& exportDefinition)
{
    switch (scenario.dialog) {
    case kImportDialogId: {
        const WString path = W(player.Paths(scenario.path));
        CDlgTxtConfiguration dialog(import, scenario.node, scenario.path.empty() ? nullptr : path.c_str());
        return dialog.DoModal();
    }
    case kExportDialogId: {
        CDlgTxtConfigurationExport dialog(exportDefinition, scenario.node);
        return dialog.DoModal();
    }
    default: {
        CDlgFileChoice dialog;
        dialog.SetFilePath(W(player.Paths(scenario.path)));
        return dialog.DoModal();
    }
    }
}

} // namespace

// Failures name the scenario, not its bytes.
void PrintTo(const DialogScenario& scenario, std::ostream* out) { *out << scenario.name; }

TEST_P(DialogScenarioTest, PlayedWithRealInput)
{
    const DialogScenario& scenario = GetParam();
    refhost::testing::TempDir folder;
    const std::string file = U8(folder.FilePath(scenario.fileName));
    if (!scenario.fileContent.empty()) {
        std::string content;
        content.reserve(scenario.fileContent.size() * scenario.repeat);
        for (std::size_t i = 0; i < scenario.repeat; ++i)
            content += scenario.fileContent;
        folder.WriteFile(scenario.fileName, content);
    }
    ScenarioPlayer player(scenario, file, folder.Path());

    CImportDefinition importDefinition;
    CExportDefinition exportDefinition;
    const WString before = W(player.Paths(scenario.storedBefore));
    if (scenario.node) {
        importDefinition.SetImporterConfigurationNode(before.c_str());
        exportDefinition.SetExporterConfigurationNode(before.c_str());
    } else {
        importDefinition.SetImporterConfiguration(before.c_str());
        exportDefinition.SetExporterConfiguration(before.c_str());
    }

    // The user's presets: the scenario's own, never the tester's.
    const refhost::testing::ScopedEnvironment settings("XDG_CONFIG_HOME", folder.Path() + "/settings");
    CadShim::DriveNextDialog([&player](wxWindow* dialog) { player.Play(dialog); });
    EXPECT_EQ(RunDialog(scenario, player, importDefinition, exportDefinition), scenario.result);

    const std::string expected = player.Paths(scenario.storedAfter.empty() ? scenario.storedBefore : scenario.storedAfter);
    if (scenario.dialog == kImportDialogId) {
        EXPECT_EQ(U8(scenario.node ? importDefinition.GetImporterConfigurationNode()
                                   : importDefinition.GetImporterConfiguration()),
                  expected);
    } else if (scenario.dialog == kExportDialogId) {
        EXPECT_EQ(U8(scenario.node ? exportDefinition.GetExporterConfigurationNode()
                                   : exportDefinition.GetExporterConfiguration()),
                  expected);
    }
    EXPECT_EQ(CadShim::RecordedAlerts().size(), player.AlertsSeen()) << "alerts the scenario did not expect";
    // Shown once, under its template's number and title, answering the CAD application's
    // keep-focus question with yes.
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
    const CadShim::DialogRecord& shown = CadShim::RecordedDialogs()[0];
    EXPECT_EQ(shown.templateId, scenario.dialog);
    EXPECT_EQ(shown.keepFocusAnswer, 1);
    EXPECT_EQ(shown.title, LoadMessage(static_cast<MessageId>(TemplateOf(scenario.dialog).title)));
}

INSTANTIATE_TEST_SUITE_P(Table, DialogScenarioTest, ::testing::ValuesIn(DialogScenarios()),
                         [](const ::testing::TestParamInfo<DialogScenario>& info) { return info.param.name; });
