// The general list controls on their own, in a plain frame: the editable column list and
// the virtual preview list.

#include "DialogDriving.h"

#include "ui/wx/ColumnListCtrl.h"
#include "ui/wx/PreviewListCtrl.h"
#include "ui/wx/RunBesideEventLoop.h"

#include <gtest/gtest.h>
#include <wx/frame.h>
#include <wx/dcclient.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/uiaction.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

// A frame holding one control, destroyed with the test.
struct Host {
    wxFrame* frame = new wxFrame(nullptr, wxID_ANY, "controls");
    ~Host() { frame->Destroy(); }
    template <class Control>
    Control* Show(Control* control)
    {
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(control, 1, wxEXPAND);
        frame->SetSizerAndFit(sizer);
        frame->Show();
        Pump(300);
        return control;
    }
};

void ClickCell(ColumnListCtrl* grid, int row, int column)
{
    const wxRect cell = grid->CellToRect(row, column);
    wxUIActionSimulator simulator;
    simulator.MouseMove(grid->GetGridWindow()->ClientToScreen(grid->CalcScrolledPosition(cell.GetPosition()) +
                                                              wxPoint(cell.width / 2, cell.height / 2)));
    Pump(30);
    simulator.MouseClick();
    Pump();
}

wxArrayString Strings(std::initializer_list<const char*> texts)
{
    wxArrayString strings;
    for (const char* text : texts)
        strings.Add(text);
    return strings;
}

void Keys(const char* text, int key)
{
    wxUIActionSimulator simulator;
    simulator.Text(text);
    Pump();
    simulator.Char(key);
    Pump();
}

} // namespace

TEST(ColumnListCtrl, EditsCommitWithEnterCancelWithEscAndABoxTogglesWithOneClick)
{
    Host host;
    auto* grid = host.Show(new ColumnListCtrl(host.frame, wxID_ANY, wxSize(320, 140)));
    using Kind = ColumnListCtrl::CellKind;
    grid->SetColumns({{"fixed", 60, Kind::Text}, {"name", 80, Kind::EditableText}, {"kind", 80, Kind::Choice},
                      {"on", 40, Kind::Check}});
    grid->SetChoices(2, Strings({"one", "two"}));
    grid->ResetRows(2);
    grid->SetChoice(0, 2, 1);
    grid->SetChoice(1, 2, 5);
    EXPECT_EQ(grid->Choice(0, 2), 1);
    EXPECT_EQ(grid->Choice(1, 2), -1); // no such choice: none selected
    std::vector<std::pair<int, int>> changed;
    grid->OnCellChanged([&](int row, int column) { changed.emplace_back(row, column); });

    ClickCell(grid, 0, 1);
    Keys("kept", WXK_RETURN);
    ClickCell(grid, 1, 1);
    Keys("dropped", WXK_ESCAPE);
    ClickCell(grid, 1, 0);
    Keys("x", WXK_RETURN); // read-only: nothing opens
    ClickCell(grid, 1, 3);
    EXPECT_EQ(grid->Text(0, 1), "kept");
    EXPECT_EQ(grid->Text(1, 1), "");
    EXPECT_EQ(grid->Text(1, 0), "");
    EXPECT_TRUE(grid->Checked(1, 3));
    EXPECT_FALSE(grid->IsEditing());
    EXPECT_EQ(changed, (std::vector<std::pair<int, int>>{{0, 1}, {1, 3}}));
}

TEST(PreviewListCtrl, RowsComeFromTheSourceWithColoursMarksAndABoundedPrefix)
{
    Host host;
    auto* list = host.Show(new PreviewListCtrl(host.frame, wxID_ANY, wxSize(300, 120)));
    const std::vector<WString> cells = {WTEXT("a"), WString(5000, WChar('x')), WTEXT("b")};
    list->SetSource({[&](long row, long column) { return column == 0 ? &cells[static_cast<std::size_t>(row)] : nullptr; },
                     [](long row) { return row == 2 ? 0xD3D3D3u : PreviewListCtrl::kNoColour; },
                     [](long row, long) { return row == 0; }});
    list->SetColumns(Strings({"C1", "C2"}), {60, 60});
    list->ShowRows(3);
    EXPECT_EQ(list->GetItemCount(), 3);
    EXPECT_EQ(list->GetColumnCount(), 2);
    EXPECT_EQ(list->GetItemText(0, 0), wxString::FromUTF8("\xE2\x9A\xA0 a"));
    EXPECT_EQ(list->GetItemText(1, 0), wxString(200, 'x') + wxString::FromUTF8("\xE2\x80\xA6"));
    EXPECT_EQ(list->GetItemText(2, 1), "");
    EXPECT_EQ(list->GetItemBackgroundColour(2), wxColour(0xD3, 0xD3, 0xD3));
}

// Long work must not freeze the windows: while it runs on its own thread, the window is
// painted again, the poll runs on the calling thread, and no window takes input.
TEST(RunBesideEventLoop, LongWorkLetsTheWindowsPaintAndQuickWorkJustRuns)
{
    Host host;
    auto* panel = host.Show(new wxPanel(host.frame, wxID_ANY, wxDefaultPosition, wxSize(200, 100)));
    // The frame goes later than the test's locals: its handler owns what it counts in.
    auto painted = std::make_shared<std::atomic<int>>(0);
    panel->Bind(wxEVT_PAINT, [painted](wxPaintEvent& event) {
        wxPaintDC dc(static_cast<wxWindow*>(event.GetEventObject()));
        ++*painted;
    });
    std::atomic<int>& paints = *painted;
    const std::thread::id caller = std::this_thread::get_id();

    std::thread::id worker;
    bool paintedMeanwhile = false;
    std::vector<bool> enabledAtPolls;
    RunBesideEventLoop(
        [&] {
            worker = std::this_thread::get_id();
            const int before = paints.load();
            const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
            while (paints.load() == before && std::chrono::steady_clock::now() < deadline)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            paintedMeanwhile = paints.load() > before;
        },
        [&] {
            EXPECT_EQ(std::this_thread::get_id(), caller);
            enabledAtPolls.push_back(host.frame->IsEnabled());
            panel->Refresh();
        });
    EXPECT_NE(worker, caller);
    EXPECT_TRUE(paintedMeanwhile);
    ASSERT_GE(enabledAtPolls.size(), 2u);
    EXPECT_FALSE(enabledAtPolls.front()) << "no input while the work runs";
    EXPECT_TRUE(host.frame->IsEnabled());

    int polls = 0;
    RunBesideEventLoop([] {}, [&] { ++polls; });
    EXPECT_EQ(polls, 1) << "quick work: one poll, after it";
    EXPECT_THROW(RunBesideEventLoop([] { throw std::runtime_error("gone"); }, [] {}), std::runtime_error);
}
