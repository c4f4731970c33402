#pragma once
// An editable list of rows with typed cells: plain text, text edited in place (Enter
// commits, Esc cancels), a drop-down choice from a list of strings, and a check box that
// one click toggles. Built on wxGrid, whose in-place editors the toolkit lets tests reach.

#include <wx/grid.h>

#include <functional>
#include <vector>

class ColumnListCtrl final : public wxGrid {
public:
    enum class CellKind { Text, EditableText, Choice, Check };
    struct Column {
        wxString heading;
        int width;
        CellKind kind;
    };
    // Called after the user changed a cell (an edit committed, a choice made, a box toggled).
    using CellChanged = std::function<void(int row, int column)>;

    ColumnListCtrl(wxWindow* parent, int id, const wxSize& size = wxDefaultSize);

    void SetColumns(const std::vector<Column>& columns);
    // Empties the list and makes count rows; Choice cells offer the column's choices.
    void ResetRows(int count);
    void SetChoices(int column, const wxArrayString& choices);
    void OnCellChanged(CellChanged handler) { changed_ = std::move(handler); }

    void SetText(int row, int column, const wxString& text) { SetCellValue(row, column, text); }
    wxString Text(int row, int column) const { return GetCellValue(row, column); }
    // The index of the cell's choice, -1 for none.
    void SetChoice(int row, int column, int index);
    int Choice(int row, int column) const;
    void SetCheck(int row, int column, bool checked) { SetCellValue(row, column, checked ? "1" : ""); }
    bool Checked(int row, int column) const { return !GetCellValue(row, column).empty(); }

    // True while an in-place editor is open.
    bool IsEditing() const { return IsCellEditControlShown(); }
    // Closes the open editor without taking what was typed.
    void CancelEdit();

private:
    void OnLeftClick(wxGridEvent& event);

    std::vector<Column> columns_;
    std::vector<wxArrayString> choices_;
    CellChanged changed_;
};
