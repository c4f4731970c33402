#include "ui/wx/PreviewListCtrl.h"

#include "ui/wx/WxText.h"

namespace {

wxColour ToColour(std::uint32_t colour)
{
    return wxColour(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

} // namespace

PreviewListCtrl::PreviewListCtrl(wxWindow* parent, int id, const wxSize& size)
    : wxListCtrl(parent, id, wxDefaultPosition, size, wxLC_REPORT | wxLC_VIRTUAL | wxLC_HRULES | wxLC_VRULES)
{
    // A cell that its column's type cannot convert: dark red on pale red.
    markedAttr_.SetBackgroundColour(wxColour(255, 205, 205));
    markedAttr_.SetTextColour(wxColour(150, 0, 0));
}

void PreviewListCtrl::SetColumns(const wxArrayString& headings, const std::vector<int>& widths)
{
    SetItemCount(0);
    DeleteAllColumns();
    for (std::size_t i = 0; i < headings.size(); ++i)
        InsertColumn(static_cast<long>(i), headings[i], wxLIST_FORMAT_LEFT, i < widths.size() ? widths[i] : 60);
}

void PreviewListCtrl::ShowRows(long count)
{
    SetItemCount(count);
    Refresh();
}

wxString PreviewListCtrl::OnGetItemText(long item, long column) const
{
    const WString* text = source_.cell ? source_.cell(item, column) : nullptr;
    if (!text)
        return wxString();
    // A sign before a marked cell as well as its colours: not every toolkit draws colours
    // per cell (the generic list of wxGTK does not), and a sign needs no colour vision.
    const wxString sign = source_.cellMarked && source_.cellMarked(item, column) ? wxString::FromUTF8("\xE2\x9A\xA0 ")
                                                                                 : wxString();
    if (text->size() <= kShownCellLength)
        return sign + ToWxString(*text);
    return sign + ToWxString(text->data(), kShownCellLength) + wxString::FromUTF8("\xE2\x80\xA6");
}

wxItemAttr* PreviewListCtrl::OnGetItemAttr(long item) const
{
    const std::uint32_t colour = source_.rowColour ? source_.rowColour(item) : kNoColour;
    if (colour == kNoColour)
        return nullptr;
    rowAttr_.SetBackgroundColour(ToColour(colour));
    return &rowAttr_;
}

wxItemAttr* PreviewListCtrl::OnGetItemColumnAttr(long item, long column) const
{
    if (source_.cellMarked && source_.cellMarked(item, column))
        return &markedAttr_;
    return OnGetItemAttr(item);
}
