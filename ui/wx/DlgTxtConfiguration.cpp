#include "ui/wx/DlgTxtConfiguration.h"

#include "host/CadPlatform.h"
#include "host/GisUtility.h"
#include "host/Messages.h"
#include "textfile/TextFileTypes.h"
#include "ui/wx/ColumnListCtrl.h"
#include "ui/ColumnTypes.h"
#include "ui/wx/PreviewListCtrl.h"
#include "ui/wx/RulerWnd.h"
#include "ui/wx/RunBesideEventLoop.h"
#include "ui/wx/WxText.h"

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/filedlg.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tooltip.h>

#include <algorithm>

using VeltoGis::ImportExport::CImportDefinition;

namespace {

// Control ids of the wizard's template.
enum ControlId {
    kRebuildColumns = 102,
    kColumnList = 104,
    kBrowse = 200,
    kFilePath = 201,
    kDelimited = 203,
    kComments = 204,
    kFixedWidth = 205,
    kSpace = 206,
    kTab = 207,
    kOther = 208,
    kOtherDelimiters = 209,
    kRuler = 221,
    kRemoveBreaks = 222,
    kEncoding = 233,
    kPreviewList = 555,
};

// The column list's columns.
enum ColumnListColumn { kLabelColumn, kNameColumn, kTypeColumn, kOnColumn };

constexpr int kPreviewColumnWidth = 60;
constexpr int kPreviewColumnMaxWidth = 320;

wxString Caption(MessageId id) { return ToWxString(LoadMessage(id)); }

// What the reader found, in the encodings' own names.
wxString EncodingText(const PreviewEncoding& found)
{
    switch (found.encoding) {
    case TextEncoding::Ansi: return wxString::Format("ANSI %u", found.codePage);
    case TextEncoding::Utf8: return "UTF-8";
    case TextEncoding::Utf16LE: return "UTF-16LE";
    case TextEncoding::Utf16BE: return "UTF-16BE";
    default: return wxString();
    }
}

// A field that the configuration would not give back as shown: the pale red of the preview's
// marked cells, and a tooltip saying why.
wxColour MarkedBackground() { return wxColour(255, 205, 205); }

wxString StoredChangeNote(unsigned changes)
{
    wxString note;
    const auto add = [&note](const char* utf8) { note += (note.empty() ? "" : "\n") + wxString::FromUTF8(utf8); };
    if (changes & ImportValueChange::OutsideCodePage)
        add("A character is missing from the code page: the configuration stores its default character.");
    if (changes & ImportValueChange::SignReadAsQuote)
        add("The configuration reads \xC3\x97 back as \".");
    if (changes & ImportValueChange::QuoteReadAsSign)
        add("The configuration reads \" back as \xC3\x97.");
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
    SetWindowText(LoadMessage(MessageId::ImportEngineName).c_str());
    // A preview of long lines takes seconds to read: the wizard keeps painting meanwhile. The
    // preview list reads the rows being read, so it shows none until they are.
    model_.SetPreviewRunner([this](const std::function<void()>& work, const std::function<void()>& poll) {
        preview_->ShowRows(0);
        RunBesideEventLoop(work, poll);
    });
    model_.Open(hasPresetPath_ ? presetPath_.c_str() : nullptr);
    ShowFields();
    ShowMode();
    ShowPreview();
    return true;
}

void CDlgTxtConfiguration::CreateControls()
{
    wxWindow* window = Window();
    auto* rows = new wxBoxSizer(wxVERTICAL);
    rows->Add(CreateFileRow(window), 0, wxEXPAND | wxALL, 8);
    rows->Add(CreateModeRow(window), 0, wxEXPAND | wxLEFT | wxRIGHT, 8);
    rows->Add(CreateRulerRow(window), 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 8);
    preview_ = new PreviewListCtrl(window, kPreviewList, wxSize(640, 220));
    rows->Add(preview_, 1, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 8);
    shownColumns_ = new wxStaticText(window, wxID_ANY, wxString());
    shownColumns_->Hide();
    rows->Add(shownColumns_, 0, wxLEFT | wxRIGHT | wxTOP, 8);
    rows->Add(CreateColumnRow(window), 0, wxEXPAND | wxALL, 8);
    window->SetSizer(rows);

    wxToolTip::SetDelay(500);
    wxToolTip::Enable(true);
}

wxSizer* CDlgTxtConfiguration::CreateFileRow(wxWindow* window)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(new wxStaticText(window, wxID_ANY, Caption(MessageId::ExportFileLabel)), 0,
             wxALIGN_CENTER_VERTICAL | wxRIGHT, 6);
    path_ = new wxTextCtrl(window, kFilePath, wxString(), wxDefaultPosition, wxSize(420, -1));
    row->Add(path_, 1, wxALIGN_CENTER_VERTICAL);
    row->Add(browse_.Create(window, kBrowse), 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    browse_.SetButtonIcon(WTEXT("IDI_OPEN"), 1, 16, 16, 0);
    row->Add(new wxStaticText(window, wxID_ANY, Caption(MessageId::EncodingLabel) + ":"), 0,
             wxLEFT | wxALIGN_CENTER_VERTICAL, 12);
    encoding_ = new wxStaticText(window, kEncoding, wxString(), wxDefaultPosition, wxSize(90, -1));
    row->Add(encoding_, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    return row;
}

wxSizer* CDlgTxtConfiguration::CreateModeRow(wxWindow* window)
{
    // The template's own captions where the host keeps no message.
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    delimited_ = new wxRadioButton(window, kDelimited, "Delimited", wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
    fixedWidth_ = new wxRadioButton(window, kFixedWidth, "Fixed width");
    row->Add(delimited_, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 12);
    row->Add(fixedWidth_, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 24);
    row->Add(new wxStaticText(window, wxID_ANY, Caption(MessageId::ExportDelimiterLabel) + ":"), 0,
             wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    space_ = new wxCheckBox(window, kSpace, Caption(MessageId::DelimiterSpace));
    tab_ = new wxCheckBox(window, kTab, Caption(MessageId::DelimiterTab));
    other_ = new wxCheckBox(window, kOther, Caption(MessageId::DelimiterOther));
    otherDelimiters_ = new wxTextCtrl(window, kOtherDelimiters, wxString(), wxDefaultPosition, wxSize(50, -1));
    for (wxWindow* control : {static_cast<wxWindow*>(space_), static_cast<wxWindow*>(tab_),
                              static_cast<wxWindow*>(other_), static_cast<wxWindow*>(otherDelimiters_)})
        row->Add(control, 0, wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    row->Add(new wxStaticText(window, wxID_ANY, "Comment characters:"), 0,
             wxLEFT | wxRIGHT | wxALIGN_CENTER_VERTICAL, 6);
    comments_ = new wxTextCtrl(window, kComments, wxString(), wxDefaultPosition, wxSize(50, -1));
    row->Add(comments_, 0, wxALIGN_CENTER_VERTICAL);
    return row;
}

wxSizer* CDlgTxtConfiguration::CreateRulerRow(wxWindow* window)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    ruler_ = new CRulerWnd(window, kRuler, model_.Ruler(), wxSize(-1, 26));
    row->Add(ruler_, 1, wxEXPAND);
    const auto* icon =
        static_cast<const wxBitmap*>(VeltoGis::CModuleConfiguration::Instance()->GetIcon(WTEXT("IDI_DELETE")));
    removeBreaks_ = new wxBitmapButton(window, kRemoveBreaks, icon ? *icon : wxBitmap(16, 16));
    removeBreaks_->SetToolTip(Caption(MessageId::RemoveAllBreaksTip));
    row->Add(removeBreaks_, 0, wxLEFT | wxALIGN_CENTER_VERTICAL, 4);
    return row;
}

wxSizer* CDlgTxtConfiguration::CreateColumnRow(wxWindow* window)
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    columns_ = new ColumnListCtrl(window, kColumnList, wxSize(330, 160));
    columns_->SetColumns({{Caption(MessageId::ColumnLabelHeading), 70, ColumnListCtrl::CellKind::Text},
                          {Caption(MessageId::ColumnNameHeading), 90, ColumnListCtrl::CellKind::EditableText},
                          {Caption(MessageId::ColumnTypeHeading), 70, ColumnListCtrl::CellKind::Choice},
                          {Caption(MessageId::ColumnImportHeading), 64, ColumnListCtrl::CellKind::Check}});
    wxArrayString typeNames;
    for (int choice = 0; choice < kColumnTypeChoices; ++choice)
        typeNames.Add(ToWxString(ColumnTypeName(choice)));
    columns_->SetChoices(kTypeColumn, typeNames);
    auto* columnBox = new wxBoxSizer(wxVERTICAL);
    columnBox->Add(new wxStaticText(window, wxID_ANY, Caption(MessageId::ColumnHeading)), 0, wxBOTTOM, 4);
    columnBox->Add(columns_, 1, wxEXPAND);
    row->Add(columnBox, 0, wxEXPAND);
    wxWindow* rebuild = rebuild_.Create(window, kRebuildColumns);
    rebuild->SetLabel("Columns from the preview");
    row->Add(rebuild, 0, wxLEFT | wxALIGN_BOTTOM, 8);
    row->AddStretchSpacer();
    auto* buttons = new wxBoxSizer(wxVERTICAL);
    // No default button: Enter moves on and never closes the wizard.
    buttons->Add(new wxButton(window, IDOK, Caption(MessageId::OkCaption)), 0, wxBOTTOM, 6);
    buttons->Add(new wxButton(window, IDCANCEL, Caption(MessageId::CancelCaption)));
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

    preview_->SetSource({
        [this](long row, long column) -> const WString* {
            const auto& rows = model_.Preview().Rows();
            if (row < 0 || static_cast<std::size_t>(row) >= rows.size())
                return nullptr;
            const FieldList& fields = rows[static_cast<std::size_t>(row)].fields;
            return static_cast<std::size_t>(column) < fields.size() ? &fields[static_cast<std::size_t>(column)] : nullptr;
        },
        [this](long row) {
            return model_.Preview().RowColour(static_cast<std::size_t>(row)).value_or(PreviewListCtrl::kNoColour);
        },
        [this](long row, long column) {
            return !model_.CellConverts(static_cast<std::size_t>(row), static_cast<std::size_t>(column));
        },
    });
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
    shownColumns_->SetLabel(cut ? wxString::Format("The lines have %d columns; only C1 to C%d are listed and imported.",
                                                   preview.ColumnsFound(), preview.ColumnCount())
                                : wxString());
    if (shownColumns_->IsShown() != cut) {
        shownColumns_->Show(cut);
        Window()->Layout();
    }
    ShowColumns();
    ShowEncoding();
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
    if (event.GetEventType() == wxEVT_LEFT_DOWN && model_.ClickRuler(position))
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
    case kTypeColumn: entry.type = columns_->Choice(row, column); break;
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
