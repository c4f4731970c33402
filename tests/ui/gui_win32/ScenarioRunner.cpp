// The shared dialog scenarios (tests/ui/scenarios) played on the Win32 views with window
// messages: each row is one test, named after the row, held to the same results and stored
// configurations as on Linux. The wizard's ruler and column list get clicks at the pixels
// their own geometry gives (the ruler's model, the list's cell rectangles), so that the rows
// hold at every DPI.

#include "DrivenDialog.h"

#include "../scenarios/DialogScenarios.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/DialogTemplates.h"
#include "ui/ImportConfigurationModel.h"
#include "ui/win32/DlgFileChoice.h"
#include "ui/win32/DlgTxtConfiguration.h"
#include "ui/win32/DlgTxtConfigurationExport.h"
#include "ui/win32/RulerWnd.h"
#include "ui/win32/Win32.h"

#include <commctrl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <thread>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CExportDefinition;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

// The wizard's column list and ruler, and the column list's columns.
constexpr int kColumnListId = 104;
constexpr int kRulerId = 221;
constexpr int kNameColumn = 1, kTypeColumn = 2, kOnColumn = 3;

// The middle of a cell of a report list, in the list's client pixels, scrolled into view.
POINT CellCentre(HWND list, int row, int column)
{
    ListView_EnsureVisible(list, row, FALSE);
    RECT cell{};
    ListView_GetSubItemRect(list, row, column, LVIR_BOUNDS, &cell);
    return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
}

WString ItemText(HWND list, int row, int column)
{
    WChar text[512] = {};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 512;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

// Waits for a count that a preview still being read may change, then checks it.
void ExpectCount(const DrivenDialog& dialog, const std::function<int()>& count, int expected, const char* what)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    int counted = -1;
    while (true) {
        dialog.InDialogThread([&] { counted = count(); });
        if (counted == expected || std::chrono::steady_clock::now() > limit)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(counted, expected) << what;
}

class ScenarioPlayer {
public:
    ScenarioPlayer(const DialogScenario& scenario, std::string file, std::string folder)
        : scenario_(scenario), file_(std::move(file)), folder_(std::move(folder))
    {
    }

    // The table writes "$DIR/name"; a Windows path has a backslash there.
    std::string Paths(const std::string& text) const
    {
        std::string native = text;
        for (std::size_t at = native.find("$DIR/"); at != std::string::npos; at = native.find("$DIR/", at))
            native[at += 4] = '\\';
        return SubstitutePaths(native, file_, folder_);
    }

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
        case ScenarioStep::ChooseColumnType: ChooseType(dialog, step.row, text); break;
        case ScenarioStep::EditColumnName: TypeIntoNameCell(dialog, step.row, text, VK_RETURN); break;
        case ScenarioStep::CancelColumnNameEdit: TypeIntoNameCell(dialog, step.row, text, VK_ESCAPE); break;
        case ScenarioStep::ToggleColumnOn: ClickCell(dialog, step.row, kOnColumn); break;
        case ScenarioStep::ClickRulerAt: ClickRuler(dialog, step.row); break;
        case ScenarioStep::ChooseEntry: ChooseEntry(dialog, step.control, text); break;
        case ScenarioStep::ExpectPreviewRows:
            ExpectCount(dialog, [&] { return ListView_GetItemCount(dialog.Control(kPreviewListId)); }, step.row,
                        "preview rows");
            break;
        case ScenarioStep::ExpectPreviewColumns:
            ExpectCount(dialog, [&] { return Header_GetItemCount(ListView_GetHeader(dialog.Control(kPreviewListId))); },
                        step.row, "preview columns");
            break;
        case ScenarioStep::ExpectColumnRows:
            ExpectCount(dialog, [&] { return ListView_GetItemCount(dialog.Control(kColumnListId)); }, step.row,
                        "column list rows");
            break;
        case ScenarioStep::ExpectColumnName: {
            WString name;
            dialog.InDialogThread([&] { name = ItemText(dialog.Control(kColumnListId), step.row, kNameColumn); });
            EXPECT_EQ(U8(name), U8(text));
            break;
        }
        }
    }

    static void ClickCell(const DrivenDialog& dialog, int row, int column)
    {
        HWND list = dialog.Control(kColumnListId);
        POINT centre{};
        dialog.InDialogThread([&] { centre = CellCentre(list, row, column); });
        dialog.ClickAt(list, centre.x, centre.y);
    }

    // The name's editor opens on a click in its cell; Enter commits what was typed, Esc throws
    // it away.
    static void TypeIntoNameCell(const DrivenDialog& dialog, int row, const WString& text, unsigned closingKey)
    {
        ClickCell(dialog, row, kNameColumn);
        HWND editor = dialog.Focused();
        ASSERT_NE(editor, nullptr);
        EXPECT_EQ(GetParent(editor), dialog.Control(kColumnListId)) << "the click opens the name's editor";
        dialog.Type(text);
        dialog.PressKey(closingKey);
        EXPECT_FALSE(IsWindowVisible(editor)) << "the key closes the editor";
    }

    // The click drops the type's list down; the arrows move to the entry and Enter takes it.
    static void ChooseType(const DrivenDialog& dialog, int row, const WString& typeName)
    {
        ClickCell(dialog, row, kTypeColumn);
        HWND combo = dialog.Focused();
        ASSERT_NE(combo, nullptr);
        int current = CB_ERR, wanted = CB_ERR;
        bool dropped = false;
        dialog.InDialogThread([&] {
            current = static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
            wanted = static_cast<int>(SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                   reinterpret_cast<LPARAM>(typeName.c_str())));
            dropped = SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0;
        });
        EXPECT_TRUE(dropped) << "the click drops the type's list down";
        ASSERT_NE(wanted, CB_ERR) << U8(typeName) << " is not among the types";
        for (int at = current < 0 ? -1 : current; at != wanted; at += at < wanted ? 1 : -1)
            dialog.PressKey(at < wanted ? VK_DOWN : VK_UP);
        dialog.PressKey(VK_RETURN);
        WString shown;
        dialog.InDialogThread([&] { shown = ItemText(dialog.Control(kColumnListId), row, kTypeColumn); });
        EXPECT_EQ(U8(shown), U8(typeName));
    }

    // A click on the drop arrow opens the list; the arrows move to the entry and Enter takes it.
    static void ChooseEntry(const DrivenDialog& dialog, int id, const WString& entry)
    {
        HWND combo = dialog.Control(id);
        ASSERT_NE(combo, nullptr);
        POINT arrow{};
        int wanted = CB_ERR, count = 0;
        dialog.InDialogThread([&] {
            COMBOBOXINFO info{};
            info.cbSize = sizeof(info);
            GetComboBoxInfo(combo, &info);
            arrow = {(info.rcButton.left + info.rcButton.right) / 2, (info.rcButton.top + info.rcButton.bottom) / 2};
            wanted = static_cast<int>(SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                                   reinterpret_cast<LPARAM>(entry.c_str())));
            count = static_cast<int>(SendMessageW(combo, CB_GETCOUNT, 0, 0));
        });
        ASSERT_NE(wanted, CB_ERR) << U8(entry) << " is not in the list";
        dialog.ClickAt(combo, arrow.x, arrow.y);
        int current = CB_ERR;
        bool dropped = false;
        const auto look = [&] {
            dialog.InDialogThread([&] {
                current = static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0));
                dropped = SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0;
            });
        };
        look();
        EXPECT_TRUE(dropped) << "the click drops the list down";
        for (int presses = 0; current != wanted && presses <= count; ++presses) {
            dialog.PressKey(current < wanted ? VK_DOWN : VK_UP);
            look();
        }
        dialog.PressKey(VK_RETURN);
        look();
        EXPECT_FALSE(dropped) << "Enter closes the list";
        EXPECT_EQ(current, wanted);
        EXPECT_EQ(U8(dialog.Text(id)), U8(entry));
    }

    // A click where the ruler takes the position of the character: its model says where that
    // is, at the cell width the view gave it for the window's DPI.
    static void ClickRuler(const DrivenDialog& dialog, int character)
    {
        HWND window = dialog.Control(kRulerId);
        POINT point{};
        dialog.InDialogThread([&] {
            const auto* ruler = reinterpret_cast<CRulerWnd*>(GetWindowLongPtrW(window, GWLP_USERDATA));
            if (!ruler)
                return;
            const RulerModel& model = const_cast<CRulerWnd*>(ruler)->Model();
            // The ruler takes a point 7 pixels right of where it draws a position as that position.
            point.x = model.PixelOf(character + ImportConfigurationModel::kRulerToCharacter) + 7;
            RECT client{};
            GetClientRect(window, &client);
            point.y = client.bottom / 2;
        });
        ASSERT_GT(point.y, 0) << "no ruler in the wizard";
        dialog.ClickAt(window, point.x, point.y);
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

// The user's settings folder (APPDATA) is the scenario's own while it is set.
class PrivateSettingsFolder {
public:
    explicit PrivateSettingsFolder(const WString& folder)
    {
        if (const wchar_t* current = _wgetenv(L"APPDATA"))
            previous_ = current;
        _wputenv_s(L"APPDATA", folder.c_str());
    }
    ~PrivateSettingsFolder() { _wputenv_s(L"APPDATA", previous_.c_str()); }
    PrivateSettingsFolder(const PrivateSettingsFolder&) = delete;
    PrivateSettingsFolder& operator=(const PrivateSettingsFolder&) = delete;

private:
    WString previous_;
};

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
    if (!scenario.fileContent.empty()) {
        std::string content;
        content.reserve(scenario.fileContent.size() * scenario.repeat);
        for (std::size_t i = 0; i < scenario.repeat; ++i)
            content += scenario.fileContent;
        folder.WriteFile(scenario.fileName, content);
    }
    ScenarioPlayer player(scenario, U8(folder.FilePath(scenario.fileName)), folder.Path());

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

    const PrivateSettingsFolder settings(W(player.Paths("$DIR/settings")));
    const int result = RunDriven(
        [&] {
            if (scenario.dialog == kImportDialogId) {
                const WString path = W(player.Paths(scenario.path));
                return CDlgTxtConfiguration(importDefinition, scenario.node, scenario.path.empty() ? nullptr : path.c_str())
                    .DoModal();
            }
            if (scenario.dialog == kExportDialogId)
                return CDlgTxtConfigurationExport(exportDefinition, scenario.node).DoModal();
            CDlgFileChoice dialog;
            dialog.SetFilePath(W(player.Paths(scenario.path)));
            return dialog.DoModal();
        },
        [&](const DrivenDialog& dialog) { player.Play(dialog); });
    EXPECT_EQ(result, scenario.result);

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
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].templateId, scenario.dialog);
}

INSTANTIATE_TEST_SUITE_P(Table, DialogScenarioTest, ::testing::ValuesIn(DialogScenarios()),
                         [](const ::testing::TestParamInfo<DialogScenario>& info) { return info.param.name; });
