#include "ui/wx/ColumnListCtrl.h"

ColumnListCtrl::ColumnListCtrl(wxWindow* parent, int id, const wxSize& size)
    : wxGrid(parent, id, wxDefaultPosition, size, wxWANTS_CHARS | wxBORDER_SIMPLE)
{
    CreateGrid(0, 0, wxGridSelectRows);
    SetRowLabelSize(0);
    EnableDragRowSize(false);
    SetDefaultCellOverflow(false);
    Bind(wxEVT_GRID_CELL_LEFT_CLICK, &ColumnListCtrl::OnLeftClick, this);
    Bind(wxEVT_GRID_CELL_CHANGED, [this](wxGridEvent& event) {
        if (changed_)
            changed_(event.GetRow(), event.GetCol());
        event.Skip();
    });
}

void ColumnListCtrl::SetColumns(const std::vector<Column>& columns)
{
    columns_ = columns;
    choices_.assign(columns.size(), wxArrayString());
    if (GetNumberCols() > 0)
        DeleteCols(0, GetNumberCols());
    AppendCols(static_cast<int>(columns.size()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int column = static_cast<int>(i);
        SetColLabelValue(column, columns[i].heading);
        SetColSize(column, columns[i].width);
    }
}

void ColumnListCtrl::SetChoices(int column, const wxArrayString& choices)
{
    choices_.at(static_cast<std::size_t>(column)) = choices;
}

void ColumnListCtrl::ResetRows(int count)
{
    if (IsEditing())
        CancelEdit();
    if (GetNumberRows() > 0)
        DeleteRows(0, GetNumberRows());
    AppendRows(count);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        auto* attributes = new wxGridCellAttr;
        switch (columns_[i].kind) {
        case CellKind::Text: attributes->SetReadOnly(); break;
        case CellKind::EditableText: break;
        case CellKind::Choice: attributes->SetEditor(new wxGridCellChoiceEditor(choices_[i])); break;
        case CellKind::Check:
            attributes->SetRenderer(new wxGridCellBoolRenderer);
            attributes->SetAlignment(wxALIGN_CENTRE, wxALIGN_CENTRE);
            // Toggled by one click (OnLeftClick), never through an editor.
            attributes->SetReadOnly();
            break;
        }
        SetColAttr(static_cast<int>(i), attributes);
    }
}

void ColumnListCtrl::SetChoice(int row, int column, int index)
{
    const wxArrayString& choices = choices_.at(static_cast<std::size_t>(column));
    SetCellValue(row, column, index >= 0 && index < static_cast<int>(choices.size()) ? choices[index] : wxString());
}

int ColumnListCtrl::Choice(int row, int column) const
{
    return choices_.at(static_cast<std::size_t>(column)).Index(GetCellValue(row, column));
}

void ColumnListCtrl::CancelEdit()
{
    if (!IsEditing())
        return;
    wxGridCellEditor* editor = GetCellEditor(GetGridCursorRow(), GetGridCursorCol());
    // Back to the cell's value first, so that closing the editor changes nothing.
    editor->Reset();
    editor->DecRef();
    DisableCellEditControl();
}

void ColumnListCtrl::OnLeftClick(wxGridEvent& event)
{
    const int column = event.GetCol();
    if (column < 0 || column >= static_cast<int>(columns_.size()) || columns_[column].kind != CellKind::Check) {
        event.Skip();
        return;
    }
    SetGridCursor(event.GetRow(), column);
    SetCheck(event.GetRow(), column, !Checked(event.GetRow(), column));
    if (changed_)
        changed_(event.GetRow(), column);
}
