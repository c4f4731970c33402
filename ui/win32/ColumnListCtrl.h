#pragma once
// An editable report list of rows with typed cells: plain text, text edited in place (Enter
// commits, Esc cancels, leaving the editor commits), a drop-down choice from a list of
// strings, and a check box that a click or Space toggles. Grid lines, whole rows selected.
// Takes over a SysListView32 of the dialog; the list's notifications reach the dialog, which
// hands them to OnNotify.

#include "host/Text.h"
#include "ui/win32/Win32.h"

#include <commctrl.h>

#include <functional>
#include <vector>

class ColumnListCtrl final {
public:
    enum class CellKind { Text, EditableText, Choice, Check };
    struct Column {
        WString heading;
        int width; // pixels
        CellKind kind;
    };
    // Called after the user changed a cell (an edit committed, a choice made, a box toggled).
    using CellChanged = std::function<void(int row, int column)>;

    explicit ColumnListCtrl(HWND list);
    ~ColumnListCtrl();
    ColumnListCtrl(const ColumnListCtrl&) = delete;
    ColumnListCtrl& operator=(const ColumnListCtrl&) = delete;

    HWND Handle() const { return list_; }
    void SetColumns(const std::vector<Column>& columns);
    // Sets the columns' widths in pixels, in order.
    void SetColumnWidths(const std::vector<int>& widths);
    // Empties the list (closing an open editor unread) and makes count rows.
    void ResetRows(int count);
    void SetChoices(int column, std::vector<WString> choices);
    void OnCellChanged(CellChanged handler) { changed_ = std::move(handler); }

    void SetText(int row, int column, const WString& text);
    WString Text(int row, int column) const;
    // The index of the cell's choice, -1 for none.
    void SetChoice(int row, int column, int index);
    int Choice(int row, int column) const;
    void SetCheck(int row, int column, bool checked);
    bool Checked(int row, int column) const;
    // A marked cell is drawn dark red on pale red.
    void SetMarked(int row, int column, bool marked);

    // Opens the cell's in-place editor, as a click on it does: an edit control for an
    // EditableText cell, the dropped-down list for a Choice. False for other cells.
    bool BeginEdit(int row, int column);
    // True while an in-place editor is open.
    bool IsEditing() const { return editRow_ >= 0; }
    // True for the editors' windows, which keep Enter and Esc for themselves.
    bool IsEditor(HWND window) const;
    // Closes the open editor, taking what it holds.
    void CommitEdit();
    // Closes the open editor without taking what was typed or chosen.
    void CancelEdit();

    // A notification the list sent its parent: true when it was the list's, with the result
    // the parent answers.
    bool OnNotify(const NMHDR& header, LRESULT& result);

private:
    struct Cell {
        WString text;
        int choice = -1;
        bool checked = false;
        bool marked = false;
    };

    static LRESULT CALLBACK ListProcedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR owner);
    static LRESULT CALLBACK EditorProcedure(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR owner);
    LRESULT OnListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnEditorMessage(HWND editor, UINT message, WPARAM wParam, LPARAM lParam);
    bool OnClick(LPARAM point);
    bool OnKey(WPARAM key);
    void Toggle(int row, int column);
    void EndEdit(bool commit);
    WString EditorText() const;
    void ShowCell(int row, int column);
    HWND MakeEditor(const wchar_t* windowClass, DWORD style);
    RECT CellRect(int row, int column) const;
    LRESULT CustomDraw(NMLVCUSTOMDRAW& draw) const;
    void DrawCheck(const NMLVCUSTOMDRAW& draw, int row, int column) const;
    Cell* At(int row, int column);
    const Cell* At(int row, int column) const;
    CellKind Kind(int column) const;

    HWND list_;
    HWND edit_ = nullptr;
    HWND combo_ = nullptr;
    std::vector<Column> columns_;
    std::vector<std::vector<WString>> choices_;
    std::vector<std::vector<Cell>> rows_;
    CellChanged changed_;
    int editRow_ = -1;
    int editColumn_ = -1;
};
