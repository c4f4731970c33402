#include "ui/win32/PreviewListCtrl.h"

#include "ui/win32/MarkedColours.h"
#include "ui/win32/PlaceholderControl.h"

#include <algorithm>

namespace {

// A sign before a marked cell as well as its colours: a sign needs no colour vision.
constexpr WChar kWarningSign[] = L"\u26A0 ";
constexpr WChar kEllipsis = L'\u2026';

} // namespace

PreviewListCtrl::PreviewListCtrl(HWND dialog, int placeholderId, int id)
{
    list_ = ReplacePlaceholder(dialog, placeholderId, id, WC_LISTVIEWW,
                               WS_TABSTOP | WS_BORDER | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS, 0);
    if (list_)
        ListView_SetExtendedListViewStyle(list_, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
}

void PreviewListCtrl::SetColumns(const std::vector<WString>& headings, const std::vector<int>& widths)
{
    ListView_SetItemCountEx(list_, 0, 0);
    while (columnCount_ > 0)
        ListView_DeleteColumn(list_, --columnCount_);
    for (std::size_t i = 0; i < headings.size(); ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = LVCFMT_LEFT;
        column.cx = i < widths.size() ? widths[i] : 60;
        column.pszText = const_cast<WChar*>(headings[i].c_str());
        if (::SendMessageW(list_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column)) >= 0)
            ++columnCount_;
    }
}

void PreviewListCtrl::ShowRows(long count)
{
    ListView_SetItemCountEx(list_, count, 0);
    Redraw();
}

void PreviewListCtrl::Redraw() { ::InvalidateRect(list_, nullptr, FALSE); }

int PreviewListCtrl::TextWidth(const WChar* text, std::size_t length) const
{
    HDC dc = ::GetDC(list_);
    HGDIOBJ previous = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageW(list_, WM_GETFONT, 0, 0)));
    SIZE extent{};
    ::GetTextExtentPoint32W(dc, text, static_cast<int>(length), &extent);
    ::SelectObject(dc, previous);
    ::ReleaseDC(list_, dc);
    return extent.cx;
}

WString PreviewListCtrl::CellText(long row, long column) const
{
    const WString* text = source_.cell ? source_.cell(row, column) : nullptr;
    if (!text)
        return WString();
    WString shown = source_.cellMarked && source_.cellMarked(row, column) ? kWarningSign : WTEXT("");
    if (text->size() <= kShownCellLength)
        return shown + *text;
    shown.append(*text, 0, kShownCellLength);
    return shown + kEllipsis;
}

bool PreviewListCtrl::OnNotify(const NMHDR& header, LRESULT& result)
{
    if (header.hwndFrom != list_ || !list_)
        return false;
    switch (header.code) {
    case LVN_GETDISPINFOW:
        FillItem(reinterpret_cast<NMLVDISPINFOW&>(const_cast<NMHDR&>(header)).item);
        result = 0;
        return true;
    case NM_CUSTOMDRAW:
        result = CustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(header)));
        return true;
    default: return false;
    }
}

void PreviewListCtrl::FillItem(LVITEMW& item) const
{
    if (!(item.mask & LVIF_TEXT) || !item.pszText || item.cchTextMax <= 0)
        return;
    shown_ = CellText(item.iItem, item.iSubItem);
    const std::size_t copied = std::min<std::size_t>(shown_.size(), static_cast<std::size_t>(item.cchTextMax - 1));
    std::copy_n(shown_.c_str(), copied, item.pszText);
    item.pszText[copied] = 0;
}

LRESULT PreviewListCtrl::CustomDraw(NMLVCUSTOMDRAW& draw) const
{
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
        const long row = static_cast<long>(draw.nmcd.dwItemSpec);
        if (source_.cellMarked && source_.cellMarked(row, draw.iSubItem)) {
            draw.clrTextBk = kMarkedBackground;
            draw.clrText = kMarkedText;
            return CDRF_NEWFONT;
        }
        const std::uint32_t colour = source_.rowColour ? source_.rowColour(row) : kNoColour;
        draw.clrTextBk = colour == kNoColour ? CLR_DEFAULT : colour;
        draw.clrText = CLR_DEFAULT;
        return CDRF_NEWFONT;
    }
    default: return CDRF_DODEFAULT;
    }
}
