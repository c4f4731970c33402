#include "ui/win32/DlgTxtConfiguration.h"

#include "host/Messages.h"
#include "platform/Platform.h"
#include "ui/ColumnTypes.h"
#include "ui/TemplateIds.h"
#include "ui/win32/ColumnListCtrl.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/FileDialogs.h"
#include "ui/win32/MarkedColours.h"
#include "ui/win32/PreviewListCtrl.h"
#include "ui/win32/RulerWnd.h"
#include "ui/win32/RunBesideMessageLoop.h"
#include "ui/win32/TemplateCaptions.h"
#include "ui/win32/ToolTips.h"
#include "ui/win32/Win32.h"
#include "ui/win32/WindowDpi.h"
#include "ui/win32/WizardNotes.h"

#include <algorithm>
#include <string>

using VeltoGis::ImportExport::CImportDefinition;

namespace {

using namespace ImportControl;

// The column list's columns.
enum ColumnListColumn { kLabelColumn, kNameColumn, kTypeColumn, kOnColumn };

// Pixels at 96 DPI.
constexpr int kIconSize = 16;
constexpr int kColumnListWidths[] = {70, 90, 70, 64};
constexpr int kPreviewColumnWidth = 60;
constexpr int kPreviewColumnMaxWidth = 320;
constexpr int kPreviewColumnPadding = 16;
// The preview's columns are as wide as what this many first rows hold.
constexpr std::size_t kMeasuredRows = 100;
// The longest path the system's wide calls take.
constexpr WPARAM kLongestPath = 32767;

CDlgTxtConfiguration::FileChooser& InstalledChooser()
{
    static CDlgTxtConfiguration::FileChooser chooser;
    return chooser;
}

int PointX(LPARAM point) { return static_cast<short>(LOWORD(point)); }
int PointY(LPARAM point) { return static_cast<short>(HIWORD(point)); }

} // namespace

CDlgTxtConfiguration::CDlgTxtConfiguration(CImportDefinition& definition, bool node, const WChar* presetPath)
    : CAdUiBaseDialog(kTemplateId, Platform::ModuleInstance()),
      model_(definition, node),
      presetPath_(presetPath ? presetPath : WTEXT("")),
      hasPresetPath_(presetPath != nullptr),
      browse_(Platform::ModuleInstance()),
      removeBreaks_(Platform::ModuleInstance())
{
}

CDlgTxtConfiguration::~CDlgTxtConfiguration()
{
    ReleaseControls();
    if (markedBrush_)
        ::DeleteObject(markedBrush_);
}

void CDlgTxtConfiguration::SetFileChooser(FileChooser chooser) { InstalledChooser() = std::move(chooser); }

bool CDlgTxtConfiguration::OnInitDialog()
{
    ShowTemplateCaptions(Window(), ImportDialogTemplate());
    SetWindowText(TemplateTitle(ImportDialogTemplate()).c_str());
    CreateControls();
    // A preview of long lines takes seconds to read: the wizard keeps painting meanwhile. The
    // preview list reads the rows being read, so it shows none until they are.
    model_.SetPreviewRunner([this](const std::function<void()>& work, const std::function<void()>& poll) {
        preview_->ShowRows(0);
        RunBesideMessageLoop(work, poll);
    });
    model_.Open(hasPresetPath_ ? presetPath_.c_str() : nullptr);
    rulerCellWidth_ = model_.Ruler().PixelOf(1) - model_.Ruler().PixelOf(0);
    rulerMarkerHalfWidth_ = model_.Ruler().MarkerHalfWidth();
    ScaleToDpi();
    ShowFields();
    ShowMode();
    ShowPreview();
    ShowPresetChoices();
    return true;
}

void CDlgTxtConfiguration::CreateControls()
{
    HWND window = Window();
    ::SendDlgItemMessageW(window, kFilePath, EM_LIMITTEXT, kLongestPath, 0);
    const int iconSize = ScaledToWindow(window, kIconSize);
    browse_.Create(window, kBrowse);
    browse_.SetButtonIcon(WTEXT("IDI_OPEN"), IMAGE_ICON, iconSize, iconSize, 0);
    removeBreaks_.Create(window, kRemoveBreaks);
    removeBreaks_.SetButtonIcon(WTEXT("IDI_DELETE"), IMAGE_ICON, iconSize, iconSize, 0);
    ruler_ = std::make_unique<CRulerWnd>(window, kRuler, model_.Ruler());
    preview_ = std::make_unique<PreviewListCtrl>(window, kPreviewPlaceholderId, kPreviewListId);
    columns_ = std::make_unique<ColumnListCtrl>(::GetDlgItem(window, kColumnList));
    tips_ = std::make_unique<ToolTips>(window);
    tips_->SetTip(::GetDlgItem(window, kRemoveBreaks), LoadMessage(MessageId::RemoveAllBreaksTip));
    markedBrush_ = ::CreateSolidBrush(kMarkedBackground);
    SetUpColumnList();
    preview_->SetSource(PreviewListSourceOf(model_));
}

void CDlgTxtConfiguration::SetUpColumnList()
{
    columns_->SetColumns({{LoadMessage(MessageId::ColumnLabelHeading), 0, ColumnListCtrl::CellKind::Text},
                          {LoadMessage(MessageId::ColumnNameHeading), 0, ColumnListCtrl::CellKind::EditableText},
                          {LoadMessage(MessageId::ColumnTypeHeading), 0, ColumnListCtrl::CellKind::Choice},
                          {LoadMessage(MessageId::ColumnImportHeading), 0, ColumnListCtrl::CellKind::Check}});
    std::vector<WString> typeNames;
    for (int choice = 0; choice < kColumnTypeChoices; ++choice)
        typeNames.emplace_back(ColumnTypeName(choice));
    columns_->SetChoices(kTypeColumn, std::move(typeNames));
    columns_->OnCellChanged([this](int row, int column) { OnColumnChanged(row, column); });
}

// What the view sizes in pixels itself follows the window's DPI: the ruler's cells and
// markers, and the lists' columns (the preview's when it is shown next).
void CDlgTxtConfiguration::ScaleToDpi()
{
    RulerModel& ruler = model_.Ruler();
    ruler.SetCellWidth(ScaledToWindow(Window(), rulerCellWidth_));
    ruler.SetMarkerHalfWidth(ScaledToWindow(Window(), rulerMarkerHalfWidth_));
    std::vector<int> widths;
    for (const int width : kColumnListWidths)
        widths.push_back(ScaledToWindow(Window(), width));
    columns_->SetColumnWidths(widths);
    ruler_->Redraw();
}

// The controls' windows go with the dialog's; what refers to them goes first.
void CDlgTxtConfiguration::ReleaseControls()
{
    tips_.reset();
    columns_.reset();
    preview_.reset();
    ruler_.reset();
}

bool CDlgTxtConfiguration::OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam,
                                     std::intptr_t& result)
{
    switch (message) {
    case WM_COMMAND:
        result = 0;
        return OnCommand(LOWORD(wParam), HIWORD(wParam));
    case WM_NOTIFY: {
        const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
        LRESULT answer = 0;
        if ((preview_ && preview_->OnNotify(header, answer)) || (columns_ && columns_->OnNotify(header, answer))) {
            result = answer;
            return true;
        }
        return false;
    }
    case WM_CTLCOLOREDIT: {
        const auto marked = storedChanges_.find(::GetDlgCtrlID(reinterpret_cast<HWND>(lParam)));
        if (marked == storedChanges_.end() || marked->second == 0 || !markedBrush_)
            return false;
        ::SetBkColor(reinterpret_cast<HDC>(wParam), kMarkedBackground);
        result = reinterpret_cast<std::intptr_t>(markedBrush_);
        return true;
    }
    case WM_DPICHANGED:
        ScaleToDpi();
        ShowPreview();
        return false; // the dialog manager moves and scales the template's controls
    case WM_DESTROY:
        ReleaseControls();
        return false;
    default: return false;
    }
}

bool CDlgTxtConfiguration::OnCommand(int control, unsigned code)
{
    switch (control) {
    case kFilePath:
        if (code != EN_CHANGE || showing_)
            return false;
        model_.filePath = ControlText(Window(), kFilePath);
        ShowStoredChanges();
        return true;
    case kDelimited:
    case kFixedWidth:
        if (code != BN_CLICKED)
            return false;
        model_.SetMode(IsButtonChecked(Window(), kFixedWidth) ? ImportConfigurationModel::ModeFixedWidth
                                                               : ImportConfigurationModel::ModeDelimited);
        ShowMode();
        return true;
    case kSpace:
    case kTab:
    case kOther:
        if (code != BN_CLICKED)
            return false;
        TakeDelimiters();
        return true;
    case kOtherDelimiters:
    case kComments:
        if (code != EN_CHANGE || showing_)
            return false;
        TakeDelimiters();
        return true;
    case kBrowse:
        if (code != BN_CLICKED)
            return false;
        ChooseFile();
        return true;
    case kRemoveBreaks:
        if (code != BN_CLICKED)
            return false;
        model_.RemoveAllBreaks();
        ShowPreview();
        return true;
    case kRebuildColumns:
        if (code != BN_CLICKED)
            return false;
        model_.BuildColumnList();
        ShowColumns();
        preview_->Redraw();
        return true;
    default: return OnPresetCommand(control, code);
    }
}

void CDlgTxtConfiguration::ShowFields()
{
    ++showing_;
    SetControlText(Window(), kFilePath, model_.filePath);
    SetButtonChecked(Window(), kSpace, model_.space);
    SetButtonChecked(Window(), kTab, model_.tab);
    SetButtonChecked(Window(), kOther, model_.other);
    SetControlText(Window(), kOtherDelimiters, model_.otherDelimiters);
    SetControlText(Window(), kComments, model_.comments);
    SetButtonChecked(Window(), kNamesLine, model_.headerLines > 0);
    const bool fixedWidth = model_.mode == ImportConfigurationModel::ModeFixedWidth;
    ::CheckRadioButton(Window(), kDelimited, kFixedWidth, fixedWidth ? kFixedWidth : kDelimited);
    --showing_;
    ShowStoredChanges();
}

void CDlgTxtConfiguration::ShowStoredChanges()
{
    const std::pair<int, ImportValue> fields[] = {
        {kFilePath, ImportValue::FilePath}, {kOtherDelimiters, ImportValue::Delimiters}, {kComments, ImportValue::Comments}};
    for (const auto& [control, value] : fields) {
        const unsigned changes = model_.StoredChanges(value);
        storedChanges_[control] = changes;
        HWND edit = ::GetDlgItem(Window(), control);
        tips_->SetTip(edit, StoredChangeNote(changes));
        ::InvalidateRect(edit, nullptr, TRUE);
    }
}

// The names are marked in their cells; the list's tip says why, column by column.
void CDlgTxtConfiguration::ShowNameChanges()
{
    WString notes;
    for (std::size_t i = 0; i < model_.columns.size(); ++i) {
        const unsigned changes = model_.StoredChanges(ImportValue::ColumnName, i);
        columns_->SetMarked(static_cast<int>(i), kNameColumn, changes != 0);
        if (changes)
            notes += (notes.empty() ? WTEXT("") : WTEXT("\n")) + model_.columns[i].label + WTEXT(": ") +
                     StoredChangeNote(changes);
    }
    tips_->SetTip(columns_->Handle(), notes);
}

void CDlgTxtConfiguration::ShowMode()
{
    const bool delimiters = model_.DelimiterControlsEnabled();
    for (const int control : {kSpace, kTab, kOther, kOtherDelimiters})
        EnableControl(Window(), control, delimiters);
    ::EnableWindow(ruler_->Handle(), model_.RulerEnabled());
    EnableControl(Window(), kRemoveBreaks, model_.RulerEnabled());
    if (!model_.RulerEnabled())
        tips_->Follow({}, WString());
    ruler_->Redraw();
}

// Wide enough for what the first rows hold in the column, within bounds, so that short fields
// are read whole and one long field does not push the others out of sight.
int CDlgTxtConfiguration::PreviewColumnWidth(std::size_t column) const
{
    const WString widestHeading = WTEXT("C00");
    int widest = preview_->TextWidth(widestHeading.c_str(), widestHeading.size());
    const auto& rows = model_.Preview().Rows();
    for (std::size_t row = 0; row < rows.size() && row < kMeasuredRows; ++row) {
        if (column < rows[row].fields.size()) {
            const WString& text = rows[row].fields[column];
            widest = std::max(widest, preview_->TextWidth(text.c_str(),
                                                          std::min(text.size(), PreviewListCtrl::kShownCellLength)));
        }
    }
    return std::clamp(widest + ScaledToWindow(Window(), kPreviewColumnPadding),
                      ScaledToWindow(Window(), kPreviewColumnWidth), ScaledToWindow(Window(), kPreviewColumnMaxWidth));
}

void CDlgTxtConfiguration::ShowPreview()
{
    const ImportPreview& preview = model_.Preview();
    const std::size_t shown = static_cast<std::size_t>(preview.ColumnCount());
    std::vector<WString> headings;
    std::vector<int> widths;
    for (std::size_t i = 1; i <= shown; ++i) {
        headings.push_back(WTEXT("C") + std::to_wstring(i));
        widths.push_back(PreviewColumnWidth(i - 1));
    }
    ::SendMessageW(preview_->Handle(), WM_SETREDRAW, FALSE, 0);
    preview_->SetColumns(headings, widths);
    preview_->ShowRows(static_cast<long>(preview.Rows().size()));
    ::SendMessageW(preview_->Handle(), WM_SETREDRAW, TRUE, 0);
    preview_->Redraw();
    ShowShownColumns();
    ShowColumns();
    ShowEncoding();
    ruler_->Redraw();
}

// Said, so that nobody takes the columns listed for all there are.
void CDlgTxtConfiguration::ShowShownColumns()
{
    const ImportPreview& preview = model_.Preview();
    const bool cut = preview.ColumnCount() < preview.ColumnsFound();
    SetControlText(Window(), kShownColumns, cut ? ShownColumnsText(preview.ColumnsFound(), preview.ColumnCount()) : WString());
    ::ShowWindow(::GetDlgItem(Window(), kShownColumns), cut ? SW_SHOWNA : SW_HIDE);
}

void CDlgTxtConfiguration::ShowColumns()
{
    const std::size_t shown = model_.columns.size();
    ::SendMessageW(columns_->Handle(), WM_SETREDRAW, FALSE, 0);
    columns_->ResetRows(static_cast<int>(shown));
    for (std::size_t i = 0; i < shown; ++i) {
        const ColumnListRow& row = model_.columns[i];
        const int r = static_cast<int>(i);
        columns_->SetText(r, kLabelColumn, row.label);
        columns_->SetText(r, kNameColumn, row.name);
        columns_->SetChoice(r, kTypeColumn, row.type);
        columns_->SetMarked(r, kTypeColumn, !row.typeWarning.empty());
        columns_->SetCheck(r, kOnColumn, row.on);
    }
    ShowNameChanges();
    ::SendMessageW(columns_->Handle(), WM_SETREDRAW, TRUE, 0);
    ::InvalidateRect(columns_->Handle(), nullptr, TRUE);
    ShowNote(); // it names the columns whose type a line disagrees with
}

void CDlgTxtConfiguration::ShowEncoding()
{
    const ImportPreview& preview = model_.Preview();
    SetControlText(Window(), kEncoding,
                   preview.LineCount() == 0 && preview.Encoding().encoding == 0 ? WString()
                                                                               : EncodingText(preview.Encoding()));
}

void CDlgTxtConfiguration::TakeDelimiters()
{
    model_.space = IsButtonChecked(Window(), kSpace);
    model_.tab = IsButtonChecked(Window(), kTab);
    model_.other = IsButtonChecked(Window(), kOther);
    model_.otherDelimiters = ControlText(Window(), kOtherDelimiters);
    model_.comments = ControlText(Window(), kComments);
    model_.DelimitersChanged();
    ShowStoredChanges();
    ShowPreview();
}

void CDlgTxtConfiguration::ChooseFile()
{
    WString chosen = model_.filePath;
    const FileChooser& chooser = InstalledChooser();
    const bool taken = chooser ? chooser(Window(), ImportConfigurationModel::kFileFilter, chosen)
                               : ChooseFileToOpen(Window(), ImportConfigurationModel::kFileFilter, chosen);
    if (!taken)
        return;
    ++showing_;
    SetControlText(Window(), kFilePath, chosen);
    --showing_;
    model_.ChooseFile(chosen);
    ShowStoredChanges();
    ShowPreview();
}

bool CDlgTxtConfiguration::PreTranslateMessage(tagMSG* message)
{
    if (!ruler_ || !columns_)
        return false;
    if (message->hwnd == ruler_->Handle()) {
        switch (message->message) {
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
            OnRulerMouse(*message);
            return false; // the ruler takes the focus and reports the click
        case WM_MOUSELEAVE:
            tips_->Follow({}, WString());
            return false;
        case WM_KEYDOWN:
            if (OnRulerKey(*message))
                return true;
            break;
        default: break;
        }
    }
    if (message->message == WM_KEYDOWN && message->wParam == VK_RETURN && !columns_->IsEditor(message->hwnd)) {
        if (!OnPresetEnter(*message))
            OnEnter();
        return true;
    }
    return false;
}

void CDlgTxtConfiguration::OnRulerMouse(const tagMSG& message)
{
    if (!model_.RulerEnabled())
        return;
    const int position = model_.Ruler().PositionAt(PointX(message.lParam), PointY(message.lParam));
    TRACKMOUSEEVENT leave{sizeof(TRACKMOUSEEVENT), TME_LEAVE, message.hwnd, 0};
    ::TrackMouseEvent(&leave);
    POINT screen{PointX(message.lParam), PointY(message.lParam)};
    ::ClientToScreen(message.hwnd, &screen);
    tips_->Follow(screen, ImportConfigurationModel::RulerTip(position));
    if (message.message == WM_LBUTTONDOWN && model_.ClickRuler(position))
        ShowPreview();
}

// Space sets or removes a break at the cursor, Delete removes them all; the keys that move
// the cursor go to the ruler first, and the tip then names where it stands.
bool CDlgTxtConfiguration::OnRulerKey(tagMSG& message)
{
    RulerModel& ruler = model_.Ruler();
    switch (message.wParam) {
    case VK_SPACE:
        if (model_.ToggleBreakAt(ruler.Cursor() < 0 ? 0 : ruler.Cursor()))
            ShowPreview();
        return true;
    case VK_DELETE:
        model_.RemoveAllBreaks();
        ShowPreview();
        return true;
    case VK_LEFT: case VK_RIGHT: case VK_UP: case VK_DOWN:
    case VK_PRIOR: case VK_NEXT: case VK_HOME: case VK_END: {
        ::DispatchMessageW(&message);
        POINT screen{ruler.PixelOf(ruler.Cursor()), 0};
        RECT client;
        ::GetClientRect(message.hwnd, &client);
        screen.y = client.bottom;
        ::ClientToScreen(message.hwnd, &screen);
        tips_->Follow(screen, ImportConfigurationModel::RulerTip(ruler.Cursor() + ImportConfigurationModel::kRulerToCharacter));
        return true;
    }
    default: return false;
    }
}

// Enter moves on as Tab does (Shift+Enter back); it never closes the wizard.
void CDlgTxtConfiguration::OnEnter()
{
    const bool backward = ::GetKeyState(VK_SHIFT) < 0;
    HWND next = ::GetNextDlgTabItem(Window(), ::GetFocus(), backward);
    if (next)
        ::SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
}

void CDlgTxtConfiguration::OnColumnChanged(int row, int column)
{
    if (row < 0 || static_cast<std::size_t>(row) >= model_.columns.size())
        return;
    ColumnListRow& entry = model_.columns[static_cast<std::size_t>(row)];
    switch (column) {
    case kNameColumn:
        entry.name = columns_->Text(row, column);
        ShowNameChanges();
        break;
    case kTypeColumn:
        entry.type = columns_->Choice(row, column);
        model_.TypeChanged(static_cast<std::size_t>(row));
        columns_->SetMarked(row, kTypeColumn, !entry.typeWarning.empty());
        ShowNote();
        break;
    case kOnColumn: entry.on = columns_->Checked(row, column); break;
    default: return;
    }
    preview_->Redraw(); // the marks follow the type
}

void CDlgTxtConfiguration::OnCancel()
{
    if (columns_ && columns_->IsEditing()) {
        columns_->CancelEdit();
        return;
    }
    if (IsPresetListOpen()) {
        ::SendDlgItemMessageW(Window(), kPreset, CB_SHOWDROPDOWN, FALSE, 0);
        return;
    }
    CAdUiBaseDialog::OnCancel();
}

void CDlgTxtConfiguration::OnOK()
{
    if (columns_ && columns_->IsEditing())
        columns_->CommitEdit();
    model_.filePath = ControlText(Window(), kFilePath);
    model_.Confirm();
    EndDialog(IDOK);
}
