// The import wizard's survey presets: the choice, Detect, the names line and saving the
// user's own. Each fills the wizard's fields as the user would, so OK stores an ordinary
// configuration.

#include "host/Messages.h"
#include "host/WideText.h"
#include "ui/ColumnTypes.h"
#include "ui/ImportConfigurationModel.h"
#include "ui/UserPresets.h"


namespace {

WString Quoted(const WString& text) { return WTEXT("'") + text + WTEXT("'"); }

WString CandidateLabel(const DetectCandidate& candidate)
{
    const MessageId id = candidate.headerLines > 0 ? MessageId::PresetWithNamesLine : MessageId::PresetWithDelimiter;
    return FormatWide(LoadMessage(id), {candidate.preset->name, DelimiterName(candidate.delimiter)});
}

} // namespace

void ImportConfigurationModel::SetUserPresetFolder(const WString& folder)
{
    userPresetFolder_ = folder;
    userPresetFolderSet_ = true;
    ListPresets();
}

void ImportConfigurationModel::ListPresets()
{
    if (!userPresetFolderSet_)
        userPresetFolder_ = UserPresetFolder();
    UserPresetList user = ReadUserPresets(userPresetFolder_);
    userPresets_ = std::move(user.presets);
    presetNote_.clear();
    for (const PresetFileProblem& problem : user.problems)
        presetNote_ += (presetNote_.empty() ? WString() : WString(WTEXT("\n"))) + DescribePresetProblem(problem);
    presetChoices_.clear();
    for (const SurveyPreset& preset : ShippedPresets())
        presetChoices_.push_back({preset.name, &preset, std::nullopt});
    for (const SurveyPreset& preset : userPresets_)
        presetChoices_.push_back({preset.name, &preset, std::nullopt});
}

bool ImportConfigurationModel::ChoosePreset(std::size_t index)
{
    if (index >= presetChoices_.size())
        return false;
    const PresetChoice& choice = presetChoices_[index];
    ImportTxtConfiguration configuration;
    configuration.SetComments(comments);
    configuration.SetHeaderLines(headerLines);
    // A preset chosen by hand is taken as tessel's --preset NAME takes it; one that does not
    // fit keeps the header lines as the user set them, and its values that do not convert are
    // warned of.
    DetectCandidate candidate;
    if (choice.detected) {
        candidate = *choice.detected;
    } else {
        std::vector<DetectLine> lines;
        ReadDetectLines(filePath, comments, lines, static_cast<std::size_t>(ImportPreview::kMaxLines));
        candidate = CandidateOfPreset(lines, *choice.preset);
    }
    if (candidate.fits)
        ApplyCandidate(candidate, configuration);
    else
        ApplyPreset(*choice.preset, candidate.delimiter, configuration);
    TakeFields(configuration);
    configuration_.Clear();
    chosen_ = std::move(configuration);
    chosenName_ = choice.preset->name;
    return LoadPreview();
}

std::optional<std::size_t> ImportConfigurationModel::PresetLabelled(const WString& text) const
{
    for (std::size_t i = 0; i < presetChoices_.size(); ++i) {
        if (presetChoices_[i].label == text)
            return i;
    }
    return std::nullopt;
}

bool ImportConfigurationModel::Detect()
{
    // The preview's lines as the file has them: every one that is not a comment, header
    // lines included, as Detect decides those itself.
    std::vector<DetectLine> lines;
    if (!ReadDetectLines(filePath, comments, lines, static_cast<std::size_t>(ImportPreview::kMaxLines)))
        return false;
    std::vector<SurveyPreset> presets = ShippedPresets();
    presets.insert(presets.end(), userPresets_.begin(), userPresets_.end());
    const DetectResult result = DetectPresets(lines, presets);

    // The choice: the fitting ones first, then every preset as before. The candidates point
    // into the list just tried; they are re-pointed at the wizard's own lists.
    ListPresets();
    const std::size_t shipped = ShippedPresets().size();
    const auto ownPreset = [&](const SurveyPreset* tried) {
        const std::size_t at = static_cast<std::size_t>(tried - presets.data());
        return at < shipped ? &ShippedPresets()[at] : &userPresets_[at - shipped];
    };
    std::vector<PresetChoice> fitting;
    WString labels;
    for (DetectCandidate candidate : result.fitting) {
        candidate.preset = ownPreset(candidate.preset);
        const WString label = CandidateLabel(candidate);
        labels += (labels.empty() ? WString() : WString(WTEXT(", "))) + label;
        fitting.push_back({label, candidate.preset, std::move(candidate)});
    }
    presetChoices_.insert(presetChoices_.begin(), fitting.begin(), fitting.end());

    WString note = fitting.empty() ? LoadMessage(MessageId::PresetsNoneFit)
                                   : FormatWide(LoadMessage(MessageId::PresetsFitting), {labels});
    if (!result.note.empty())
        note += WTEXT("\n") + result.note;
    for (const DetectCandidate* rejected : RejectionsToName(result))
        note += WTEXT("\n") +
                FormatWide(LoadMessage(MessageId::PresetNotFitting), {CandidateLabel(*rejected), rejected->reason});
    if (const WString unused = UnusedDelimitersNote(result); !unused.empty())
        note += WTEXT("\n") + unused;
    if (fitting.empty()) {
        presetNote_ = note;
        return false;
    }
    ChoosePreset(0);
    presetNote_ = note;
    return true;
}

void ImportConfigurationModel::SetFirstLineHoldsNames(bool holds)
{
    headerLines = holds ? 1 : 0;
    LoadPreview();
}

bool ImportConfigurationModel::SavePreset(const WString& name)
{
    ImportTxtConfiguration configuration;
    configuration.SetDelimiters(Delimiters());
    configuration.SetComments(comments);
    configuration.SetHeaderLines(headerLines);
    configuration.GetColumns() = ColumnRecords();
    // A fixed-width setup is no preset: presets are tried on delimited lines.
    const WString saved = mode == ModeFixedWidth || Delimiters().empty()
                              ? WString()
                              : SaveUserPreset(userPresetFolder_, name, configuration);
    ListPresets();
    presetNote_ = saved.empty() ? FormatWide(LoadMessage(MessageId::PresetNotSaved), {Quoted(name)})
                                : FormatWide(LoadMessage(MessageId::PresetSaved), {saved});
    return !saved.empty();
}

void ImportConfigurationModel::ApplyChosenColumns()
{
    const auto& chosenColumns = chosen_->GetColumns();
    if (chosenColumns.size() != columns.size()) {
        presetNote_ = FormatWide(LoadMessage(MessageId::PresetColumnsDiffer),
                                 {static_cast<int>(columns.size()), chosenName_, static_cast<int>(chosenColumns.size())});
        return;
    }
    // A names line names the columns when its names can; the preset's names otherwise.
    const bool namesFromLine = headerLines > 0 && UsableAsNames(preview_.HeaderFields(), columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!namesFromLine)
            columns[i].name = chosenColumns[i]->GetName();
        columns[i].type = ColumnTypeChoiceOf(chosenColumns[i]->GetType());
        columns[i].on = chosenColumns[i]->GetOnOff() != 0;
    }
}

void ImportConfigurationModel::RefreshTypeWarnings()
{
    for (std::size_t column = 0; column < columns.size(); ++column)
        TypeChanged(column);
}

void ImportConfigurationModel::TypeChanged(std::size_t column)
{
    if (column >= columns.size())
        return;
    ColumnListRow& row = columns[column];
    row.typeWarning.clear();
    for (const PreviewRow& line : preview_.Rows()) {
        if (line.comment || line.header || column >= line.fields.size())
            continue;
        const WString& field = line.fields[column];
        if (!FieldConverts(field, row.type)) {
            row.typeWarning = FormatWide(LoadMessage(MessageId::TypeDisagrees),
                                         {row.name, static_cast<int>(line.line), Quoted(field),
                                          WString(ColumnTypeName(row.type))});
            return;
        }
    }
}

WString ImportConfigurationModel::Note() const
{
    WString note = presetNote_;
    for (const ColumnListRow& row : columns) {
        if (!row.typeWarning.empty())
            note += (note.empty() ? WString() : WString(WTEXT("\n"))) + row.typeWarning;
    }
    return note;
}
