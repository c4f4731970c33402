#pragma once
// A virtual report list: rows and cells come from its owner on demand, rows may carry a
// background colour, and single cells may be marked (a warning sign before the text, and
// pale red where the toolkit draws colours per cell). However long a cell is, the list shows
// only its beginning, so that one huge field cannot stall the drawing.

#include "host/Text.h"
#include "ui/PreviewListSource.h"

#include <wx/listctrl.h>

#include <cstdint>
#include <functional>
#include <vector>

class PreviewListCtrl final : public wxListCtrl {
public:
    static constexpr std::size_t kShownCellLength = PreviewListSource::kShownCellLength;
    static constexpr std::uint32_t kNoColour = PreviewListSource::kNoColour;
    using Source = PreviewListSource;

    PreviewListCtrl(wxWindow* parent, int id, const wxSize& size = wxDefaultSize);

    void SetSource(Source source) { source_ = std::move(source); }
    // Replaces the columns by headings[i], each widths[i] pixels wide.
    void SetColumns(const wxArrayString& headings, const std::vector<int>& widths);
    // Shows count rows, fetched again from the source.
    void ShowRows(long count);

private:
    wxString OnGetItemText(long item, long column) const override;
    wxItemAttr* OnGetItemAttr(long item) const override;
    wxItemAttr* OnGetItemColumnAttr(long item, long column) const override;

    Source source_;
    mutable wxItemAttr rowAttr_;
    mutable wxItemAttr markedAttr_;
};
