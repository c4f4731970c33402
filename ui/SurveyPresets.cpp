#include "ui/SurveyPresets.h"

#include "host/WideText.h"
#include "import/ColumnData.h"

#include <boost/make_shared.hpp>

namespace {

const char kShippedTable[] =
#include "ui/ShippedPresets.inc"
    ;

WChar LowerAscii(WChar c) { return c >= 'A' && c <= 'Z' ? static_cast<WChar>(c - 'A' + 'a') : c; }

bool EqualIgnoringCase(const WString& a, const WString& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (LowerAscii(a[i]) != LowerAscii(b[i]))
            return false;
    }
    return true;
}

std::vector<WString> Words(const WString& line)
{
    std::vector<WString> words;
    WString word;
    for (const WChar c : line + WTEXT(' ')) {
        if (c == ' ' || c == '\t' || c == '\r') {
            if (!word.empty())
                words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    return words;
}

WString Unescaped(const WString& word)
{
    if (word == WTEXT("\\s"))
        return WTEXT(" ");
    if (word == WTEXT("\\t"))
        return WTEXT("\t");
    return word;
}

int TypeCode(const WString& type)
{
    if (type == WTEXT("text"))
        return kColumnText;
    if (type == WTEXT("real"))
        return kColumnReal;
    if (type == WTEXT("integer"))
        return kColumnInteger;
    return 0;
}

bool ReadColumn(const WString& word, PresetColumn& column)
{
    const std::size_t colon = word.find(WTEXT(':'));
    if (colon == WString::npos || colon == 0)
        return false;
    const std::size_t equals = word.find(WTEXT('='), colon);
    column.name = word.substr(0, colon);
    column.type = TypeCode(word.substr(colon + 1, equals == WString::npos ? WString::npos : equals - colon - 1));
    column.target = equals == WString::npos ? WString() : word.substr(equals + 1);
    return column.type != 0;
}

} // namespace

bool ReadPresetTable(const WString& text, std::vector<SurveyPreset>& presets, WString& problem)
{
    DelimiterList delimiters;
    std::size_t lineNo = 0;
    for (std::size_t start = 0; start <= text.size(); ++lineNo) {
        const std::size_t end = std::min(text.find(WTEXT('\n'), start), text.size());
        const WString line = text.substr(start, end - start);
        start = end + 1;
        const std::vector<WString> words = Words(line);
        if (words.empty() || words.front()[0] == '#')
            continue;
        if (words.front() == WTEXT("delimiters")) {
            delimiters.clear();
            for (std::size_t i = 1; i < words.size(); ++i)
                delimiters.push_back(Unescaped(words[i]));
            continue;
        }
        SurveyPreset preset;
        preset.name = words.front();
        preset.delimiters = delimiters;
        for (std::size_t i = 1; i < words.size(); ++i) {
            PresetColumn column;
            if (!ReadColumn(words[i], column)) {
                problem = FormatWide(WTEXT("line %d: '%s' is not COLUMN:TYPE[=TARGET]"),
                                     {static_cast<int>(lineNo + 1), words[i]});
                return false;
            }
            preset.columns.push_back(column);
        }
        if (preset.columns.empty() || preset.delimiters.empty()) {
            problem = FormatWide(WTEXT("line %d: the preset '%s' has no columns or no delimiters before it"),
                                 {static_cast<int>(lineNo + 1), preset.name});
            return false;
        }
        presets.push_back(std::move(preset));
    }
    return true;
}

const std::vector<SurveyPreset>& ShippedPresets()
{
    static const std::vector<SurveyPreset> presets = [] {
        std::vector<SurveyPreset> read;
        WString problem;
        // The table is ASCII; a fault in it is the build's, caught by the tests.
        ReadPresetTable(WString(kShippedTable, kShippedTable + sizeof kShippedTable - 1), read, problem);
        return read;
    }();
    return presets;
}

const SurveyPreset* FindPreset(const std::vector<SurveyPreset>& presets, const WString& name)
{
    for (const SurveyPreset& preset : presets) {
        if (EqualIgnoringCase(preset.name, name))
            return &preset;
    }
    return nullptr;
}

WString DelimiterName(const WString& delimiter)
{
    WString names;
    for (const WChar c : delimiter) {
        if (!names.empty())
            names += WTEXT('+');
        switch (c) {
        case ',': names += WTEXT("comma"); break;
        case ' ': names += WTEXT("blank"); break;
        case '\t': names += WTEXT("tab"); break;
        case ';': names += WTEXT("semicolon"); break;
        default: names += c; break;
        }
    }
    return names;
}

DelimiterList DelimitersOf(const WString& alternative)
{
    DelimiterList delimiters;
    for (const WChar c : alternative)
        delimiters.emplace_back(1, c);
    return delimiters;
}

void ApplyPreset(const SurveyPreset& preset, const WString& delimiter, ImportTxtConfiguration& configuration)
{
    configuration.SetMode(0);
    configuration.GetPositions().clear();
    configuration.SetDelimiters(DelimitersOf(delimiter));
    if (!preset.Shipped()) {
        configuration.SetComments(preset.comments);
        configuration.SetHeaderLines(preset.headerLines);
    }
    ImportTxtConfiguration::ColumnList columns;
    for (std::size_t no = 0; no < preset.columns.size(); ++no) {
        auto column = boost::make_shared<CColumnData>();
        column->SetNo(static_cast<int>(no));
        column->SetName(preset.columns[no].name);
        column->SetType(preset.columns[no].type);
        column->SetOnOff(1);
        columns.push_back(std::move(column));
    }
    configuration.GetColumns() = std::move(columns);
}

WString TargetOfColumnName(const WString& name)
{
    for (const SurveyPreset& preset : ShippedPresets()) {
        for (const PresetColumn& column : preset.columns) {
            if (EqualIgnoringCase(column.name, name))
                return column.target;
        }
    }
    return WString();
}
