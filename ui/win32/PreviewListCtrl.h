#pragma once
// A virtual report list (owner data): rows and cells come from its owner on demand, rows may
// carry a background colour, and single cells may be marked (a warning sign before the text,
// dark red on pale red). However long a cell is, the list shows only its beginning, so that
// one huge field cannot stall the drawing. Its notifications reach its parent, which hands
// them to OnNotify.

#include "host/Text.h"
#include "ui/PreviewListSource.h"
#include "ui/win32/Win32.h"

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <vector>

class PreviewListCtrl final {
public:
    static constexpr std::size_t kShownCellLength = PreviewListSource::kShownCellLength;
    static constexpr std::uint32_t kNoColour = PreviewListSource::kNoColour;
    using Source = PreviewListSource;

    // Makes the list, with id, in the rectangle and tab position of the dialog's placeholder.
    PreviewListCtrl(HWND dialog, int placeholderId, int id);

    HWND Handle() const { return list_; }
    void SetSource(Source source) { source_ = std::move(source); }
    // Replaces the columns by headings[i], each widths[i] pixels wide.
    void SetColumns(const std::vector<WString>& headings, const std::vector<int>& widths);
    // Shows count rows, fetched again from the source.
    void ShowRows(long count);
    // Draws the rows again (their marks follow the column types).
    void Redraw();
    // The width of text in the list's font, in pixels.
    int TextWidth(const WChar* text, std::size_t length) const;
    // The text a cell shows.
    WString CellText(long row, long column) const;

    // A notification the list sent its parent: true when it was the list's, with the result
    // the parent answers.
    bool OnNotify(const NMHDR& header, LRESULT& result);

private:
    void FillItem(LVITEMW& item) const;
    LRESULT CustomDraw(NMLVCUSTOMDRAW& draw) const;

    HWND list_ = nullptr;
    Source source_;
    int columnCount_ = 0;
    mutable WString shown_; // the text of the latest LVN_GETDISPINFO, while the list copies it
};
