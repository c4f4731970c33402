#include "ui/win32/PreviewListCtrl.h"

#include "tests/ui/win32/TestWindow.h"
#include "ui/ImportPreview.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kPlaceholderId = 202;
constexpr int kListId = 555;
constexpr COLORREF kMarkedBackground = RGB(255, 205, 205);

// Rows of three cells; row 1 is a comment line, cell (2, 1) does not convert.
struct PreviewInWindow : ::testing::Test {
    TestWindow window;
    std::vector<std::vector<WString>> cells{{L"a", L"1.5", L"x"}, {L"# note", L"", L""}, {L"b", L"abc", L"y"}};
    std::unique_ptr<PreviewListCtrl> list;

    void SetUp() override
    {
        SKIP_WITHOUT_WINDOW(window);
        window.AddChild(kPlaceholderId, L"Static", 0, {10, 10, 610, 300});
        list = std::make_unique<PreviewListCtrl>(window.Handle(), kPlaceholderId, kListId);
        list->SetSource({
            [this](long row, long column) -> const WString* {
                return row < 3 && column < 3 ? &cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]
                                             : nullptr;
            },
            [](long row) { return row == 1 ? ImportPreview::kCommentRowColour : PreviewListCtrl::kNoColour; },
            [](long row, long column) { return row == 2 && column == 1; },
        });
        window.OnNotify([this](const NMHDR& header, LRESULT& result) { return list->OnNotify(header, result); });
        list->SetColumns({L"C1", L"C2", L"C3"}, {80, 90, 100});
        list->ShowRows(3);
        PumpMessages();
    }

    WString ShownText(int row, int column) const
    {
        wchar_t text[512] = {};
        LVITEMW item{};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = 512;
        ::SendMessageW(list->Handle(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return text;
    }

    // A pixel inside the cell, right of where its text would be.
    COLORREF CellBackground(int row, int column) const
    {
        RECT cell{};
        ListView_GetSubItemRect(list->Handle(), row, column, LVIR_BOUNDS, &cell);
        if (column == 0)
            cell.right = cell.left + ListView_GetColumnWidth(list->Handle(), 0);
        return PrintedPixel(list->Handle(), cell.right - 4, (cell.top + cell.bottom) / 2);
    }
};

TEST_F(PreviewInWindow, IsAVirtualReportListInThePlaceholdersPlace)
{
    ASSERT_NE(list->Handle(), nullptr);
    EXPECT_EQ(::GetDlgItem(window.Handle(), kListId), list->Handle());
    EXPECT_EQ(::GetDlgItem(window.Handle(), kPlaceholderId), nullptr);
    const LONG_PTR style = ::GetWindowLongPtrW(list->Handle(), GWL_STYLE);
    EXPECT_EQ(style & LVS_TYPEMASK, LVS_REPORT);
    EXPECT_TRUE(style & LVS_OWNERDATA);
    const DWORD extended = ListView_GetExtendedListViewStyle(list->Handle());
    EXPECT_TRUE(extended & LVS_EX_GRIDLINES);
    EXPECT_TRUE(extended & LVS_EX_FULLROWSELECT);
}

TEST_F(PreviewInWindow, ShowsTheSourcesCellsAndReplacesColumns)
{
    EXPECT_EQ(ListView_GetItemCount(list->Handle()), 3);
    EXPECT_EQ(ShownText(0, 1), L"1.5");
    EXPECT_EQ(ShownText(2, 2), L"y");
    // A marked cell carries a sign before its text.
    EXPECT_EQ(ShownText(2, 1), L"\u26A0 abc");
    EXPECT_EQ(ListView_GetColumnWidth(list->Handle(), 2), 100);

    list->SetColumns({L"C1"}, {70});
    list->ShowRows(1);
    EXPECT_EQ(Header_GetItemCount(ListView_GetHeader(list->Handle())), 1);
    EXPECT_EQ(ListView_GetItemCount(list->Handle()), 1);
}

TEST_F(PreviewInWindow, ShowsOnlyTheBeginningOfALongCell)
{
    cells[0][2] = WString(5000, L'z');
    const WString shown = list->CellText(0, 2);
    EXPECT_EQ(shown, WString(PreviewListCtrl::kShownCellLength, L'z') + L"\u2026");
    EXPECT_EQ(ShownText(0, 2), shown);
}

TEST_F(PreviewInWindow, OnlyCommentRowsAreGreyAndMarkedCellsPaleRed)
{
    const COLORREF window = ::GetSysColor(COLOR_WINDOW);
    struct Expected {
        int row, column;
        COLORREF background;
    };
    const Expected cells[] = {{0, 0, window}, {0, 2, window}, {1, 0, 0xD3D3D3}, {1, 2, 0xD3D3D3},
                              {2, 0, window}, {2, 1, kMarkedBackground}, {2, 2, window}};
    for (const Expected& cell : cells)
        EXPECT_EQ(CellBackground(cell.row, cell.column), cell.background) << cell.row << "," << cell.column;
}

} // namespace
