#include "ui/win32/ColumnListCtrl.h"

#include "ui/win32/MarkedColours.h"

#include <algorithm>

namespace {

constexpr UINT_PTR kSubclassId = 1;
constexpr int kChoiceListRows = 8;

} // namespace

ColumnListCtrl::ColumnListCtrl(HWND list) : list_(list)
{
    ::SetWindowLongPtrW(list_, GWL_STYLE,
                        (::GetWindowLongPtrW(list_, GWL_STYLE) & ~LVS_TYPEMASK) | LVS_REPORT | LVS_SINGLESEL |
                            LVS_SHOWSELALWAYS);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
    ::SetWindowSubclass(list_, &ColumnListCtrl::ListProcedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
}

ColumnListCtrl::~ColumnListCtrl()
{
    if (::IsWindow(list_))
        ::RemoveWindowSubclass(list_, &ColumnListCtrl::ListProcedure, kSubclassId);
    for (HWND editor : {edit_, combo_}) {
        if (editor && ::IsWindow(editor))
            ::RemoveWindowSubclass(editor, &ColumnListCtrl::EditorProcedure, kSubclassId);
    }
}

void ColumnListCtrl::SetColumns(const std::vector<Column>& columns)
{
    ResetRows(0);
    while (ListView_DeleteColumn(list_, 0)) {
    }
    columns_ = columns;
    choices_.assign(columns.size(), {});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        LVCOLUMNW column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        column.fmt = LVCFMT_LEFT;
        column.cx = columns[i].width;
        column.pszText = const_cast<WChar*>(columns[i].heading.c_str());
        ::SendMessageW(list_, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    }
}

void ColumnListCtrl::SetColumnWidths(const std::vector<int>& widths)
{
    for (std::size_t i = 0; i < widths.size() && i < columns_.size(); ++i) {
        columns_[i].width = widths[i];
        ListView_SetColumnWidth(list_, static_cast<int>(i), widths[i]);
    }
}

void ColumnListCtrl::ResetRows(int count)
{
    CancelEdit();
    ListView_DeleteAllItems(list_);
    rows_.assign(static_cast<std::size_t>(std::max(count, 0)), std::vector<Cell>(columns_.size()));
    for (int row = 0; row < count; ++row) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = const_cast<WChar*>(L"");
        ::SendMessageW(list_, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    }
}

void ColumnListCtrl::SetChoices(int column, std::vector<WString> choices)
{
    if (column >= 0 && static_cast<std::size_t>(column) < choices_.size())
        choices_[static_cast<std::size_t>(column)] = std::move(choices);
}

ColumnListCtrl::Cell* ColumnListCtrl::At(int row, int column)
{
    if (row < 0 || column < 0 || static_cast<std::size_t>(row) >= rows_.size() ||
        static_cast<std::size_t>(column) >= columns_.size())
        return nullptr;
    return &rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

const ColumnListCtrl::Cell* ColumnListCtrl::At(int row, int column) const
{
    return const_cast<ColumnListCtrl*>(this)->At(row, column);
}

ColumnListCtrl::CellKind ColumnListCtrl::Kind(int column) const
{
    return column >= 0 && static_cast<std::size_t>(column) < columns_.size()
               ? columns_[static_cast<std::size_t>(column)].kind
               : CellKind::Text;
}

void ColumnListCtrl::SetText(int row, int column, const WString& text)
{
    if (Cell* cell = At(row, column)) {
        cell->text = text;
        ShowCell(row, column);
    }
}

WString ColumnListCtrl::Text(int row, int column) const
{
    const Cell* cell = At(row, column);
    return cell ? cell->text : WString();
}

void ColumnListCtrl::SetChoice(int row, int column, int index)
{
    if (Cell* cell = At(row, column)) {
        const auto& choices = choices_[static_cast<std::size_t>(column)];
        cell->choice = index >= 0 && static_cast<std::size_t>(index) < choices.size() ? index : -1;
        cell->text = cell->choice >= 0 ? choices[static_cast<std::size_t>(cell->choice)] : WString();
        ShowCell(row, column);
    }
}

int ColumnListCtrl::Choice(int row, int column) const
{
    const Cell* cell = At(row, column);
    return cell ? cell->choice : -1;
}

void ColumnListCtrl::SetCheck(int row, int column, bool checked)
{
    if (Cell* cell = At(row, column)) {
        cell->checked = checked;
        ShowCell(row, column);
    }
}

bool ColumnListCtrl::Checked(int row, int column) const
{
    const Cell* cell = At(row, column);
    return cell && cell->checked;
}

void ColumnListCtrl::SetMarked(int row, int column, bool marked)
{
    if (Cell* cell = At(row, column)) {
        cell->marked = marked;
        ShowCell(row, column);
    }
}

// The list holds each cell's text for drawing; a check box has none, it is drawn.
void ColumnListCtrl::ShowCell(int row, int column)
{
    const Cell* cell = At(row, column);
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = const_cast<WChar*>(Kind(column) == CellKind::Check ? L"" : cell->text.c_str());
    ::SendMessageW(list_, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    ListView_RedrawItems(list_, row, row);
}

RECT ColumnListCtrl::CellRect(int row, int column) const
{
    RECT cell{};
    ListView_GetSubItemRect(list_, row, column, LVIR_BOUNDS, &cell);
    // The first column's bounds are the whole row's.
    if (column == 0 && columns_.size() > 1)
        cell.right = cell.left + ListView_GetColumnWidth(list_, 0);
    return cell;
}

HWND ColumnListCtrl::MakeEditor(const wchar_t* windowClass, DWORD style)
{
    HWND editor = ::CreateWindowExW(0, windowClass, L"", WS_CHILD | style, 0, 0, 0, 0, list_, nullptr,
                                    reinterpret_cast<HINSTANCE>(::GetWindowLongPtrW(list_, GWLP_HINSTANCE)), nullptr);
    ::SendMessageW(editor, WM_SETFONT, ::SendMessageW(list_, WM_GETFONT, 0, 0), FALSE);
    ::SetWindowSubclass(editor, &ColumnListCtrl::EditorProcedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
    return editor;
}

bool ColumnListCtrl::BeginEdit(int row, int column)
{
    const Cell* cell = At(row, column);
    const CellKind kind = Kind(column);
    if (!cell || (kind != CellKind::EditableText && kind != CellKind::Choice))
        return false;
    CommitEdit();
    ListView_EnsureVisible(list_, row, FALSE);
    const RECT place = CellRect(row, column);
    editRow_ = row;
    editColumn_ = column;
    if (kind == CellKind::EditableText) {
        if (!edit_)
            edit_ = MakeEditor(WC_EDITW, WS_BORDER | ES_AUTOHSCROLL);
        ::SetWindowTextW(edit_, cell->text.c_str());
        ::MoveWindow(edit_, place.left, place.top, place.right - place.left, place.bottom - place.top, FALSE);
        ::ShowWindow(edit_, SW_SHOW);
        ::SetFocus(edit_);
        ::SendMessageW(edit_, EM_SETSEL, 0, -1);
        return true;
    }
    if (!combo_)
        combo_ = MakeEditor(WC_COMBOBOXW, WS_VSCROLL | CBS_DROPDOWNLIST);
    ::SendMessageW(combo_, CB_RESETCONTENT, 0, 0);
    for (const WString& choice : choices_[static_cast<std::size_t>(column)])
        ::SendMessageW(combo_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.c_str()));
    ::SendMessageW(combo_, CB_SETCURSEL, static_cast<WPARAM>(cell->choice), 0);
    const int rowHeight = place.bottom - place.top;
    ::MoveWindow(combo_, place.left, place.top, place.right - place.left, rowHeight * (kChoiceListRows + 1), FALSE);
    ::ShowWindow(combo_, SW_SHOW);
    ::SetFocus(combo_);
    ::SendMessageW(combo_, CB_SHOWDROPDOWN, TRUE, 0);
    return true;
}

bool ColumnListCtrl::IsEditor(HWND window) const { return window && (window == edit_ || window == combo_); }

void ColumnListCtrl::CommitEdit() { EndEdit(true); }

void ColumnListCtrl::CancelEdit() { EndEdit(false); }

// The editors stay made and are hidden: closing one never destroys a window while it is
// still inside its own message handling.
void ColumnListCtrl::EndEdit(bool commit)
{
    if (!IsEditing())
        return;
    const int row = editRow_;
    const int column = editColumn_;
    editRow_ = editColumn_ = -1;
    HWND editor = Kind(column) == CellKind::Choice ? combo_ : edit_;
    // Read before the editor closes: closing a drop-down list may put back its selection.
    const WString text = editor == edit_ ? EditorText() : WString();
    const int choice = editor == combo_ ? static_cast<int>(::SendMessageW(combo_, CB_GETCURSEL, 0, 0)) : -1;
    const bool hadFocus = ::GetFocus() == editor;
    if (editor == combo_)
        ::SendMessageW(combo_, CB_SHOWDROPDOWN, FALSE, 0);
    ::ShowWindow(editor, SW_HIDE);
    if (hadFocus)
        ::SetFocus(list_);
    if (!commit)
        return;
    const bool changed = editor == edit_ ? text != Text(row, column) : choice >= 0 && choice != Choice(row, column);
    if (!changed)
        return;
    if (editor == edit_)
        SetText(row, column, text);
    else
        SetChoice(row, column, choice);
    if (changed_)
        changed_(row, column);
}

WString ColumnListCtrl::EditorText() const
{
    const int length = ::GetWindowTextLengthW(edit_);
    WString text(static_cast<std::size_t>(length) + 1, L'\0');
    text.resize(static_cast<std::size_t>(std::max(::GetWindowTextW(edit_, text.data(), length + 1), 0)));
    return text;
}

void ColumnListCtrl::Toggle(int row, int column)
{
    SetCheck(row, column, !Checked(row, column));
    if (changed_)
        changed_(row, column);
}

bool ColumnListCtrl::OnClick(LPARAM point)
{
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(point)), static_cast<short>(HIWORD(point))};
    if (ListView_SubItemHitTest(list_, &hit) < 0 || !(hit.flags & LVHT_ONITEM))
        return false;
    switch (Kind(hit.iSubItem)) {
    case CellKind::Check: Toggle(hit.iItem, hit.iSubItem); return true;
    case CellKind::EditableText:
    case CellKind::Choice: return BeginEdit(hit.iItem, hit.iSubItem);
    default: return false;
    }
}

// Space toggles the focused row's check box; F2 edits its first editable cell.
bool ColumnListCtrl::OnKey(WPARAM key)
{
    const int row = ListView_GetNextItem(list_, -1, LVNI_FOCUSED);
    if (row < 0)
        return false;
    const CellKind wanted = key == VK_SPACE ? CellKind::Check : CellKind::EditableText;
    if (key != VK_SPACE && key != VK_F2)
        return false;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (columns_[column].kind != wanted)
            continue;
        if (key == VK_SPACE)
            Toggle(row, static_cast<int>(column));
        else
            BeginEdit(row, static_cast<int>(column));
        return true;
    }
    return false;
}

LRESULT CALLBACK ColumnListCtrl::ListProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                               DWORD_PTR owner)
{
    (void)window;
    return reinterpret_cast<ColumnListCtrl*>(owner)->OnListMessage(message, wParam, lParam);
}

LRESULT ColumnListCtrl::OnListMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
        // The list selects the row and takes the focus first; then the cell acts.
        const LRESULT result = ::DefSubclassProc(list_, message, wParam, lParam);
        OnClick(lParam);
        return result;
    }
    case WM_KEYDOWN:
        if (OnKey(wParam))
            return 0;
        break;
    case WM_CHAR:
        if (wParam == L' ')
            return 0; // toggled on the key press; not a search for a row
        break;
    case WM_COMMAND:
        if (reinterpret_cast<HWND>(lParam) == combo_ && combo_) {
            const WORD code = HIWORD(wParam);
            if (code == CBN_SELENDOK || code == CBN_KILLFOCUS)
                EndEdit(true);
            return 0;
        }
        if (reinterpret_cast<HWND>(lParam) == edit_ && edit_) {
            if (HIWORD(wParam) == EN_KILLFOCUS)
                EndEdit(true);
            return 0;
        }
        break;
    case WM_VSCROLL:
    case WM_HSCROLL:
    case WM_MOUSEWHEEL:
        EndEdit(true); // the editor would stay behind while its cell moves
        break;
    case WM_NCDESTROY: {
        editRow_ = editColumn_ = -1;
        ::RemoveWindowSubclass(list_, &ColumnListCtrl::ListProcedure, kSubclassId);
        break;
    }
    default: break;
    }
    return ::DefSubclassProc(list_, message, wParam, lParam);
}

LRESULT CALLBACK ColumnListCtrl::EditorProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                                 DWORD_PTR owner)
{
    return reinterpret_cast<ColumnListCtrl*>(owner)->OnEditorMessage(window, message, wParam, lParam);
}

LRESULT ColumnListCtrl::OnEditorMessage(HWND editor, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_GETDLGCODE:
        // Enter and Esc are the editor's, not the dialog's default and cancel buttons.
        return ::DefSubclassProc(editor, message, wParam, lParam) | DLGC_WANTALLKEYS;
    case WM_KEYDOWN:
        if (wParam == VK_RETURN || wParam == VK_ESCAPE) {
            // An open drop-down list takes Enter (choosing) and Esc (closing) itself.
            if (editor == combo_ && ::SendMessageW(combo_, CB_GETDROPPEDSTATE, 0, 0))
                break;
            EndEdit(wParam == VK_RETURN);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam == L'\r' || wParam == L'\x1b')
            return 0; // no beep: the key press has acted
        break;
    case WM_NCDESTROY:
        ::RemoveWindowSubclass(editor, &ColumnListCtrl::EditorProcedure, kSubclassId);
        if (editor == edit_)
            edit_ = nullptr;
        if (editor == combo_)
            combo_ = nullptr;
        break;
    default: break;
    }
    return ::DefSubclassProc(editor, message, wParam, lParam);
}

bool ColumnListCtrl::OnNotify(const NMHDR& header, LRESULT& result)
{
    if (header.hwndFrom != list_ || header.code != NM_CUSTOMDRAW)
        return false;
    result = CustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(const_cast<NMHDR&>(header)));
    return true;
}

LRESULT ColumnListCtrl::CustomDraw(NMLVCUSTOMDRAW& draw) const
{
    switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT: return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT: return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM: {
        const int row = static_cast<int>(draw.nmcd.dwItemSpec);
        const Cell* cell = At(row, draw.iSubItem);
        if (!cell)
            return CDRF_DODEFAULT;
        if (Kind(draw.iSubItem) == CellKind::Check) {
            DrawCheck(draw, row, draw.iSubItem);
            return CDRF_SKIPDEFAULT;
        }
        draw.clrTextBk = cell->marked ? kMarkedBackground : CLR_DEFAULT;
        draw.clrText = cell->marked ? kMarkedText : CLR_DEFAULT;
        return CDRF_NEWFONT;
    }
    default: return CDRF_DODEFAULT;
    }
}

void ColumnListCtrl::DrawCheck(const NMLVCUSTOMDRAW& draw, int row, int column) const
{
    RECT cell = CellRect(row, column);
    // The row's own background: highlighted while selected in the focused list, as the list
    // draws the other cells.
    const bool selected = ListView_GetItemState(list_, row, LVIS_SELECTED) != 0;
    const int background = !selected ? COLOR_WINDOW : ::GetFocus() == list_ ? COLOR_HIGHLIGHT : COLOR_BTNFACE;
    ::FillRect(draw.nmcd.hdc, &cell, ::GetSysColorBrush(background));
    const int side = std::max(4, std::min<int>(cell.bottom - cell.top - 4, cell.right - cell.left - 4));
    RECT box;
    box.left = (cell.left + cell.right - side) / 2;
    box.top = (cell.top + cell.bottom - side) / 2;
    box.right = box.left + side;
    box.bottom = box.top + side;
    ::DrawFrameControl(draw.nmcd.hdc, &box, DFC_BUTTON, DFCS_BUTTONCHECK | (Checked(row, column) ? DFCS_CHECKED : 0));
}
