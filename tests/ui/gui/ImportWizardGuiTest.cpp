// The import wizard in a real window, driven by real input events: the fixed-width flow on
// the ruler, the column list's editors, the delimited flow, and Enter that never closes it.

#include "DialogDriving.h"

#include "host/ImpexDefinitions.h"
#include "platform/Platform.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/wx/ColumnListCtrl.h"
#include "ui/wx/DlgTxtConfiguration.h"
#include "ui/wx/RulerWnd.h"

#include <gtest/gtest.h>
#include <wx/combobox.h>
#include <wx/listctrl.h>
#include <wx/stattext.h>
#include <wx/uiaction.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

// A real click at a point of a window's client area.
void ClickAt(wxWindow* window, const wxPoint& point)
{
    wxUIActionSimulator simulator;
    simulator.MouseMove(window->ClientToScreen(point));
    Pump(30);
    simulator.MouseClick();
    Pump();
}

// Where the ruler draws (and takes) ruler position p: 7 pixels in, 4 per position.
wxPoint RulerPoint(wxWindow* ruler, int position) { return wxPoint(7 + 4 * position, ruler->GetClientSize().y / 2); }

ColumnListCtrl* ColumnList(wxWindow* dialog) { return dynamic_cast<ColumnListCtrl*>(Control(dialog, 104)); }

void ClickCell(ColumnListCtrl* grid, int row, int column)
{
    const wxRect cell = grid->CellToRect(row, column);
    ClickAt(grid->GetGridWindow(), grid->CalcScrolledPosition(cell.GetPosition()) + wxPoint(cell.width / 2, cell.height / 2));
}

void TypeText(const char* text)
{
    wxUIActionSimulator simulator;
    simulator.Text(text);
    Pump();
}

void PressAndPump(int key)
{
    wxUIActionSimulator simulator;
    simulator.Char(key);
    Pump();
}

std::string Expected(const WString& path, const char* delimiter, int mode, const char* positions, const char* columns)
{
    return std::string(R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile=")") + U8(path) + "\" delimiter=\"" +
           delimiter + "\" comments=\"*#\" mode=\"" + std::to_string(mode) + "\" colPositions=\"" + positions + "\">" +
           columns + "</cfg>";
}

class ImportWizardGui : public ::testing::Test {
protected:
    void TearDown() override
    {
        CDlgTxtConfiguration::SetFileChooser(nullptr);
        Platform::Faults::ClearFaults();
    }
    CImportDefinition definition_;
};

} // namespace

TEST_F(ImportWizardGui, FixedWidthFlowOnTheRulerAndTheColumnList)
{
    const WString sample = W(TESSEL_SOURCE_DIR "/samples/survey-fixed.txt");
    std::string typeEditorValue;
    bool screenshots = false;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        Screenshot(dialog, "import-wizard-delimited");
        Click(dialog, 205);
        wxWindow* ruler = Control(dialog, 221);
        ASSERT_TRUE(ruler->IsEnabled());
        std::vector<int> notified; // the ruler tells its parent of each click
        dialog->Bind(EVT_RULER_NOTIFY, [&](RulerNotifyEvent& event) {
            EXPECT_EQ(event.Code(), 4370);
            EXPECT_EQ(event.GetId(), 221);
            notified.push_back(event.Argument());
        });
        // Columns begin at characters 8, 22 and 36: ruler positions 13, 27 and 41.
        for (int position : {13, 27, 41})
            ClickAt(ruler, RulerPoint(ruler, position));
        EXPECT_EQ(notified, (std::vector<int>{13, 27, 41}));
        ColumnListCtrl* grid = ColumnList(dialog);
        ASSERT_EQ(grid->GetNumberRows(), 3);
        EXPECT_EQ(dynamic_cast<wxListCtrl*>(Control(dialog, 555))->GetColumnCount(), 3);
        // From the keyboard: the cursor to character 2, Space sets a break there and again
        // removes it; the tip tells where the cursor is.
        for (int key : {WXK_RIGHT, WXK_RIGHT, WXK_RIGHT, WXK_SPACE})
            PressAndPump(key);
        EXPECT_EQ(ruler->GetToolTipText(), "2");
        EXPECT_EQ(grid->GetNumberRows(), 4);
        PressAndPump(WXK_SPACE);
        EXPECT_EQ(grid->GetNumberRows(), 3);

        // The type of the second column: open its drop-down, choose, and commit with Enter.
        ClickCell(grid, 1, 2);
        ClickCell(grid, 1, 2);
        PumpUntil([grid] { return grid->IsEditing(); });
        ASSERT_TRUE(grid->IsEditing());
        wxGridCellEditor* editor = grid->GetCellEditor(1, 2);
        auto* combo = dynamic_cast<wxComboBox*>(editor->GetControl());
        editor->DecRef();
        ASSERT_NE(combo, nullptr);
        combo->SetValue("Real");
        PressAndPump(WXK_RETURN);
        typeEditorValue = grid->Text(1, 2).ToStdString();

        // Rename the first column: typing opens the editor, Enter commits and leaves the wizard open.
        ClickCell(grid, 0, 1);
        TypeText("Point");
        EXPECT_TRUE(grid->IsEditing());
        PressAndPump(WXK_RETURN);
        EXPECT_FALSE(grid->IsEditing());
        EXPECT_TRUE(dialog->IsShown());
        // Esc in the editor throws the typing away, and the wizard stays.
        ClickCell(grid, 2, 1);
        TypeText("Gone");
        PressAndPump(WXK_ESCAPE);
        EXPECT_TRUE(dialog->IsShown());
        EXPECT_EQ(grid->Text(2, 1), "C3");

        screenshots = std::filesystem::exists(Screenshot(dialog, "import-wizard-fixed-width")) &&
                      std::filesystem::exists(Screenshot(ruler, "ruler-with-breaks"));
        Click(dialog, IDOK);
    });
    CDlgTxtConfiguration dialog(definition_, false, sample.c_str());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(screenshots);
    EXPECT_EQ(typeEditorValue, "Real");
    EXPECT_EQ(U8(definition_.GetImporterConfiguration()),
              Expected(sample, "\t", 1, "8\u00a422\u00a436\u00a4",
                       R"(<col no="0" name="Point" type="5005" onOff="1"/><col no="1" name="C2" type="5001" onOff="1"/>)"
                       R"(<col no="2" name="C3" type="5005" onOff="1"/>)"));
}

TEST_F(ImportWizardGui, DelimitedFlowWithAnOtherDelimiterAndEnterThatNeverCloses)
{
    refhost::testing::TempDir folder;
    const WString file = folder.WriteFile("points.txt", "#X;Y;Code\n12.5;7;A1\n13.5;n/a;A2\n");
    CDlgTxtConfiguration::SetFileChooser([&](wxWindow*, const WString&, WString& path) {
        path = file;
        return true;
    });
    bool openAfterEnter = false;
    bool focusMoved = false;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        Click(dialog, 200);
        Click(dialog, 207); // tab off
        Click(dialog, 208); // other on
        TypeInto(dialog, 209, ";");
        wxWindow* path = Control(dialog, 201);
        Click(dialog, 201);
        PressAndPump(WXK_RETURN);
        openAfterEnter = dialog->IsShown();
        focusMoved = !path->HasFocus();
        ColumnListCtrl* grid = ColumnList(dialog);
        EXPECT_EQ(grid->GetNumberRows(), 3);
        ClickCell(grid, 2, 3); // Code is not imported
        auto* preview = dynamic_cast<wxListCtrl*>(Control(dialog, 555));
        EXPECT_EQ(preview->GetItemText(2, 1), wxString::FromUTF8("\xE2\x9A\xA0 n/a")); // no integer: marked
        EXPECT_EQ(preview->GetItemText(2, 0), "13.5");
        Screenshot(dialog, "import-wizard-other-delimiter");
        Click(dialog, IDOK);
    });
    CDlgTxtConfiguration dialog(definition_, true);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(openAfterEnter);
    EXPECT_TRUE(focusMoved);
    EXPECT_EQ(U8(definition_.GetImporterConfigurationNode()),
              Expected(file, ";", 0, "",
                       R"(<col no="0" name="X" type="5001" onOff="1"/><col no="1" name="Y" type="5010" onOff="1"/>)"
                       R"(<col no="2" name="Code" type="5005" onOff="0"/>)"));
}

// A column name that the configuration would not give back as shown is tinted, and the list
// says why; renaming it takes the mark away. OK stores whatever is shown.
TEST_F(ImportWizardGui, NamesTheConfigurationWouldChangeAreMarked)
{
    refhost::testing::TempDir folder;
    const WString file = folder.WriteFile("points.txt", "#X\t\"Y\"\tCode\n1\t2\tA\n");
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        ColumnListCtrl* grid = ColumnList(dialog);
        ASSERT_EQ(grid->GetNumberRows(), 3);
        const wxColour plain = grid->GetCellBackgroundColour(2, 1);
        EXPECT_NE(grid->GetCellBackgroundColour(1, 1), plain);
        EXPECT_EQ(grid->GetGridWindow()->GetToolTipText(),
                  wxString::FromUTF8("C2: The configuration reads \" back as \xC3\x97."));
        Screenshot(dialog, "import-wizard-marked-name");
        ClickCell(grid, 1, 1);
        TypeText("Y");
        PressAndPump(WXK_RETURN);
        EXPECT_EQ(grid->GetCellBackgroundColour(1, 1), plain);
        EXPECT_EQ(grid->GetGridWindow()->GetToolTipText(), "");
        Click(dialog, IDOK);
    });
    CDlgTxtConfiguration dialog(definition_, false, file.c_str());
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_NE(U8(definition_.GetImporterConfiguration()).find(R"(<col no="1" name="Y" type="5010" onOff="1"/>)"),
              std::string::npos);
}

// A first line of 30 MB and thousands of fields (a wrong delimiter) on a slow drive: the wizard
// keeps painting while it reads, takes no input meanwhile, and then lists the first 1000
// columns and says so. A local disk reads the line faster than anyone would see the window
// freeze, so the drive is made slow: then the reading surely takes long.
TEST_F(ImportWizardGui, AHugeFirstLinePreviewsWhileTheWindowPaints)
{
    refhost::testing::TempDir folder;
    std::string line;
    for (int i = 0; i < 3000; ++i)
        line += std::string(10000, static_cast<char>('a' + i % 26)) + "\t";
    const WString file = folder.WriteFile("wide.txt", line + "\n1\t2\n");
    CDlgTxtConfiguration::SetFileChooser([&](wxWindow*, const WString&, WString& path) {
        path = file;
        return true;
    });
    // The dialog's windows may go later than the test's locals: the handler owns its count.
    auto paintsWhileBusy = std::make_shared<int>(0);
    wxString said;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        Control(dialog, 221)->Bind(wxEVT_PAINT, [paintsWhileBusy, dialog](wxPaintEvent& event) {
            *paintsWhileBusy += dialog->IsEnabled() ? 0 : 1;
            event.Skip();
        });
        Click(dialog, 200);
        PumpUntil([&] { return ColumnList(dialog)->GetNumberRows() == 1000; }, 20000);
        EXPECT_TRUE(dialog->IsEnabled());
        EXPECT_EQ(dynamic_cast<wxListCtrl*>(Control(dialog, 555))->GetColumnCount(), 1000);
        EXPECT_EQ(dynamic_cast<wxListCtrl*>(Control(dialog, 555))->GetItemCount(), 2);
        std::function<void(wxWindow*)> find = [&](wxWindow* window) {
            if (auto* text = dynamic_cast<wxStaticText*>(window); text && text->GetLabel().StartsWith("The lines"))
                said = text->GetLabel();
            for (wxWindow* child : window->GetChildren())
                find(child);
        };
        find(dialog);
        Screenshot(dialog, "import-wizard-huge-line");
        Click(dialog, IDCANCEL);
    });
    Platform::Faults::SlowReads(40); // two passes of 4 KB reads: more than half a second
    CDlgTxtConfiguration dialog(definition_, false);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_GT(*paintsWhileBusy, 0);
    EXPECT_EQ(said, "The lines have 3000 columns; only C1 to C1000 are listed and imported.");
}
