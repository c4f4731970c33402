#include "ui/win32/ColumnListCtrl.h"

#include "tests/ui/win32/TestWindow.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

constexpr int kListId = 104;
enum { kLabel, kName, kType, kOn };

// The wizard's column list: label, name (edited in place), type (chosen), on (checked).
struct ColumnListInWindow : ::testing::Test {
    TestWindow window;
    HWND cancelButton = nullptr;
    std::unique_ptr<ColumnListCtrl> list;
    std::vector<std::pair<int, int>> changes;

    void SetUp() override
    {
        SKIP_WITHOUT_WINDOW(window);
        HWND handle = window.AddChild(kListId, WC_LISTVIEWW, WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT,
                                      {10, 10, 410, 200});
        cancelButton = window.AddChild(IDCANCEL, L"Button", WS_VISIBLE | WS_TABSTOP, {420, 10, 500, 30});
        list = std::make_unique<ColumnListCtrl>(handle);
        list->SetColumns({{L"Label", 60, ColumnListCtrl::CellKind::Text},
                          {L"Name", 100, ColumnListCtrl::CellKind::EditableText},
                          {L"Type", 90, ColumnListCtrl::CellKind::Choice},
                          {L"On", 50, ColumnListCtrl::CellKind::Check}});
        list->SetChoices(kType, {L"Text", L"Integer", L"Real"});
        list->ResetRows(2);
        for (int row = 0; row < 2; ++row) {
            list->SetText(row, kLabel, row == 0 ? L"C1" : L"C2");
            list->SetText(row, kName, row == 0 ? L"east" : L"north");
            list->SetChoice(row, kType, 0);
            list->SetCheck(row, kOn, true);
        }
        list->OnCellChanged([this](int row, int column) { changes.emplace_back(row, column); });
        window.OnNotify([this](const NMHDR& header, LRESULT& result) { return list->OnNotify(header, result); });
        PumpMessages();
    }

    POINT CellCentre(int row, int column) const
    {
        RECT cell{};
        ListView_GetSubItemRect(list->Handle(), row, column, LVIR_BOUNDS, &cell);
        if (column == 0) // the first column's bounds are the whole row's
            cell.right = cell.left + ListView_GetColumnWidth(list->Handle(), 0);
        return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
    }
    void ClickCell(int row, int column)
    {
        const POINT centre = CellCentre(row, column);
        Click(list->Handle(), centre.x, centre.y);
    }
    HWND Editor() const { return ::GetFocus(); }
};

TEST_F(ColumnListInWindow, IsAReportListWithGridLinesAndWholeRows)
{
    const LONG_PTR style = ::GetWindowLongPtrW(list->Handle(), GWL_STYLE);
    EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
    const DWORD extended = ListView_GetExtendedListViewStyle(list->Handle());
    EXPECT_TRUE(extended & LVS_EX_GRIDLINES);
    EXPECT_TRUE(extended & LVS_EX_FULLROWSELECT);
    EXPECT_EQ(list->Text(1, kLabel), L"C2");
    EXPECT_EQ(list->Text(0, kType), L"Text");
}

// Enter commits, Esc throws the typing away; neither reaches the window's buttons, as the
// dialog navigation would otherwise make them OK and Cancel.
TEST_F(ColumnListInWindow, NameEditorCommitsOnEnterAndCancelsOnEsc)
{
    struct Case {
        WPARAM key;
        const wchar_t* name;
        bool reported;
    };
    const Case cases[] = {{VK_RETURN, L"easting", true}, {VK_ESCAPE, L"east", false}};
    for (const Case& c : cases) {
        list->SetText(0, kName, L"east");
        changes.clear();
        ClickCell(0, kName);
        ASSERT_TRUE(list->IsEditing());
        HWND editor = Editor();
        ASSERT_TRUE(list->IsEditor(editor));
        ::SendMessageW(editor, EM_SETSEL, 4, 4);
        TypeText(editor, L"ing");
        PressKeyInDialog(window.Handle(), editor, c.key);

        EXPECT_FALSE(list->IsEditing());
        EXPECT_FALSE(::IsWindowVisible(editor));
        EXPECT_EQ(list->Text(0, kName), c.name);
        EXPECT_EQ(changes.size(), c.reported ? 1u : 0u);
        EXPECT_EQ(window.Commands(), std::vector<int>()) << "the key reached the window";
    }
}

TEST_F(ColumnListInWindow, LeavingTheEditorCommits)
{
    ClickCell(1, kName);
    TypeText(Editor(), L"N");
    ::SetFocus(cancelButton);
    PumpMessages();
    EXPECT_FALSE(list->IsEditing());
    EXPECT_EQ(list->Text(1, kName), L"N");
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, kName}}));
}

TEST_F(ColumnListInWindow, TypeIsChosenFromTheDropDown)
{
    ClickCell(1, kType);
    ASSERT_TRUE(list->IsEditing());
    HWND combo = Editor();
    ASSERT_TRUE(list->IsEditor(combo));
    EXPECT_TRUE(::SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0));
    EXPECT_EQ(::SendMessageW(combo, CB_GETCOUNT, 0, 0), 3);
    PressKeyInDialog(window.Handle(), combo, VK_DOWN);
    PressKeyInDialog(window.Handle(), combo, VK_DOWN);
    PressKeyInDialog(window.Handle(), combo, VK_RETURN);

    EXPECT_FALSE(list->IsEditing());
    EXPECT_EQ(list->Choice(1, kType), 2);
    EXPECT_EQ(list->Text(1, kType), L"Real");
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{1, kType}}));
    EXPECT_EQ(window.Commands(), std::vector<int>());
}

TEST_F(ColumnListInWindow, EscClosesTheDropDownWithoutChoosing)
{
    ClickCell(0, kType);
    HWND combo = Editor();
    PressKeyInDialog(window.Handle(), combo, VK_DOWN);
    PressKeyInDialog(window.Handle(), combo, VK_ESCAPE); // closes the list
    PressKeyInDialog(window.Handle(), combo, VK_ESCAPE); // closes the editor
    EXPECT_FALSE(list->IsEditing());
    EXPECT_EQ(list->Choice(0, kType), 0);
    EXPECT_TRUE(changes.empty());
}

TEST_F(ColumnListInWindow, CheckBoxTogglesOnClickAndSpace)
{
    ClickCell(0, kOn);
    EXPECT_FALSE(list->Checked(0, kOn));
    ClickCell(0, kOn);
    EXPECT_TRUE(list->Checked(0, kOn));
    // Space toggles the focused row's box: row 1 takes the focus by a click on its label.
    ClickCell(1, kLabel);
    PressKey(list->Handle(), VK_SPACE);
    EXPECT_FALSE(list->Checked(1, kOn));
    EXPECT_TRUE(list->Checked(0, kOn));
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{0, kOn}, {0, kOn}, {1, kOn}}));
}

TEST_F(ColumnListInWindow, ClickOnALabelOpensNoEditor)
{
    ClickCell(0, kLabel);
    EXPECT_FALSE(list->IsEditing());
    EXPECT_FALSE(list->BeginEdit(0, kLabel));
}

} // namespace
