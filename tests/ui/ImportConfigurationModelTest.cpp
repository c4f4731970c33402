// The import wizard's rules without a display: opening, the preview, the column list, the
// ruler clicks and what OK stores.

#include "host/GisUtility.h"
#include "host/ImpexDefinitions.h"
#include "import/ImportTxtConfiguration.h"
#include "refhost/CadShimRecording.h"
#include "refhost/ProgressBarRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "textfile/TextFileTypes.h"
#include "ui/ColumnTypes.h"
#include "ui/ImportConfigurationModel.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

// Each row as "a|b|c", rows with the comment colour marked "grey:" (any other "coloured:").
std::vector<std::string> RowsOf(const ImportConfigurationModel& model)
{
    std::vector<std::string> rows;
    const ImportPreview& preview = model.Preview();
    for (std::size_t r = 0; r < preview.Rows().size(); ++r) {
        const auto colour = preview.RowColour(r);
        std::string text = !colour ? "" : *colour == 0xD3D3D3 ? "grey:" : "coloured:";
        const FieldList& fields = preview.Rows()[r].fields;
        for (std::size_t i = 0; i < fields.size(); ++i)
            text += (i ? "|" : "") + U8(fields[i]);
        rows.push_back(text);
    }
    EXPECT_FALSE(preview.RowColour(preview.Rows().size()));
    return rows;
}

std::vector<std::string> NamesOf(const ImportConfigurationModel& model)
{
    std::vector<std::string> names;
    for (const ColumnListRow& row : model.columns)
        names.push_back(U8(row.name) + ":" + U8(ColumnTypeName(row.type)) + (row.on ? "" : ":off"));
    return names;
}

class ImportWizardModel : public ::testing::Test {
protected:
    void SetUp() override { CadShim::ClearRecordings(); }

    // A configuration of the file with the columns East (real, off) and North (type 4711,
    // which no type of the list stands for).
    static ImportTxtConfiguration TwoColumns(const WString& path, const DelimiterList& delimiters)
    {
        ImportTxtConfiguration stored;
        stored.SetTxtFile(path);
        stored.SetDelimiters(delimiters);
        for (const auto& [name, type, on] : {std::tuple{"East", 5001, 0}, std::tuple{"North", 4711, 1}}) {
            auto column = boost::make_shared<CColumnData>();
            column->SetName(W(name));
            column->SetType(type);
            column->SetOnOff(on);
            stored.GetColumns().push_back(column);
        }
        return stored;
    }

    void Store(ImportTxtConfiguration configuration, bool node = false)
    {
        const WString text = configuration.ToXml();
        if (node)
            definition_.SetImporterConfigurationNode(text.c_str());
        else
            definition_.SetImporterConfiguration(text.c_str());
    }

    ImportTxtConfiguration StoredConfiguration() const
    {
        ImportTxtConfiguration stored;
        EXPECT_EQ(stored.Parse(definition_.GetImporterConfiguration().c_str()), 1);
        return stored;
    }

    // A wizard opened on a fresh definition (tab ticked), then set to the file.
    ImportConfigurationModel& OpenOn(const std::string& bytes, bool node = false)
    {
        model_ = std::make_unique<ImportConfigurationModel>(definition_, node);
        model_->Open();
        model_->ChooseFile(folder_.WriteFile("survey.txt", bytes));
        return *model_;
    }

    CImportDefinition definition_;
    refhost::testing::TempDir folder_;
    std::unique_ptr<ImportConfigurationModel> model_;
};

} // namespace

TEST_F(ImportWizardModel, PreviewOfDelimitedCommentAndEmptyFiles)
{
    struct Case {
        const char* name;
        std::string bytes;
        bool space, tab;
        const char* other; // null: not ticked
        int columns;
        std::vector<std::string> rows;
    };
    const Case cases[] = {
        {"runs of a single space count as one", "a   b  c\r\n", true, false, nullptr, 3, {"a|b|c"}},
        {"runs of tabs do not", "a\t\tb\n", false, true, nullptr, 3, {"a||b"}},
        {"a trailing delimiter adds no column", "A;B;\n1;2;;\n", false, false, ";", 2, {"A|B", "1|2"}},
        {"mixed delimiters do not collapse", "1, 2,,3\n", true, false, ",", 5, {"1||2||3"}},
        {"comment lines are grey and counted", "#X Y Z\n1 2\n", true, false, nullptr, 3, {"grey:#X|Y|Z", "1|2"}},
        {"only comments", "*a\n#b c\n", true, false, nullptr, 2, {"grey:*a", "grey:#b|c"}},
        {"blank lines make no row", "1 2\n\n   \n3 4\n", true, false, nullptr, 2, {"1|2", "3|4"}},
        {"an empty file has one column", "", true, true, nullptr, 1, {}},
        {"leading blanks give an empty first field", " 10 20\n", true, false, nullptr, 3, {"|10|20"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ImportConfigurationModel& model = OpenOn(c.bytes);
        model.space = c.space;
        model.tab = c.tab;
        model.other = c.other != nullptr;
        model.otherDelimiters = c.other ? W(c.other) : WString();
        model.DelimitersChanged();
        EXPECT_EQ(model.Preview().ColumnCount(), c.columns);
        EXPECT_EQ(RowsOf(model), c.rows);
        ASSERT_EQ(model.columns.size(), static_cast<std::size_t>(c.columns));
        EXPECT_EQ(U8(model.columns.back().label), "C" + std::to_string(c.columns));
    }
    EXPECT_TRUE(CadShim::RecordedAlerts().empty());
}

TEST_F(ImportWizardModel, OnlyACommentLinesRowIsGrey)
{
    struct Case {
        const char* name;
        std::string bytes;
        WString comments;
        std::vector<std::string> rows;
    };
    const Case cases[] = {
        {"each character marks", "#X Y\n1 2\n*c\n3 4\n", WTEXT("*#"), {"grey:#X|Y", "1|2", "grey:*c", "3|4"}},
        {"only the first character counts", " #x 1\nx# 2\n", WTEXT("#"), {"|#x|1", "x#|2"}},
        {"the separator is no marker", "\xA4" "a b\n#c\n", WTEXT("#\u00a4"), {"|a|b", "grey:#c"}},
        {"no comment characters, no comments", "#x 1\n", WTEXT(""), {"#x|1"}},
        {"a delimiter may mark comments too", " a\n1 2\n", WTEXT(" "), {"grey:|a", "1|2"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ImportConfigurationModel& model = OpenOn(c.bytes);
        model.tab = false;
        model.space = true;
        model.comments = c.comments;
        model.DelimitersChanged();
        EXPECT_EQ(RowsOf(model), c.rows);
    }
}

TEST_F(ImportWizardModel, ChoosingAnotherFileDropsTheStoredColumnsEvenWhenTheCountMatches)
{
    Store(TwoColumns(folder_.WriteFile("first.txt", "1;2\n"), {WTEXT(";")}));
    ImportConfigurationModel model(definition_, false);
    model.Open();
    ASSERT_TRUE(model.ConfigurationLoaded());
    EXPECT_EQ(NamesOf(model), (std::vector<std::string>{"East:Real:off", "North:"}));

    model.ChooseFile(folder_.WriteFile("second.txt", "5;6.5\n"));
    EXPECT_FALSE(model.ConfigurationLoaded());
    EXPECT_EQ(NamesOf(model), (std::vector<std::string>{"C1:Integer", "C2:Real"}));
    model.ChooseFile(folder_.FilePath("first.txt")); // gone for good, even on the first file
    EXPECT_EQ(NamesOf(model), (std::vector<std::string>{"C1:Integer", "C2:Integer"}));
    model.Confirm();
    const ImportTxtConfiguration stored = StoredConfiguration();
    ASSERT_EQ(stored.GetColumns().size(), 2u);
    EXPECT_EQ(stored.GetColumns()[0]->GetName(), WTEXT("C1"));
    EXPECT_EQ(stored.GetColumns()[0]->GetOnOff(), 1);
}

TEST_F(ImportWizardModel, OkInDelimitedModeWritesTheStoredPositionsBackUnchanged)
{
    ImportTxtConfiguration stored = TwoColumns(folder_.WriteFile("points.txt", "1 2\n"), {WTEXT(" ")});
    stored.GetPositions() = {12, 25};
    Store(stored);
    ImportConfigurationModel model(definition_, false);
    model.Open();
    // Neither emptying the working configuration nor reloading touches them.
    model.tab = true;
    model.DelimitersChanged();
    model.SetMode(ImportConfigurationModel::ModeDelimited);
    model.Confirm();
    EXPECT_NE(U8(definition_.GetImporterConfiguration()).find("colPositions=\"12\u00a425\u00a4\""), std::string::npos);
    const ImportTxtConfiguration written = StoredConfiguration();
    EXPECT_EQ(written.GetMode(), 0);
    EXPECT_EQ(written.GetPositions(), (PositionList{12, 25}));
}

TEST_F(ImportWizardModel, FixedWidthRowsAreCutAtTheRulerBreaks)
{
    // The ticked delimiter (tab) is trimmed from line ends in fixed width too.
    ImportConfigurationModel& model = OpenOn("abcdefgh\nab\t\t\n#comment line\n");
    model.SetMode(ImportConfigurationModel::ModeFixedWidth);
    EXPECT_TRUE(model.RulerEnabled());
    EXPECT_FALSE(model.DelimiterControlsEnabled());
    EXPECT_EQ(model.Ruler().BackgroundColour(), 0xFFC8C8u);
    EXPECT_EQ(RowsOf(model), (std::vector<std::string>{"abcdefgh", "ab|", "grey:#comment line"})); // no reload yet
    EXPECT_TRUE(model.ToggleBreakAt(3));
    EXPECT_TRUE(model.ToggleBreakAt(6));
    EXPECT_EQ(model.Positions(), (PositionList{3, 6}));
    EXPECT_EQ(model.Preview().ColumnCount(), 2); // the break count: the text after the last break is no column
    EXPECT_EQ(RowsOf(model), (std::vector<std::string>{"abc|def", "ab|", "grey:#co|mme"}));
    model.SetMode(ImportConfigurationModel::ModeDelimited);
    EXPECT_EQ(model.Ruler().BackgroundColour(), 0xA8A8A8u);
    EXPECT_EQ(model.Ruler().TickColour(), 0xC0C0C0u);
}

TEST_F(ImportWizardModel, AFileOfFiveThousandLinesPreviewsItsFirst999)
{
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += std::to_string(i) + "\t1.5\n";
    refhost::StartProgressRecording();
    ImportConfigurationModel& model = OpenOn(bytes);
    refhost::StopProgressRecording();
    EXPECT_EQ(model.Preview().LineCount(), 999u);
    EXPECT_EQ(model.Preview().Rows().back().fields[0], WTEXT("998"));
    int lastPosition = 0;
    for (const auto& call : refhost::RecordedProgressCalls())
        lastPosition = call.kind == refhost::ProgressCallKind::SetPosition ? call.value : lastPosition;
    EXPECT_EQ(lastPosition, 1000);
    EXPECT_FALSE(refhost::ProgressBarShown());
    EXPECT_EQ(refhost::LastShownProgressUpper(), 1000);
}

TEST_F(ImportWizardModel, ColumnNamesComeFromTheFirstCommentLineAndTypesFromTheFirstDataLine)
{
    struct Case {
        std::string bytes;
        std::vector<std::string> columns;
    };
    const Case cases[] = {
        {"#X Y Z NAME\n1.5 2 007 P1\n9 9 9 9\n", {"X:Real", "Y:Integer", "Z:Text", "NAME:Text"}},
        {"# X Y\n*second comment\n3,25 -4 x\n", {"X:Real", "Y:Integer", "C3:Text"}},
        {"1e3 12345678901 -0\n", {"C1:Real", "C2:Real", "C3:Integer"}},
        {"#X Y\n1.5 2\nabc 3.5\n", {"X:Real", "Y:Integer"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bytes);
        ImportConfigurationModel& model = OpenOn(c.bytes);
        model.tab = false;
        model.space = true;
        model.DelimitersChanged();
        EXPECT_EQ(NamesOf(model), c.columns);
    }
    // Marked in the preview: the cells that their column's type cannot convert (not comments).
    const ImportConfigurationModel& model = *model_;
    EXPECT_TRUE(model.CellConverts(0, 0) && model.CellConverts(1, 0) && model.CellConverts(1, 1));
    EXPECT_FALSE(model.CellConverts(2, 0));
    EXPECT_FALSE(model.CellConverts(2, 1));
}

TEST(ColumnTypes, GuessAndConversionOfEachKindOfField)
{
    struct Case {
        const char* field;
        int guess;
        bool integerConverts, realConverts;
    };
    const Case cases[] = {
        {"12", ColumnTypeInteger, true, true},      {"-3", ColumnTypeInteger, true, true},
        {" 42 ", ColumnTypeInteger, true, true},    {"0", ColumnTypeInteger, true, true},
        {"007", ColumnTypeText, true, true},        {"0012", ColumnTypeText, true, true},
        {"0.5", ColumnTypeReal, false, true},       {"12,75", ColumnTypeReal, false, true},
        {"-1.5e-3", ColumnTypeReal, false, true},   {".5", ColumnTypeReal, false, true},
        {"2147483648", ColumnTypeReal, false, true}, {"-2147483648", ColumnTypeInteger, true, true},
        {"1,234.5", ColumnTypeText, false, false},  {"12a", ColumnTypeText, false, false},
        {"1e", ColumnTypeText, false, false},       {"-", ColumnTypeText, false, false},
        {"P1", ColumnTypeText, false, false},       {"", ColumnTypeText, true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.field);
        EXPECT_EQ(GuessColumnType(W(c.field)), c.guess);
        EXPECT_EQ(FieldConverts(W(c.field), ColumnTypeInteger), c.integerConverts);
        EXPECT_EQ(FieldConverts(W(c.field), ColumnTypeReal), c.realConverts);
        EXPECT_TRUE(FieldConverts(W(c.field), ColumnTypeText));
    }
    EXPECT_EQ(GuessColumnType(WString(100, '1')), ColumnTypeText); // too long to be a number
    EXPECT_EQ(ColumnTypeCode(ColumnTypeNone), 0);
    EXPECT_EQ(ColumnTypeChoiceOf(5001), ColumnTypeReal);
    EXPECT_EQ(ColumnTypeChoiceOf(4711), ColumnTypeNone);
}

TEST_F(ImportWizardModel, AStoredConfigurationOpensIntoTheFieldsAndItsColumnsApplyWhileTheCountMatches)
{
    const WString path = folder_.WriteFile("stored.txt", "1;2 3\n");
    const auto store = [&](const DelimiterList& delimiters) {
        ImportTxtConfiguration stored = TwoColumns(path, delimiters);
        stored.SetComments(WTEXT("%"));
        Store(stored, true);
    };
    store({WTEXT(";"), WTEXT("\t"), WTEXT("|")});
    ImportConfigurationModel model(definition_, true);
    model.Open();
    EXPECT_EQ(model.filePath, path);
    EXPECT_TRUE(model.tab && model.other && !model.space);
    EXPECT_EQ(model.otherDelimiters, WTEXT(";|"));
    EXPECT_EQ(model.comments, WTEXT("%"));
    // ";|" is one delimiter string in the preview: the line has none of it, so one column.
    EXPECT_EQ(NamesOf(model), (std::vector<std::string>{"C1:Text"}));
    EXPECT_FALSE(model.ConfigurationLoaded());

    store({WTEXT(";")});
    ImportConfigurationModel again(definition_, true);
    again.Open();
    EXPECT_TRUE(again.ConfigurationLoaded());
    EXPECT_EQ(NamesOf(again), (std::vector<std::string>{"East:Real:off", "North:"}));
    again.space = true;
    again.DelimitersChanged();
    EXPECT_EQ(NamesOf(again), (std::vector<std::string>{"C1:Integer", "C2:Integer", "C3:Integer"}));
    again.space = false;
    again.DelimitersChanged(); // the count matches again, but the stored columns are gone for good
    EXPECT_EQ(NamesOf(again), (std::vector<std::string>{"C1:Integer", "C2:Text"}));
}

TEST_F(ImportWizardModel, RulerClicksToggleBreaksAndNeverReuseAnIdentifier)
{
    ImportConfigurationModel& model = OpenOn("0123456789abcdef\n");
    EXPECT_FALSE(model.ClickRuler(15)); // delimited mode: the ruler is off
    model.SetMode(ImportConfigurationModel::ModeFixedWidth);
    EXPECT_TRUE(model.ClickRuler(15));  // character position 10
    EXPECT_TRUE(model.ClickRuler(9));   // 4
    EXPECT_EQ(model.Positions(), (PositionList{4, 10}));
    EXPECT_TRUE(model.ClickRuler(15));  // the same position again: removed
    EXPECT_EQ(model.Positions(), (PositionList{4}));
    EXPECT_TRUE(model.ClickRuler(15));
    EXPECT_EQ(model.BreaksAdded(), 3);
    EXPECT_NE(model.Ruler().FindBreak(2), nullptr);
    EXPECT_EQ(model.Ruler().FindBreak(0), nullptr);
    EXPECT_EQ(model.Ruler().FindBreak(2)->colour, 0xDCFFFFu);
    EXPECT_FALSE(model.ClickRuler(4));  // before the first character
    EXPECT_FALSE(model.ClickRuler(-1)); // off the scale
    EXPECT_EQ(ImportConfigurationModel::RulerTip(4), WString());
    EXPECT_EQ(ImportConfigurationModel::RulerTip(17), WTEXT("12"));

    for (int i = 0; i < 1000; ++i)
        model.ClickRuler(5 + i % 50);
    EXPECT_EQ(model.Ruler().BreakCount(), 2);
    EXPECT_EQ(model.BreaksAdded(), 503);
    model.RemoveAllBreaks();
    EXPECT_EQ(model.Ruler().BreakCount(), 0);
    EXPECT_EQ(model.Preview().ColumnCount(), 1);
    EXPECT_EQ(model.BreaksAdded(), 503);
}

TEST_F(ImportWizardModel, OkComposesTheConfigurationForBothModesThroughEitherAccessor)
{
    for (const bool node : {false, true}) {
        for (const int mode : {0, 1}) {
            SCOPED_TRACE(std::string(node ? "node" : "plain") + (mode ? " fixed" : " delimited"));
            CadShim::ClearRecordings();
            ImportConfigurationModel& model = OpenOn("1;2.5;x\n", node);
            model.other = true;
            model.otherDelimiters = WTEXT(";");
            model.comments = WTEXT("#&");
            model.DelimitersChanged();
            if (mode) {
                model.SetMode(1);
                model.ToggleBreakAt(5);
                model.ToggleBreakAt(2);
            }
            model.columns[0].on = false;
            model.columns[1].name = WTEXT("Height");
            model.Confirm();
            const WString path = folder_.FilePath("survey.txt");
            const std::string columns =
                mode ? R"(<col no="0" name="C1" type="5005" onOff="0"/><col no="1" name="Height" type="5005" onOff="1"/>)"
                     : R"(<col no="0" name="C1" type="5010" onOff="0"/><col no="1" name="Height" type="5001" onOff="1"/>)"
                       R"(<col no="2" name="C3" type="5005" onOff="1"/>)";
            const std::string expected = R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile=")" + U8(path) +
                                         "\" delimiter=\"\t;\" comments=\"#&amp;\" mode=\"" + std::to_string(mode) +
                                         "\" colPositions=\"" + (mode ? "2\u00a45\u00a4" : "") + "\">" + columns +
                                         "</cfg>";
            EXPECT_EQ(U8(node ? definition_.GetImporterConfigurationNode() : definition_.GetImporterConfiguration()),
                      expected);
            EXPECT_EQ(node ? definition_.GetImporterConfiguration() : definition_.GetImporterConfigurationNode(),
                      WString());
            definition_.SetImporterConfiguration(WTEXT(""));
            definition_.SetImporterConfigurationNode(WTEXT(""));
        }
    }
}

// The wizard stores every field as it stands, and tells the view which ones the configuration
// would give back otherwise: each field is asked as its own kind of value.
TEST_F(ImportWizardModel, FieldsThatTheConfigurationWouldChangeAreTold)
{
    using namespace ImportValueChange;
    ImportConfigurationModel& model = OpenOn("a\tb\n");
    ASSERT_EQ(model.columns.size(), 2u);
    EXPECT_EQ(model.StoredChanges(ImportValue::FilePath), 0u);
    model.filePath = W("/surveys/a\"b\u00d7.txt");
    model.otherDelimiters = W("\u00d7");
    model.comments = W("#\u03a9");
    model.columns[0].name = W("Nr \"1\"");
    model.columns[1].name = W("H\u00f6he \u00d7");
    EXPECT_EQ(model.StoredChanges(ImportValue::FilePath), SignReadAsQuote);
    EXPECT_EQ(model.StoredChanges(ImportValue::Delimiters), 0u); // not ticked: not stored
    model.other = true;
    EXPECT_EQ(model.StoredChanges(ImportValue::Delimiters), SignReadAsQuote);
    EXPECT_EQ(model.StoredChanges(ImportValue::Comments), OutsideCodePage);
    EXPECT_EQ(model.StoredChanges(ImportValue::ColumnName, 0), QuoteReadAsSign);
    EXPECT_EQ(model.StoredChanges(ImportValue::ColumnName, 1), 0u);
    EXPECT_EQ(model.StoredChanges(ImportValue::ColumnName, 2), 0u);
}

TEST_F(ImportWizardModel, AStoredFixedWidthConfigurationOpensWithoutBreaksAndAPresetFile)
{
    const WString path = folder_.WriteFile("fixed.txt", "  1.5  2.5\n");
    ImportTxtConfiguration stored;
    stored.SetTxtFile(WTEXT("/elsewhere/old.txt"));
    stored.SetMode(1);
    stored.GetPositions() = {5, 10};
    definition_.SetImporterConfiguration(stored.ToXml().c_str());
    ImportConfigurationModel model(definition_, false);
    model.Open(path.c_str());
    EXPECT_EQ(model.filePath, path);
    EXPECT_EQ(model.mode, 1);
    EXPECT_TRUE(model.Positions().empty()); // replaced by the ruler's, which starts without breaks
    EXPECT_EQ(model.Ruler().BreakCount(), 0);
    EXPECT_EQ(RowsOf(model), (std::vector<std::string>{"  1.5  2.5"}));
}

TEST_F(ImportWizardModel, BadFilesGiveTheirPreviewOrAnAlertAndKeepTheColumnList)
{
    ImportConfigurationModel& model = OpenOn("a\tb\n");
    ASSERT_EQ(model.columns.size(), 2u);
    const WString missing = folder_.FilePath("gone/nothing.txt");
    model.ChooseFile(missing);
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 1u);
    EXPECT_EQ(CadShim::RecordedAlerts()[0], WTEXT("Cannot open the file ") + missing + WTEXT("."));
    EXPECT_TRUE(model.Preview().Rows().empty());
    EXPECT_EQ(model.columns.size(), 2u);

    // Removed after it was chosen: the next reload alerts as well.
    model.ChooseFile(folder_.WriteFile("brief.txt", "x\ty\tz\n"));
    EXPECT_EQ(model.columns.size(), 3u);
    std::remove(U8(folder_.FilePath("brief.txt")).c_str());
    model.DelimitersChanged();
    EXPECT_EQ(CadShim::RecordedAlerts().size(), 2u);

    model.ChooseFile(folder_.WriteFile("odd.txt", std::string("\xFF\xFE" "a\0\t\0b\0\n\0c", 11)));
    ASSERT_FALSE(model.Preview().Rows().empty());
    EXPECT_EQ(RowsOf(model)[0], "a|b");
    EXPECT_EQ(model.Preview().Encoding().encoding, TextEncoding::Utf16LE);
    model.ChooseFile(folder_.WriteFile("binary.txt", std::string("\x00\x01\t\xFF\x00\n\x7F\x80\t\t\n", 11)));
    // ANSI text ends at a NUL byte: the first line is empty, the second has one tab left.
    EXPECT_EQ(model.Preview().ColumnCount(), 2);
    const std::string longLine(3000000, 'x');
    model.ChooseFile(folder_.WriteFile("long.txt", longLine + "\t1\n"));
    EXPECT_EQ(model.Preview().Rows()[0].fields[0].size(), longLine.size());
    EXPECT_EQ(NamesOf(model), (std::vector<std::string>{"C1:Text", "C2:Integer"}));

    // A line of thousands of fields (a wrong delimiter, say) gives the first 1000 columns.
    std::string wide;
    for (int i = 1; i <= 5000; ++i)
        wide += std::to_string(i) + "\t";
    model.ChooseFile(folder_.WriteFile("wide.txt", wide + "\n7\t8\n"));
    EXPECT_EQ(model.Preview().ColumnsFound(), 5000);
    EXPECT_EQ(model.Preview().ColumnCount(), ImportPreview::kMaxColumns);
    ASSERT_EQ(model.columns.size(), 1000u);
    EXPECT_EQ(U8(model.columns.back().label), "C1000");
    EXPECT_EQ(RowsOf(model)[1], "7|8");
    ASSERT_EQ(model.Preview().Rows()[0].fields.size(), 1000u);
    EXPECT_EQ(U8(model.Preview().Rows()[0].fields.back()), "1000");
    EXPECT_EQ(CadShim::RecordedAlerts().size(), 2u);
}
