#include "ui/PresetDetect.h"

#include "host/GisUtility.h"
#include "host/Messages.h"
#include "host/WideText.h"
#include "import/LineSplitter.h"
#include "textfile/TextFile.h"
#include "ui/ColumnTypes.h"

#include <algorithm>
#include <set>

namespace {

const WChar kTargetX[] = WTEXT("NODE_COORDINATE_X");
const WChar kTargetY[] = WTEXT("NODE_COORDINATE_Y");

struct LineCheck {
    bool countFits = false;
    bool numbersFit = false;
    WString reason;
};

WString Quoted(const WString& text) { return WTEXT("'") + text + WTEXT("'"); }

LineCheck CheckLine(const SurveyPreset& preset, const FieldList& fields, std::uint64_t lineNo)
{
    LineCheck check;
    const std::size_t needed = preset.columns.size();
    if (fields.size() != needed) {
        check.reason = FormatWide(LoadMessage(MessageId::PresetColumnCount),
                                  {static_cast<int>(lineNo), static_cast<int>(fields.size()), preset.name,
                                   static_cast<int>(needed)});
        return check;
    }
    check.countFits = true;
    for (std::size_t i = 0; i < needed; ++i) {
        const int choice = ColumnTypeChoiceOf(preset.columns[i].type);
        if (choice == ColumnTypeText)
            continue;
        if (fields[i].empty() || !FieldConverts(fields[i], choice)) {
            check.reason = FormatWide(LoadMessage(MessageId::PresetNotANumber),
                                      {static_cast<int>(i + 1), Quoted(fields[i]), static_cast<int>(lineNo)});
            return check;
        }
    }
    check.numbersFit = true;
    return check;
}

// What a column's name in a names line says it holds: 'x' easting, 'y' northing, 0 unknown.
char AxisNamed(const WString& name)
{
    WString lower;
    for (const WChar c : name) {
        if (c != ' ' && c != '_')
            lower += c >= 'A' && c <= 'Z' ? static_cast<WChar>(c - 'A' + 'a') : c;
    }
    const auto startsWith = [&lower](const WChar* prefix) { return lower.rfind(prefix, 0) == 0; };
    if (lower == WTEXT("e") || lower == WTEXT("x") || lower == WTEXT("easting") || startsWith(WTEXT("east")) ||
        (startsWith(WTEXT("osgb")) && lower.find(WTEXT("east")) != WString::npos))
        return 'x';
    if (lower == WTEXT("n") || lower == WTEXT("y") || startsWith(WTEXT("north")) ||
        (startsWith(WTEXT("osgb")) && lower.find(WTEXT("north")) != WString::npos))
        return 'y';
    return 0;
}

class CandidateTrial {
public:
    CandidateTrial(const SurveyPreset& preset, const WString& delimiter)
        : splitter_(DelimitersOf(delimiter), WString(), false, PositionList())
    {
        candidate_.preset = &preset;
        candidate_.delimiter = delimiter;
    }

    DetectCandidate Run(const std::vector<DetectLine>& lines, const AreaOfUseTest& areaOfUse)
    {
        const SurveyPreset& preset = *candidate_.preset;
        if (lines.empty()) {
            candidate_.reason = LoadMessage(MessageId::PresetNoLines);
            return candidate_;
        }
        FieldList firstFields;
        Cut(lines.front(), firstFields);
        candidate_.firstLineFields = firstFields.size();
        const LineCheck first = CheckLine(preset, firstFields, lines.front().number);
        FieldList fields;
        for (std::size_t i = 1; i < lines.size(); ++i) {
            Cut(lines[i], fields);
            const LineCheck check = CheckLine(preset, fields, lines[i].number);
            if (!check.numbersFit) {
                // The earliest line that does not fit; a first line with numbers where
                // names would be is a names line, which only fits when the rest does.
                candidate_.reason = first.countFits ? check.reason : first.reason;
                return candidate_;
            }
            CountInside(fields, areaOfUse);
        }
        if (first.numbersFit) {
            CountInside(firstFields, areaOfUse);
        } else if (lines.size() > 1 && !first.countFits) {
            candidate_.reason = FormatWide(LoadMessage(MessageId::PresetNamesCount),
                                           {static_cast<int>(firstFields.size()), preset.name,
                                            static_cast<int>(preset.columns.size())});
            return candidate_;
        } else if (lines.size() > 1) {
            candidate_.headerLines = 1;
        } else {
            candidate_.reason = first.reason;
            return candidate_;
        }
        candidate_.fits = true;
        TakeNames(firstFields);
        return candidate_;
    }

private:
    void Cut(const DetectLine& line, FieldList& fields)
    {
        WString text = line.text;
        const std::size_t count = splitter_.Split(text, fields);
        fields.resize(count);
    }

    void CountInside(const FieldList& fields, const AreaOfUseTest& areaOfUse)
    {
        if (!areaOfUse)
            return;
        double x = 0.0, y = 0.0;
        const SurveyPreset& preset = *candidate_.preset;
        for (std::size_t i = 0; i < preset.columns.size(); ++i) {
            if (preset.columns[i].target == kTargetX)
                x = VeltoGis::Utility::CUtility::AtoF(fields[i].c_str());
            else if (preset.columns[i].target == kTargetY)
                y = VeltoGis::Utility::CUtility::AtoF(fields[i].c_str());
        }
        if (areaOfUse(x, y))
            ++candidate_.pointsInsideArea;
    }

    // The names line's names become the column names when they are usable as such (none
    // empty, none twice); whether they contradict the preset's order is noted either way.
    void TakeNames(const FieldList& names)
    {
        const SurveyPreset& preset = *candidate_.preset;
        for (const PresetColumn& column : preset.columns)
            candidate_.columnNames.push_back(column.name);
        if (candidate_.headerLines == 0)
            return;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const WString& target = preset.columns[i].target;
            const char axis = AxisNamed(names[i]);
            if ((target == kTargetX && axis == 'y') || (target == kTargetY && axis == 'x'))
                candidate_.namesContradict = true;
        }
        if (UsableAsNames(names, names.size()))
            candidate_.columnNames.assign(names.begin(), names.end());
    }

    LineSplitter splitter_;
    DetectCandidate candidate_;
};

// Two candidates whose binds swap X and Y and are otherwise the same.
bool SwappedAxes(const std::vector<WString>& a, const std::vector<WString>& b)
{
    if (a.size() != b.size() || a == b)
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool swapped = (a[i] == kTargetX && b[i] == kTargetY) || (a[i] == kTargetY && b[i] == kTargetX);
        if (!swapped && a[i] != b[i])
            return false;
    }
    return true;
}

WString WideTypesAndTargets(const DetectCandidate& candidate)
{
    WString signature = candidate.delimiter + WTEXT('|');
    for (const PresetColumn& column : candidate.preset->columns)
        signature += IntToWide(column.type) + WTEXT(':') + column.target + WTEXT(';');
    return signature;
}

void Decide(DetectResult& result, bool areaKnown)
{
    auto& fitting = result.fitting;
    if (fitting.empty())
        return;
    // Evidence first (names that agree, points inside), then the table's order of delimiters
    // and presets, which the trials were made in.
    std::stable_sort(fitting.begin(), fitting.end(), [](const DetectCandidate& a, const DetectCandidate& b) {
        if (a.namesContradict != b.namesContradict)
            return !a.namesContradict;
        return a.pointsInsideArea > b.pointsInsideArea;
    });
    const DetectCandidate& best = fitting.front();
    std::set<WString> layouts;
    bool swapOpen = false;
    for (const DetectCandidate& candidate : fitting) {
        if (candidate.namesContradict != best.namesContradict || candidate.pointsInsideArea != best.pointsInsideArea)
            continue;
        layouts.insert(WideTypesAndTargets(candidate));
        swapOpen = swapOpen || SwappedAxes(candidate.Targets(), best.Targets());
    }
    result.decided = layouts.size() == 1;
    result.northingEastingOpen = swapOpen;
    const auto demoted = std::find_if(fitting.begin(), fitting.end(), [&best](const DetectCandidate& candidate) {
        return SwappedAxes(candidate.Targets(), best.Targets());
    });
    if (swapOpen && areaKnown)
        result.note = LoadMessage(MessageId::PresetAxesOpenInArea);
    else if (swapOpen)
        result.note = LoadMessage(MessageId::PresetAxesOpen);
    else if (demoted != fitting.end() && demoted->namesContradict && !best.namesContradict)
        result.note = LoadMessage(MessageId::PresetAxesByNames);
    else if (demoted != fitting.end())
        result.note = FormatWide(LoadMessage(MessageId::PresetAxesByArea), {best.preset->name});
}

} // namespace

std::vector<WString> DetectCandidate::Targets() const
{
    std::vector<WString> targets;
    for (const PresetColumn& column : preset->columns)
        targets.push_back(column.target);
    return targets;
}

bool ReadDetectLines(const WString& path, const WString& comments, std::vector<DetectLine>& lines,
                     std::size_t maxLines)
{
    lines.clear();
    TextFile file;
    if (file.Open(path, TextFileMode::Read, TextEncoding::Detect) != TextFileResult::Ok)
        return false;
    const WString markers = CommentMarkersOf(comments);
    DetectLine line;
    while (lines.size() < maxLines && file.ReadLine(nullptr, line.text) == TextFileResult::Ok) {
        ++line.number;
        if (!IsCommentLine(line.text, markers) && !line.text.empty())
            lines.push_back(line);
    }
    return true;
}

DetectResult DetectPresets(const std::vector<DetectLine>& lines, const std::vector<SurveyPreset>& presets,
                           const AreaOfUseTest& areaOfUse)
{
    DetectResult result;
    // Delimiters outermost, in the shipped order of preference, so that ties keep it.
    std::vector<WString> delimiters;
    for (const SurveyPreset& preset : presets) {
        for (const WString& delimiter : preset.delimiters) {
            if (std::find(delimiters.begin(), delimiters.end(), delimiter) == delimiters.end())
                delimiters.push_back(delimiter);
        }
    }
    for (const WString& delimiter : delimiters) {
        for (const SurveyPreset& preset : presets) {
            if (std::find(preset.delimiters.begin(), preset.delimiters.end(), delimiter) == preset.delimiters.end())
                continue;
            DetectCandidate candidate = CandidateTrial(preset, delimiter).Run(lines, areaOfUse);
            (candidate.fits ? result.fitting : result.rejected).push_back(std::move(candidate));
        }
    }
    Decide(result, static_cast<bool>(areaOfUse));
    if (!lines.empty())
        result.firstLine = lines.front().number;
    return result;
}

std::vector<const DetectCandidate*> RejectionsToName(const DetectResult& result)
{
    std::vector<const DetectCandidate*> named;
    for (const DetectCandidate& candidate : result.rejected) {
        if (candidate.firstLineFields != 1)
            named.push_back(&candidate);
    }
    return named;
}

WString UnusedDelimitersNote(const DetectResult& result)
{
    std::vector<WString> unused;
    for (const DetectCandidate& candidate : result.rejected) {
        const WString name = DelimiterName(candidate.delimiter);
        if (candidate.firstLineFields == 1 && std::find(unused.begin(), unused.end(), name) == unused.end())
            unused.push_back(name);
    }
    if (unused.empty())
        return WString();
    WString names;
    for (const WString& name : unused)
        names += (names.empty() ? WString() : WString(WTEXT(", "))) + name;
    return FormatWide(LoadMessage(MessageId::PresetDelimitersUnused), {names, static_cast<int>(result.firstLine)});
}

namespace {

// The first of the preset's delimiters that cuts every line into as many fields as the preset
// has columns, whatever the fields hold; empty when none does.
WString DelimiterByColumnCount(const std::vector<DetectLine>& lines, const SurveyPreset& preset)
{
    FieldList fields;
    for (const WString& delimiter : preset.delimiters) {
        LineSplitter splitter(DelimitersOf(delimiter), WString(), false, PositionList());
        const bool cuts = !lines.empty() && std::all_of(lines.begin(), lines.end(), [&](const DetectLine& line) {
            WString text = line.text;
            return splitter.Split(text, fields) == preset.columns.size();
        });
        if (cuts)
            return delimiter;
    }
    return WString();
}

} // namespace

bool UsableAsNames(const FieldList& names, std::size_t count)
{
    if (names.size() < count)
        return false;
    std::set<WString> distinct;
    for (std::size_t i = 0; i < count; ++i) {
        if (names[i].empty() || !distinct.insert(names[i]).second)
            return false;
    }
    return true;
}

DetectCandidate CandidateOfPreset(const std::vector<DetectLine>& lines, const SurveyPreset& preset)
{
    // Tried on a copy of the preset: the candidate is pointed back at the caller's.
    DetectResult tried = DetectPresets(lines, {preset});
    DetectCandidate candidate;
    if (!tried.fitting.empty()) {
        candidate = std::move(tried.fitting.front());
    } else {
        const WString cutting = DelimiterByColumnCount(lines, preset);
        candidate.delimiter = !cutting.empty() || preset.delimiters.empty() ? cutting : preset.delimiters.front();
        for (const PresetColumn& column : preset.columns)
            candidate.columnNames.push_back(column.name);
        // Why it does not fit with the delimiter it is read with.
        candidate.reason = LoadMessage(MessageId::PresetNoLines);
        for (const DetectCandidate& rejected : tried.rejected) {
            if (rejected.delimiter == candidate.delimiter) {
                candidate.reason = rejected.reason;
                break;
            }
        }
    }
    candidate.preset = &preset;
    return candidate;
}

void ApplyCandidate(const DetectCandidate& candidate, ImportTxtConfiguration& configuration)
{
    ApplyPreset(*candidate.preset, candidate.delimiter, configuration);
    configuration.SetHeaderLines(candidate.headerLines);
    auto& columns = configuration.GetColumns();
    for (std::size_t i = 0; i < columns.size() && i < candidate.columnNames.size(); ++i)
        columns[i]->SetName(candidate.columnNames[i]);
}
