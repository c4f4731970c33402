#include "ui/ImportConfigurationModel.h"

#include "host/WideText.h"
#include "ui/ColumnTypes.h"

#include <boost/make_shared.hpp>

using VeltoGis::ImportExport::CImportDefinition;

namespace {

const WChar kTab = '\t';
const WChar kSpace = ' ';
constexpr int kLargestRulerPosition = 100;
constexpr int kMarkerHalfWidth = 6;
constexpr int kCellWidth = 4;
// Far from any real line: the break does not limit a column.
constexpr std::uint32_t kBreakLimit = 0xFFFFFFF;

} // namespace

const WChar* const ImportConfigurationModel::kFileFilter = WTEXT("Txt files (*.txt)|*.txt|All Files (*.*)|*.*||");

ImportConfigurationModel::ImportConfigurationModel(CImportDefinition& definition, bool node)
    : definition_(definition), node_(node)
{
}

WString ImportConfigurationModel::Stored() const
{
    return node_ ? definition_.GetImporterConfigurationNode() : definition_.GetImporterConfiguration();
}

void ImportConfigurationModel::Open(const WChar* presetPath)
{
    ruler_.SetLargestPosition(kLargestRulerPosition);
    ruler_.SetBackgroundColour(kActiveBackground);
    ruler_.SetMarkerHalfWidth(kMarkerHalfWidth);
    ruler_.SetCellWidth(kCellWidth);
    ruler_.SetStyle(RulerHorizontal | RulerTicksFar);
    if (!configuration_.Parse(Stored().c_str())) {
        tab = true;
    } else {
        loaded_ = true;
        filePath = configuration_.GetTxtFile();
        TakeFields(configuration_);
        // Copied, but the ruler starts without breaks: the first fixed-width load replaces
        // them with the ruler's (none), as the wizard has always done.
        positions_ = configuration_.GetPositions();
    }
    if (presetPath)
        filePath = presetPath;
    ListPresets();
    initialising_ = true;
    SetMode(mode);
    LoadPreview();
    initialising_ = false;
}

// The fields a configuration sets, but the file path and the positions.
void ImportConfigurationModel::TakeFields(const ImportTxtConfiguration& configuration)
{
    mode = configuration.GetMode() != 0 ? ModeFixedWidth : ModeDelimited;
    comments = configuration.GetComments();
    headerLines = configuration.GetHeaderLines();
    space = tab = other = false;
    otherDelimiters.clear();
    for (const WString& delimiter : configuration.GetDelimiters()) {
        if (delimiter.size() == 1 && delimiter[0] == kSpace) {
            space = true;
        } else if (delimiter.size() == 1 && delimiter[0] == kTab) {
            tab = true;
        } else if (!delimiter.empty()) {
            other = true;
            otherDelimiters += delimiter;
        }
    }
}

void ImportConfigurationModel::SetMode(int newMode)
{
    mode = newMode == ModeFixedWidth ? ModeFixedWidth : ModeDelimited;
    const bool active = RulerEnabled();
    ruler_.SetBackgroundColour(active ? kActiveBackground : kGreyBackground);
    ruler_.SetTickColour(active ? 0 : kGreyTicks);
    ruler_.SetThirdColour(active ? 0 : kGreyTicks);
    if (!initialising_) {
        configuration_.Clear();
        chosen_.reset();
    }
}

void ImportConfigurationModel::ChooseFile(const WString& path)
{
    filePath = path;
    configuration_.Clear();
    loaded_ = false;
    LoadPreview();
}

void ImportConfigurationModel::DelimitersChanged()
{
    configuration_.Clear();
    chosen_.reset();
    LoadPreview();
}

DelimiterList ImportConfigurationModel::Delimiters() const
{
    DelimiterList delimiters;
    if (space)
        delimiters.emplace_back(1, kSpace);
    if (tab)
        delimiters.emplace_back(1, kTab);
    if (other)
        delimiters.push_back(otherDelimiters);
    return delimiters;
}

bool ImportConfigurationModel::LoadPreview()
{
    // No file chosen yet: nothing to open and nothing to tell the user about.
    if (filePath.empty()) {
        preview_.Clear();
        return false;
    }
    if (!preview_.Load(*this))
        return false;
    // Replaced line by line: a file without lines leaves the positions as they were.
    if (mode == ModeFixedWidth && preview_.LineCount() > 0)
        positions_ = ruler_.BreakPositions();
    BuildColumnList();
    return true;
}

void ImportConfigurationModel::BuildColumnList()
{
    const FieldList& header = preview_.HeaderFields();
    const FieldList& sample = preview_.SampleFields();
    const std::size_t count = static_cast<std::size_t>(preview_.ColumnCount());
    columns.assign(count, ColumnListRow());
    for (std::size_t i = 0; i < count; ++i) {
        ColumnListRow& row = columns[i];
        row.label = FormatWide(WTEXT("C%d"), {static_cast<int>(i + 1)});
        row.name = i < header.size() ? header[i] : row.label;
        row.type = i < sample.size() ? GuessColumnType(sample[i]) : ColumnTypeText;
    }
    if (chosen_)
        ApplyChosenColumns();
    else if (loaded_)
        ApplyStoredColumns();
    RefreshTypeWarnings();
}

void ImportConfigurationModel::ApplyStoredColumns()
{
    configuration_.Parse(Stored().c_str());
    const auto& storedColumns = configuration_.GetColumns();
    if (storedColumns.size() != columns.size()) {
        loaded_ = false;
        return;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        columns[i].name = storedColumns[i]->GetName();
        columns[i].type = ColumnTypeChoiceOf(storedColumns[i]->GetType());
        columns[i].on = storedColumns[i]->GetOnOff() != 0;
    }
}

bool ImportConfigurationModel::ClickRuler(int rulerPosition)
{
    if (mode != ModeFixedWidth)
        return false;
    return ToggleBreakAt(rulerPosition - kRulerToCharacter);
}

bool ImportConfigurationModel::ToggleBreakAt(int position)
{
    // Before the first character (or off the scale) no column can begin.
    if (mode != ModeFixedWidth || position < 0)
        return false;
    bool removed = false;
    for (int id = 0; id <= breaksAdded_ && !removed; ++id) {
        const RulerBreak* existing = ruler_.FindBreak(id);
        if (existing && existing->position == position)
            removed = ruler_.RemoveBreak(id) >= 0;
    }
    if (!removed) {
        RulerBreak record;
        record.position = position;
        record.id = breaksAdded_;
        record.colour = kBreakColour;
        record.limit = kBreakLimit;
        if (ruler_.AddBreak(record) < 0)
            return false;
        // Never decreased: identifiers are not reused.
        ++breaksAdded_;
    }
    LoadPreview();
    return true;
}

void ImportConfigurationModel::RemoveAllBreaks()
{
    ruler_.RemoveAllBreaks();
    LoadPreview();
}

WString ImportConfigurationModel::RulerTip(int rulerPosition)
{
    const int position = rulerPosition - kRulerToCharacter;
    return position < 0 ? WString() : FormatWide(WTEXT("%d"), {position});
}

bool ImportConfigurationModel::CellConverts(std::size_t row, std::size_t column) const
{
    const auto& rows = preview_.Rows();
    if (row >= rows.size() || column >= columns.size() || rows[row].comment)
        return true;
    const FieldList& fields = rows[row].fields;
    return column >= fields.size() || rows[row].header || FieldConverts(fields[column], columns[column].type);
}

unsigned ImportConfigurationModel::StoredChanges(ImportValue value, std::size_t column) const
{
    switch (value) {
    case ImportValue::FilePath: return ImportValueChanges(value, filePath);
    case ImportValue::Delimiters: return other ? ImportValueChanges(value, otherDelimiters) : 0;
    case ImportValue::Comments: return ImportValueChanges(value, comments);
    case ImportValue::ColumnName: return column < columns.size() ? ImportValueChanges(value, columns[column].name) : 0;
    }
    return 0;
}

ImportTxtConfiguration::ColumnList ImportConfigurationModel::ColumnRecords() const
{
    ImportTxtConfiguration::ColumnList records;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        auto record = boost::make_shared<CColumnData>();
        record->SetNo(static_cast<int>(i));
        record->SetName(columns[i].name);
        record->SetType(ColumnTypeCode(columns[i].type));
        record->SetOnOff(columns[i].on ? 1 : 0);
        records.push_back(record);
    }
    return records;
}

void ImportConfigurationModel::Confirm()
{
    configuration_.SetTxtFile(filePath);
    configuration_.SetDelimiters(Delimiters());
    configuration_.SetComments(comments);
    configuration_.GetPositions() = positions_;
    configuration_.SetMode(mode);
    configuration_.SetHeaderLines(headerLines);
    configuration_.GetColumns() = ColumnRecords();
    const WString text = configuration_.ToXml();
    if (node_)
        definition_.SetImporterConfigurationNode(text.c_str());
    else
        definition_.SetImporterConfiguration(text.c_str());
}
