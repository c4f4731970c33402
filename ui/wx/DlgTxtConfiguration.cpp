#include "ui/wx/DlgTxtConfiguration.h"

#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "textfile/TextFileTypes.h"
#include "ui/wx/ColumnListCtrl.h"
#include "ui/ColumnTypes.h"
#include "ui/wx/PreviewListCtrl.h"
#include "ui/wx/RulerWnd.h"
#include "ui/wx/RunBesideEventLoop.h"
#include "ui/wx/TemplateControls.h"
#include "ui/TemplateIds.h"
#include "ui/wx/WxText.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/filedlg.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tooltip.h>

#include <algorithm>

using VeltoGis::ImportExport::CImportDefinition;

namespace {

using namespace ImportControl;

// The column list's columns.
enum ColumnListColumn { kLabelColumn, kNameColumn, kTypeColumn, kOnColumn };

constexpr int kPreviewColumnWidth = 60;
constexpr int kPreviewColumnMaxWidth = 320;

wxString Caption(MessageId id) { return ToWxString(LoadMessage(id)); }

// What the reader found, in the encodings' own names.
wxString EncodingText(const PreviewEncoding& found)
{
    switch (found.encoding) {
    case TextEncoding::Ansi:
        return ToWxString(FormatWide(LoadMessage(MessageId::EncodingAnsi), {static_cast<int>(found.codePage)}));
    case TextEncoding::Utf8: return Caption(MessageId::EncodingUtf8);
    case TextEncoding::Utf16LE: return Caption(MessageId::EncodingUtf16LE);
    case TextEncoding::Utf16BE: return Caption(MessageId::EncodingUtf16BE);
    default: return wxString();
    }
}

// A field that the configuration would not give back as shown: the pale red of the preview's
// marked cells, and a tooltip saying why.
wxColour MarkedBackground() { return wxColour(255, 205, 205); }

wxString StoredChangeNote(unsigned changes)
{
    wxString note;
    const auto add = [&note](MessageId text) { note += (note.empty() ? "" : "\n") + Caption(text); };
    if (changes & ImportValueChange::OutsideCodePage)
        add(MessageId::OutsideCodePageNote);
    if (changes & ImportValueChange::SignReadAsQuote)
        add(MessageId::SignReadAsQuoteNote);
    if (changes & ImportValueChange::QuoteReadAsSign)
        add(MessageId::QuoteReadAsSignNote);
    return note;
}

void MarkStoredChanges(wxWindow* control, unsigned changes)
{
    control->SetBackgroundColour(changes ? MarkedBackground() : wxNullColour);
    if (changes)
        control->SetToolTip(StoredChangeNote(changes));
    else
        control->UnsetToolTip();
    control->Refresh();
}

bool ToolkitFileChooser(wxWindow* parent, const WString& filter, WString& path)
{
    // The toolkit wants the filter without the trailing empty pair of the host's form.
    wxString wildcard = ToWxString(filter);
    while (wildcard.EndsWith("|"))
        wildcard.RemoveLast();
    wxFileDialog chooser(parent, wxString(), wxString(), ToWxString(path), wildcard, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (chooser.ShowModal() != wxID_OK)
        return false;
    path = FromWxString(chooser.GetPath());
    return true;
}

CDlgTxtConfiguration::FileChooser& InstalledChooser()
{
    static CDlgTxtConfiguration::FileChooser chooser;
    return chooser;
}

} // namespace

CDlgTxtConfiguration::CDlgTxtConfiguration(CImportDefinition& definition, bool node, const WChar* presetPath)
    : CAdUiBaseDialog(kTemplateId),
      model_(definition, node),
      presetPath_(presetPath ? presetPath : WTEXT("")),
      hasPresetPath_(presetPath != nullptr),
      browse_(nullptr),
      rebuild_(nullptr)
{
}

void CDlgTxtConfiguration::SetFileChooser(FileChooser chooser) { InstalledChooser() = std::move(chooser); }

bool CDlgTxtConfiguration::OnInitDialog()
{
    CreateControls();
    BindControls();
    SetWindowText(LoadMessage(static_cast<MessageId>(ImportDialogTemplate().title)).c_str());
    // A preview of long lines takes seconds to read: the wizard keeps painting meanwhile. The
    // preview list reads the rows being read, so it shows none until they are.
    model_.SetPreviewRunner([this](const std::function<void()>& work, const std::function<void()>& poll) {
        preview_->ShowRows(0);
        RunBesideEventLoop(work, poll);
    });
    model_.Open(hasPresetPath_ ? presetPath_.c_str() : nullptr);
    ShowPresets();
    ShowFields();
    ShowMode();
    ShowPreview();
    return true;
}

void CDlgTxtConfiguration::CreateControls()
{
    wxWindow* window = Window();
    const TemplateControls controls(window, ImportDialogTemplate(), [this](wxWindow* parent, const DialogControl& control) {
        return CreateOwnControl(parent, control);
    });
    path_ = controls.Get<wxTextCtrl>(kFilePath);
    encoding_ = controls.Get<wxStaticText>(kEncoding);
    delimited_ = controls.Get<wxRadioButton>(kDelimited);
    fixedWidth_ = controls.Get<wxRadioButton>(kFixedWidth);
    space_ = controls.Get<wxCheckBox>(kSpace);
    tab_ = controls.Get<wxCheckBox>(kTab);
    other_ = controls.Get<wxCheckBox>(kOther);
    otherDelimiters_ = controls.Get<wxTextCtrl>(kOtherDelimiters);
    comments_ = controls.Get<wxTextCtrl>(kComments);
    shownColumns_ = controls.Get<wxStaticText>(kShownColumns);
    shownColumns_->Hide();
    preset_ = controls.Get<wxComboBox>(kPreset);
    namesLine_ = controls.Get<wxCheckBox>(kNamesLine);

    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(FileRow(controls), 0, wxEXPAND | wxALL, 8);
    rows->Add(ModeRow(controls), 0, wxEXPAND | wxLEFT | wxRIGHT, 8);
    auto* rulerRow = new wxBoxSizer(wxHORIZONTAL);
    rulerRow->Add(ruler_, 1, wxEXPAND);
    rulerRow->Add(removeBreaks_, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    rows->Add(rulerRow, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 8);
    rows->Add(preview_, 1, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 8);
    rows->Add(shownColumns_, 0, wxLEFT | wxRIGHT | wxTOP, 8);
    rows->Add(ColumnRow(controls), 0, wxEXPAND | wxALL, 8);
    window->SetSizer(rows);

    wxToolTip::SetDelay(500);
    wxToolTip::Enable(true);
}

wxWindow* CDlgTxtConfiguration::CreateOwnControl(wxWindow* parent, const DialogControl& control)
{
    switch (control.id) {
    case kBrowse: {
        wxWindow* browse = browse_.Create(parent, control.id);
        browse_.SetButtonIcon(WTEXT("IDI_OPEN"), 1, 16, 16, 0);
        return browse;
    }
    case kRuler: return ruler_ = new CRulerWnd(parent, control.id, model_.Ruler(), wxSize(-1, 26));
    case kRemoveBreaks: {
        const auto* icon =
            static_cast<const wxBitmap*>(VeltoGis::CModuleConfiguration::Instance()->GetIcon(WTEXT("IDI_DELETE")));
        removeBreaks_ = new wxBitmapButton(parent, control.id, icon ? *icon : wxBitmap(16, 16));
        removeBreaks_->SetToolTip(Caption(MessageId::RemoveAllBreaksTip));
        return removeBreaks_;
    }
    case kPreviewPlaceholderId: return preview_ = new PreviewListCtrl(parent, kPreviewListId, wxSize(640, 220));
    // Several lines that the user reads and may select from; it scrolls when they are many.
    case kNote:
        return note_ = new wxTextCtrl(parent, control.id, wxString(), wxDefaultPosition, wxSize(300, 90),
                                      wxTE_MULTILINE | wxTE_READONLY | wxTE_WORDWRAP);
    case kColumnList: return columns_ = CreateColumnList(parent, control.id);
    case kRebuildColumns: {
        wxWindow* rebuild = rebuild_.Create(parent, control.id);
        rebuild->SetLabel(CaptionOf(control));
        return rebuild;
    }
    default: return nullptr;
    }
}

wxSizer* CDlgTxtConfiguration::FileRow(const TemplateControls& controls)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(controls[kFileLabel], 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);
    path_->SetMinSize(wxSize(420, -1));
    row->Add(path_, 1, wxALIGN_CENTER_VERTICAL);
    row->Add(controls[kBrowse], 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    row->Add(controls[kEncodingLabel], 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 12);
    encoding_->SetMinSize(wxSize(90, -1));
    row->Add(encoding_, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    return row;
}

wxSizer* CDlgTxtConfiguration::ModeRow(const TemplateControls& controls)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(delimited_, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 12);
    row->Add(fixedWidth_, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 24);
    row->Add(controls[kDelimiterLabel], 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    otherDelimiters_->SetMinSize(wxSize(50, -1));
    for (int id : {kSpace, kTab, kOther, kOtherDelimiters})
        row->Add(controls[id], 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    row->Add(controls[kCommentLabel], 0, wxLEFT | wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    comments_->SetMinSize(wxSize(50, -1));
    row->Add(comments_, 0, wxALIGN_CENTER_VERTICAL);
    return row;
}

ColumnListCtrl* CDlgTxtConfiguration::CreateColumnList(wxWindow* parent, int id)
{
    auto* columns = new ColumnListCtrl(parent, id, wxSize(330, 160));
    columns->SetColumns({{Caption(MessageId::ColumnLabelHeading), 70, ColumnListCtrl::CellKind::Text},
                         {Caption(MessageId::ColumnNameHeading), 90, ColumnListCtrl::CellKind::EditableText},
                         {Caption(MessageId::ColumnTypeHeading), 70, ColumnListCtrl::CellKind::Choice},
                         {Caption(MessageId::ColumnImportHeading), 64, ColumnListCtrl::CellKind::Check}});
    wxArrayString typeNames;
    for (int choice = 0; choice < kColumnTypeChoices; ++choice)
        typeNames.Add(ToWxString(ColumnTypeName(choice)));
    columns->SetChoices(kTypeColumn, typeNames);
    return columns;
}

wxSizer* CDlgTxtConfiguration::ColumnRow(const TemplateControls& controls)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* columnBox = new wxBoxSizer(wxVERTICAL);
    columnBox->Add(controls[kColumnLabel], 0, wxBOTTOM, 4);
    columnBox->Add(columns_, 1, wxEXPAND);
    row->Add(columnBox, 0, wxEXPAND);
    auto* side = new wxBoxSizer(wxVERTICAL);
    side->Add(controls[kRebuildColumns], 0, wxBOTTOM, 8);
    side->Add(PresetBox(controls), 1, wxEXPAND);
    row->Add(side, 1, wxEXPAND | wxLEFT | wxRIGHT, 8);
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    // No default button: Enter moves on and never closes the wizard.
    buttons->Add(controls[kOk], 0, wxBOTTOM, 6);
    buttons->Add(controls[kCancel]);
    row->Add(buttons, 0, wxALIGN_BOTTOM);
    return row;
}

void CDlgTxtConfiguration::BindControls()
{
    wxWindow* window = Window();
    window->FindWindow(kBrowse)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { ChooseFile(); });
    window->FindWindow(IDOK)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnOK(); });
    path_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) {
        model_.filePath = FromWxString(path_->GetValue());
        ShowStoredChanges();
    });
    for (wxRadioButton* radio : {delimited_, fixedWidth_}) {
        radio->Bind(wxEVT_RADIOBUTTON, [this](wxCommandEvent&) {
            model_.SetMode(fixedWidth_->GetValue() ? ImportConfigurationModel::ModeFixedWidth
                                                   : ImportConfigurationModel::ModeDelimited);
            ShowMode();
        });
    }
    for (wxCheckBox* box : {space_, tab_, other_})
        box->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { TakeDelimiters(); });
    for (wxTextCtrl* edit : {otherDelimiters_, comments_})
        edit->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { TakeDelimiters(); });
    ruler_->Bind(wxEVT_LEFT_DOWN, &CDlgTxtConfiguration::OnRulerMouse, this);
    ruler_->Bind(wxEVT_LEFT_DCLICK, &CDlgTxtConfiguration::OnRulerMouse, this);
    ruler_->Bind(wxEVT_MOTION, &CDlgTxtConfiguration::OnRulerMouse, this);
    ruler_->Bind(wxEVT_KEY_DOWN, &CDlgTxtConfiguration::OnRulerKey, this);
    removeBreaks_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        model_.RemoveAllBreaks();
        ShowPreview();
    });
    window->FindWindow(kRebuildColumns)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        model_.BuildColumnList();
        ShowColumns();
        preview_->Refresh();
    });
    columns_->OnCellChanged([this](int row, int column) { OnColumnChanged(row, column); });
    window->Bind(wxEVT_CHAR_HOOK, &CDlgTxtConfiguration::OnCharHook, this);

    preview_->SetSource(PreviewListSourceOf(model_));
    BindPresetControls();
}

void CDlgTxtConfiguration::ShowFields()
{
    path_->ChangeValue(ToWxString(model_.filePath));
    space_->SetValue(model_.space);
    tab_->SetValue(model_.tab);
    other_->SetValue(model_.other);
    otherDelimiters_->ChangeValue(ToWxString(model_.otherDelimiters));
    comments_->ChangeValue(ToWxString(model_.comments));
    (model_.mode == ImportConfigurationModel::ModeFixedWidth ? fixedWidth_ : delimited_)->SetValue(true);
    namesLine_->SetValue(model_.headerLines > 0);
    ShowStoredChanges();
}

void CDlgTxtConfiguration::ShowStoredChanges()
{
    MarkStoredChanges(path_, model_.StoredChanges(ImportValue::FilePath));
    MarkStoredChanges(otherDelimiters_, model_.StoredChanges(ImportValue::Delimiters));
    MarkStoredChanges(comments_, model_.StoredChanges(ImportValue::Comments));
}

// The names are marked in their cells; the list's tooltip says why, column by column.
void CDlgTxtConfiguration::ShowNameChanges()
{
    wxString notes;
    for (std::size_t i = 0; i < model_.columns.size(); ++i) {
        const unsigned changes = model_.StoredChanges(ImportValue::ColumnName, i);
        columns_->SetCellBackgroundColour(static_cast<int>(i), kNameColumn,
                                          changes ? MarkedBackground() : columns_->GetDefaultCellBackgroundColour());
        if (changes)
            notes += (notes.empty() ? "" : "\n") + ToWxString(model_.columns[i].label) + ": " + StoredChangeNote(changes);
    }
    if (notes.empty())
        columns_->GetGridWindow()->UnsetToolTip();
    else
        columns_->GetGridWindow()->SetToolTip(notes);
    columns_->ForceRefresh();
}

// Marked as the names are; the note box says why.
void CDlgTxtConfiguration::ShowTypeWarnings()
{
    for (std::size_t i = 0; i < model_.columns.size(); ++i) {
        const bool warned = !model_.columns[i].typeWarning.empty();
        columns_->SetCellBackgroundColour(static_cast<int>(i), kTypeColumn,
                                          warned ? MarkedBackground() : columns_->GetDefaultCellBackgroundColour());
    }
    columns_->ForceRefresh();
}

void CDlgTxtConfiguration::ShowMode()
{
    const bool delimiters = model_.DelimiterControlsEnabled();
    for (wxWindow* control : {static_cast<wxWindow*>(space_), static_cast<wxWindow*>(tab_),
                              static_cast<wxWindow*>(other_), static_cast<wxWindow*>(otherDelimiters_)})
        control->Enable(delimiters);
    ruler_->Enable(model_.RulerEnabled());
    removeBreaks_->Enable(model_.RulerEnabled());
    ruler_->Refresh();
}

// Wide enough for what the first rows hold in the column, within bounds, so that short fields
// are read whole and one long field does not push the others out of sight.
int CDlgTxtConfiguration::PreviewColumnWidth(const ImportPreview& preview, std::size_t column) const
{
    constexpr std::size_t kMeasuredRows = 100;
    constexpr int kPadding = 16;
    int widest = preview_->GetTextExtent("C00").GetWidth();
    const auto& rows = preview.Rows();
    for (std::size_t row = 0; row < rows.size() && row < kMeasuredRows; ++row) {
        if (column < rows[row].fields.size()) {
            const WString& text = rows[row].fields[column];
            const std::size_t units = std::min<std::size_t>(text.size(), PreviewListCtrl::kShownCellLength);
            widest = std::max(widest, preview_->GetTextExtent(ToWxString(text.data(), units)).GetWidth());
        }
    }
    return std::clamp(widest + kPadding, kPreviewColumnWidth, kPreviewColumnMaxWidth);
}

void CDlgTxtConfiguration::ShowPreview()
{
    const ImportPreview& preview = model_.Preview();
    const std::size_t shown = static_cast<std::size_t>(preview.ColumnCount());
    wxArrayString headings;
    std::vector<int> widths;
    for (std::size_t i = 1; i <= shown; ++i) {
        headings.Add(wxString::Format("C%d", static_cast<int>(i)));
        widths.push_back(PreviewColumnWidth(preview, i - 1));
    }
    preview_->Freeze();
    preview_->SetColumns(headings, widths);
    preview_->ShowRows(static_cast<long>(preview.Rows().size()));
    preview_->Thaw();
    // Said, so that nobody takes the columns listed for all there are.
    const bool cut = preview.ColumnCount() < preview.ColumnsFound();
    shownColumns_->SetLabel(cut ? ToWxString(FormatWide(LoadMessage(MessageId::ShownColumnsNote),
                                                        {preview.ColumnsFound(), preview.ColumnCount()}))
                                : wxString());
    if (shownColumns_->IsShown() != cut) {
        shownColumns_->Show(cut);
        Window()->Layout();
    }
    ShowColumns();
    ShowEncoding();
    ShowNote();
    ruler_->Refresh();
}

void CDlgTxtConfiguration::ShowColumns()
{
    const std::size_t shown = model_.columns.size();
    columns_->Freeze();
    columns_->ResetRows(static_cast<int>(shown));
    for (std::size_t i = 0; i < shown; ++i) {
        const ColumnListRow& row = model_.columns[i];
        const int r = static_cast<int>(i);
        columns_->SetText(r, kLabelColumn, ToWxString(row.label));
        columns_->SetText(r, kNameColumn, ToWxString(row.name));
        columns_->SetChoice(r, kTypeColumn, row.type);
        columns_->SetCheck(r, kOnColumn, row.on);
    }
    ShowNameChanges();
    ShowTypeWarnings();
    columns_->Thaw();
}

void CDlgTxtConfiguration::ShowEncoding()
{
    encoding_->SetLabel(model_.Preview().LineCount() == 0 && model_.Preview().Encoding().encoding == 0
                            ? wxString()
                            : EncodingText(model_.Preview().Encoding()));
}

void CDlgTxtConfiguration::TakeDelimiters()
{
    model_.space = space_->GetValue();
    model_.tab = tab_->GetValue();
    model_.other = other_->GetValue();
    model_.otherDelimiters = FromWxString(otherDelimiters_->GetValue());
    model_.comments = FromWxString(comments_->GetValue());
    model_.DelimitersChanged();
    ShowStoredChanges();
    ShowPreview();
}

void CDlgTxtConfiguration::ChooseFile()
{
    WString chosen = model_.filePath;
    const FileChooser& chooser = InstalledChooser();
    const bool taken = chooser ? chooser(Window(), ImportConfigurationModel::kFileFilter, chosen)
                               : ToolkitFileChooser(Window(), ImportConfigurationModel::kFileFilter, chosen);
    if (!taken)
        return;
    path_->ChangeValue(ToWxString(chosen));
    model_.ChooseFile(chosen);
    ShowStoredChanges();
    ShowPreview();
}

void CDlgTxtConfiguration::OnRulerMouse(wxMouseEvent& event)
{
    event.Skip(); // the ruler takes the focus and reports the click
    if (!model_.RulerEnabled())
        return;
    const int position = model_.Ruler().PositionAt(event.GetX(), event.GetY());
    ShowRulerTip(position);
    // A quick second click at the same place takes the break away again, as a first click would.
    const bool click = event.GetEventType() == wxEVT_LEFT_DOWN || event.GetEventType() == wxEVT_LEFT_DCLICK;
    if (click && model_.ClickRuler(position))
        ShowPreview();
}

void CDlgTxtConfiguration::OnRulerKey(wxKeyEvent& event)
{
    RulerModel& ruler = model_.Ruler();
    switch (event.GetKeyCode()) {
    case WXK_SPACE:
        if (model_.ToggleBreakAt(ruler.Cursor() < 0 ? 0 : ruler.Cursor()))
            ShowPreview();
        break;
    case WXK_DELETE:
        model_.RemoveAllBreaks();
        ShowPreview();
        break;
    default:
        // The ruler moves its cursor first; the tip follows once it has.
        event.Skip();
        Window()->CallAfter([this] {
            ShowRulerTip(model_.Ruler().Cursor() + ImportConfigurationModel::kRulerToCharacter);
        });
        return;
    }
}

void CDlgTxtConfiguration::ShowRulerTip(int rulerPosition)
{
    const wxString tip = ToWxString(ImportConfigurationModel::RulerTip(rulerPosition));
    // Set only when it changes, so that the tip follows the pointer without flicker.
    if (tip == rulerTip_)
        return;
    rulerTip_ = tip;
    ruler_->SetToolTip(tip);
}

void CDlgTxtConfiguration::OnCharHook(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if ((key != WXK_RETURN && key != WXK_NUMPAD_ENTER) || columns_->IsEditing()) {
        event.Skip(); // the editor commits on Enter itself
        return;
    }
    if (wxWindow::FindFocus() == preset_ && ChooseTypedPreset())
        return;
    // Enter moves on as Tab does; it never closes the wizard.
    if (wxWindow* focus = wxWindow::FindFocus())
        focus->Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
}

void CDlgTxtConfiguration::OnColumnChanged(int row, int column)
{
    if (row < 0 || static_cast<std::size_t>(row) >= model_.columns.size())
        return;
    ColumnListRow& entry = model_.columns[static_cast<std::size_t>(row)];
    switch (column) {
    case kNameColumn:
        entry.name = FromWxString(columns_->Text(row, column));
        ShowNameChanges();
        break;
    case kTypeColumn:
        entry.type = columns_->Choice(row, column);
        model_.TypeChanged(static_cast<std::size_t>(row));
        ShowTypeWarnings();
        ShowNote();
        break;
    case kOnColumn: entry.on = columns_->Checked(row, column); break;
    default: return;
    }
    preview_->Refresh(); // the marks follow the type
}

void CDlgTxtConfiguration::OnCancel()
{
    if (columns_ && columns_->IsEditing()) {
        columns_->CancelEdit();
        return;
    }
    CAdUiBaseDialog::OnCancel();
}

void CDlgTxtConfiguration::OnOK()
{
    if (columns_->IsEditing())
        columns_->DisableCellEditControl();
    model_.filePath = FromWxString(path_->GetValue());
    model_.Confirm();
    EndDialog(IDOK);
}
