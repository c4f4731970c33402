#include "DialogScenarios.h"

namespace step {
namespace {
ScenarioStep Make(ScenarioStep::Kind kind, int control = 0, int row = 0, std::string text = "")
{
    return ScenarioStep{kind, control, row, std::move(text)};
}
} // namespace

ScenarioStep Type(int control, std::string text) { return Make(ScenarioStep::TypeText, control, 0, std::move(text)); }
ScenarioStep Click(int control) { return Make(ScenarioStep::Click, control); }
ScenarioStep Enter() { return Make(ScenarioStep::PressEnter); }
ScenarioStep Escape() { return Make(ScenarioStep::PressEscape); }
ScenarioStep ChooseType(int row, std::string typeName)
{
    return Make(ScenarioStep::ChooseColumnType, 0, row, std::move(typeName));
}
ScenarioStep Rename(int row, std::string name) { return Make(ScenarioStep::EditColumnName, 0, row, std::move(name)); }
ScenarioStep RenameCancelled(int row, std::string typed)
{
    return Make(ScenarioStep::CancelColumnNameEdit, 0, row, std::move(typed));
}
ScenarioStep ToggleOn(int row) { return Make(ScenarioStep::ToggleColumnOn, 0, row); }
ScenarioStep RulerAt(int character) { return Make(ScenarioStep::ClickRulerAt, 0, character); }
ScenarioStep Choose(int control, std::string entry) { return Make(ScenarioStep::ChooseEntry, control, 0, std::move(entry)); }
ScenarioStep Enabled(int control) { return Make(ScenarioStep::ExpectEnabled, control); }
ScenarioStep Disabled(int control) { return Make(ScenarioStep::ExpectDisabled, control); }
ScenarioStep Shows(int control, std::string text) { return Make(ScenarioStep::ExpectText, control, 0, std::move(text)); }
ScenarioStep ShowsPart(int control, std::string text)
{
    return Make(ScenarioStep::ExpectTextIncludes, control, 0, std::move(text));
}
ScenarioStep Checked(int control) { return Make(ScenarioStep::ExpectChecked, control); }
ScenarioStep Unchecked(int control) { return Make(ScenarioStep::ExpectUnchecked, control); }
ScenarioStep Alert(unsigned message, std::string argument)
{
    return Make(ScenarioStep::ExpectAlert, static_cast<int>(message), 0, std::move(argument));
}
ScenarioStep StillOpen() { return Make(ScenarioStep::ExpectDialogOpen); }
ScenarioStep PreviewRows(int count) { return Make(ScenarioStep::ExpectPreviewRows, 0, count); }
ScenarioStep PreviewColumns(int count) { return Make(ScenarioStep::ExpectPreviewColumns, 0, count); }
ScenarioStep ColumnRows(int count) { return Make(ScenarioStep::ExpectColumnRows, 0, count); }
ScenarioStep ColumnName(int row, std::string name) { return Make(ScenarioStep::ExpectColumnName, 0, row, std::move(name)); }
} // namespace step

std::string SubstitutePaths(const std::string& text, const std::string& file, const std::string& folder)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        if (text.compare(i, 5, "$FILE") == 0) {
            result += file;
            i += 5;
        } else if (text.compare(i, 4, "$DIR") == 0) {
            result += folder;
            i += 4;
        } else {
            result += text[i++];
        }
    }
    return result;
}

namespace {

using namespace step;

// Ids from ui/templates/*.def that the rows below use.
constexpr int kOk = 1, kCancel = 2;
namespace exp {
constexpr int kPath = 105, kComment = 204, kSpace = 110, kTab = 111, kOther = 112, kOtherText = 114,
              kHeader = 109, kAnsi = 107, kUtf16 = 108;
}
namespace imp {
constexpr int kPath = 201, kDelimited = 203, kFixedWidth = 205, kSpace = 206, kTab = 207, kOther = 208,
              kOtherText = 209, kComments = 204, kRuler = 221, kRemoveBreaks = 222, kPreset = 240, kDetect = 241,
              kSavePreset = 242, kNamesLine = 243, kNote = 244;
}
namespace question {
constexpr int kText = 114, kOverwrite = 113, kAppend = 112, kCancel = 111;
}

// The configurations as the dialogs write them (values in the configuration codec's form).
std::string Export(const std::string& path, const std::string& comment, const std::string& delimiter, int header,
                   int format)
{
    return R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile=")" + path + "\" comment=\"" + comment +
           "\" delimiter=\"" + delimiter + "\" header=\"" + std::to_string(header) + "\" format=\"" +
           std::to_string(format) + "\"/>";
}

std::string Import(const std::string& path, const std::string& delimiters, const std::string& comments, int mode,
                   const std::string& positions, const std::string& columns, int headerLines = 0)
{
    return R"(<?xml version="1.0" encoding="utf-8"?><cfg txtFile=")" + path + "\" delimiter=\"" + delimiters +
           "\" comments=\"" + comments + "\" mode=\"" + std::to_string(mode) + "\" colPositions=\"" + positions +
           "\"" + (headerLines > 0 ? " headerLines=\"" + std::to_string(headerLines) + "\"" : std::string()) + ">" +
           columns + "</cfg>";
}

constexpr int kText = 5005, kInteger = 5010, kReal = 5001;

std::string Column(int no, const std::string& name, int type, bool on = true)
{
    return "<col no=\"" + std::to_string(no) + "\" name=\"" + name + "\" type=\"" + std::to_string(type) +
           "\" onOff=\"" + (on ? "1" : "0") + "\"/>";
}

// The ruler's break separator as stored.
const std::string kSep = "\xC2\xA4";

const std::string kFixedWidthLines = "# name 1-8, east 9-22, north 23-36\n"
                                     "L100        456705.250   5123398.004 301.213BM1\n"
                                     "L101        456712.004   5123401.882 301.498TP\n"
                                     "L102        456724.771   5123407.315 301.446TP\n";

const std::string kUnicodeName = "\xC5\x81\xC3\xB3" "d\xC5\xBA-\xCE\x91\xCE\xB8\xCE\xAE\xCE\xBD\xCE\xB1-"
                                 "\xE6\x9D\xB1\xE4\xBA\xAC.txt"; // Łódź-Αθήνα-東京.txt

std::vector<DialogScenario> ExportScenarios()
{
    std::vector<DialogScenario> rows;
    rows.push_back({"ExportStoresWhatWasTypedAndChosen", 103, Export("/survey/old.txt", "#", "\t", 1, 2), "", 1, "",
                    "", true,
                    {Shows(exp::kPath, "/survey/old.txt"), Checked(exp::kTab), Disabled(exp::kOtherText),
                     Checked(exp::kHeader), Type(exp::kPath, "/survey/new points.txt"), Type(exp::kComment, "##"),
                     Click(exp::kOther), Enabled(exp::kOtherText), Type(exp::kOtherText, ";"), Click(exp::kHeader),
                     Unchecked(exp::kHeader), Click(exp::kUtf16), Checked(exp::kUtf16), Unchecked(exp::kAnsi),
                     Click(kOk)},
                    1, Export("/survey/new points.txt", "##", ";", 0, 1)});
    rows.push_back({"ExportOtherDelimiterEditOnlyForOther", 103, "", "", 1, "", "", false,
                    {Checked(exp::kSpace), Disabled(exp::kOtherText), Click(exp::kTab), Disabled(exp::kOtherText),
                     Click(exp::kOther), Enabled(exp::kOtherText), Click(exp::kSpace), Disabled(exp::kOtherText),
                     Click(exp::kTab), Type(exp::kPath, "/tmp/out.txt"), Click(kOk)},
                    1, Export("/tmp/out.txt", "", "\t", 0, 0)});
    rows.push_back({"ExportStoredFormatTwoOpensAsTheFirstAndIsWrittenAsZero", 103, Export("/a.txt", "#", " ", 0, 2), "",
                    1, "", "", false,
                    {Checked(exp::kAnsi), Unchecked(exp::kUtf16), Checked(exp::kSpace), Click(kOk)},
                    1, Export("/a.txt", "#", " ", 0, 0)});
    // Stored before the checks on purpose: even a rejected configuration is kept.
    rows.push_back({"ExportOkWithoutPathAlertsStaysOpenAndStores", 103, "", "", 1, "", "", false,
                    {Click(kOk), Alert(276), StillOpen(), Escape()},
                    2, Export("", "", " ", 0, 0)});
    rows.push_back({"ExportOtherWithoutDelimiterAlertsStaysOpenAndStores", 103, "", "", 1, "", "", false,
                    {Type(exp::kPath, "/tmp/out.txt"), Click(exp::kOther), Click(kOk), Alert(7872), StillOpen(),
                     Click(kCancel)},
                    2, Export("/tmp/out.txt", "", "", 0, 0)});
    rows.push_back({"ExportEscapeCancelsAndStoresNothing", 103, Export("/a.txt", "#", " ", 1, 0), "", 1, "", "", true,
                    {Type(exp::kPath, "/changed.txt"), Click(exp::kHeader), Escape()},
                    2, ""});
    rows.push_back({"ExportEnterInAnEditIsOk", 103, "", "", 1, "", "", false,
                    {Type(exp::kComment, "%"), Type(exp::kPath, "/tmp/enter.txt"), Enter()},
                    1, Export("/tmp/enter.txt", "%", " ", 0, 0)});
    rows.push_back({"ExportUnparseableStoredConfigurationOpensEmpty", 103, "no configuration <here", "", 1, "", "",
                    false,
                    {Shows(exp::kPath, ""), Shows(exp::kComment, ""), Checked(exp::kSpace), Unchecked(exp::kHeader),
                     Checked(exp::kAnsi), Disabled(exp::kOtherText), Type(exp::kPath, "/tmp/x.txt"), Click(kOk)},
                    1, Export("/tmp/x.txt", "", " ", 0, 0)});
    return rows;
}

std::vector<DialogScenario> FileChoiceScenarios()
{
    const std::string path = "/data/" + kUnicodeName;
    return {
        {"FileQuestionOverwrite", 104, "", "", 1, "", path, false,
         {ShowsPart(question::kText, path), Click(question::kOverwrite)}, 1, ""},
        {"FileQuestionAppend", 104, "", "", 1, "", path, false, {Click(question::kAppend)}, 2, ""},
        {"FileQuestionCancel", 104, "", "", 1, "", path, false, {Click(question::kCancel)}, 3, ""},
        {"FileQuestionEscapeCancels", 104, "", "", 1, "", path, false, {Escape()}, 3, ""},
    };
}

std::vector<DialogScenario> ImportScenarios()
{
    std::vector<DialogScenario> rows;
    rows.push_back(
        {"ImportDelimitedBySpaceTabAndOther", 102, "", "#Name X;Y\tCode\nP1 12.5;7\tA1\nP2 13.5;8\tA2\n", 1,
         "points.txt", "$FILE", false,
         {Shows(imp::kPath, "$FILE"), Checked(imp::kDelimited), Checked(imp::kTab), Unchecked(imp::kSpace),
          Disabled(imp::kRuler), Click(imp::kSpace), Click(imp::kOther), Type(imp::kOtherText, ";"), PreviewRows(3),
          PreviewColumns(4), ColumnRows(4), ColumnName(0, "Name"), ColumnName(3, "Code"), Click(kOk)},
         1,
         Import("$FILE", " \t;", "*#", 0, "",
                Column(0, "Name", kText) + Column(1, "X", kReal) + Column(2, "Y", kInteger) + Column(3, "Code", kText))});
    rows.push_back({"ImportCommentCharactersTyped", 102, "", "%East North\n1 2\n3 4\n", 1, "points.txt", "$FILE", false,
                    {Shows(imp::kComments, "*#"), Click(imp::kSpace), Click(imp::kTab), Type(imp::kComments, "%"),
                     PreviewRows(3), ColumnRows(2), ColumnName(0, "East"), ColumnName(1, "North"), Click(kOk)},
                    1, Import("$FILE", " ", "%", 0, "", Column(0, "East", kInteger) + Column(1, "North", kInteger))});
    // Enter commits a name and elsewhere moves on; it never closes the wizard.
    rows.push_back({"ImportColumnListTypeNameAndCheckBox", 102, "", "#X\tY\tCode\n12.5\t7\tA1\n13.5\tn/a\tA2\n", 1,
                    "points.txt", "$FILE", true,
                    {ColumnRows(3), ChooseType(1, "Real"), Rename(0, "Easting"), StillOpen(), ColumnName(0, "Easting"),
                     RenameCancelled(2, "Gone"), StillOpen(), ColumnName(2, "Code"), ToggleOn(2), Click(imp::kPath),
                     Enter(), StillOpen(), Click(kOk)},
                    1,
                    Import("$FILE", "\t", "*#", 0, "",
                           Column(0, "Easting", kReal) + Column(1, "Y", kReal) + Column(2, "Code", kText, false))});
    // Columns begin where the ruler is clicked; a second click there takes the break away.
    rows.push_back({"ImportFixedWidthOnTheRuler", 102, "", kFixedWidthLines, 1, "points.txt", "$FILE", false,
                    {Disabled(imp::kRuler), Click(imp::kFixedWidth), Enabled(imp::kRuler), Enabled(imp::kRemoveBreaks),
                     Disabled(imp::kSpace), Disabled(imp::kOtherText), RulerAt(8), RulerAt(22), RulerAt(36), RulerAt(44),
                     RulerAt(44), ColumnRows(3), PreviewColumns(3), PreviewRows(4), Click(imp::kRemoveBreaks),
                     ColumnRows(1), RulerAt(8), RulerAt(22), ColumnRows(2), Click(kOk)},
                    1, Import("$FILE", "\t", "*#", 1, "8" + kSep + "22" + kSep, Column(0, "C1", kText) + Column(1, "C2", kText))});
    // A stored configuration opens as stored, and OK writes it back unchanged.
    const std::string stored = Import("$FILE", ";", "*#", 0, "",
                                      Column(0, "A", kInteger) + Column(1, "B", kReal, false) + Column(2, "C", kText));
    rows.push_back({"ImportStoredConfigurationReopens", 102, stored, "1;2;x\n", 1, "points.txt", "", true,
                    {Shows(imp::kPath, "$FILE"), Checked(imp::kOther), Unchecked(imp::kTab), Shows(imp::kOtherText, ";"),
                     ColumnName(1, "B"), Click(kOk)},
                    1, stored});
    rows.push_back({"ImportCancelStoresNothing", 102, "", "1\t2\n", 1, "points.txt", "$FILE", false,
                    {Rename(0, "Gone"), Click(kCancel)}, 2, ""});

    // Survey presets: Detect on a file with a names line, a preset chosen from the list, the
    // names line ticked by hand, and the setup saved as the user's own preset.
    rows.push_back({"ImportDetectTakesPnezdAndItsNamesLine", 102, "",
                    "Point,Northing,Easting,Elevation,Description\n1,5123398.004,456705.250,301.213,BM1\n"
                    "2,5123401.882,456712.004,301.498,TP\n",
                    1, "points.txt", "$FILE", false,
                    {Unchecked(imp::kNamesLine), Click(imp::kDetect), Checked(imp::kNamesLine), Checked(imp::kOther),
                     Unchecked(imp::kTab), Shows(imp::kOtherText, ","),
                     ShowsPart(imp::kNote, "Fits every line: PNEZD (comma, first line holds the names)"),
                     ShowsPart(imp::kNote, "the names line tells northing from easting"),
                     ShowsPart(imp::kNote, "XYZ (comma) does not fit: line 1 has 5 columns, XYZ needs 3."),
                     PreviewRows(3), ColumnRows(5), ColumnName(0, "Point"), ColumnName(2, "Easting"), Click(kOk)},
                    1,
                    Import("$FILE", ",", "*#", 0, "",
                           Column(0, "Point", kText) + Column(1, "Northing", kReal) + Column(2, "Easting", kReal) +
                               Column(3, "Elevation", kReal) + Column(4, "Description", kText),
                           1)});
    rows.push_back({"ImportPresetChosenFromTheList", 102, "",
                    "1 456705.250 5123398.004 301.213 BM1\n2 456712.004 5123401.882 n/a TP\n", 1, "points.txt",
                    "$FILE", false,
                    {Choose(imp::kPreset, "PENZD"), Checked(imp::kSpace), Unchecked(imp::kTab), Unchecked(imp::kOther),
                     ColumnRows(5), ColumnName(1, "easting"), Unchecked(imp::kNamesLine),
                     ShowsPart(imp::kNote, "elevation: line 2 holds 'n/a', which is not Real."), Click(kOk)},
                    1,
                    Import("$FILE", " ", "*#", 0, "",
                           Column(0, "name", kText) + Column(1, "easting", kReal) + Column(2, "northing", kReal) +
                               Column(3, "elevation", kReal) + Column(4, "description", kText))});
    rows.push_back({"ImportFirstLineHoldsTheNames", 102, "", "X\tY\tZ\n1.5\t2.5\t3\n", 1, "points.txt", "$FILE", false,
                    {ColumnName(0, "C1"), Click(imp::kNamesLine), Checked(imp::kNamesLine), ColumnName(0, "X"),
                     ColumnName(2, "Z"), PreviewRows(2), Click(kOk)},
                    1,
                    Import("$FILE", "\t", "*#", 0, "",
                           Column(0, "X", kReal) + Column(1, "Y", kReal) + Column(2, "Z", kInteger), 1)});
    rows.push_back({"ImportSetupSavedAsTheUsersPreset", 102, "", "1;2.5\n2;3.5\n", 1, "points.txt", "$FILE", false,
                    {Click(imp::kTab), Click(imp::kOther), Type(imp::kOtherText, ";"), Type(imp::kPreset, "Mine"),
                     Click(imp::kSavePreset), ShowsPart(imp::kNote, "Mine.xml"),
                     Choose(imp::kPreset, "Mine"), Click(kOk)},
                    1, Import("$FILE", ";", "*#", 0, "", Column(0, "C1", kInteger) + Column(1, "C2", kReal))});

    // What the wizard meets in the field.
    rows.push_back({"ImportUnparseableStoredConfigurationOpensWithTab", 102, "<cfg broken", "1\t2\n", 1, "points.txt",
                    "$FILE", false,
                    {Checked(imp::kTab), Unchecked(imp::kSpace), Unchecked(imp::kOther), Shows(imp::kComments, "*#"),
                     ColumnRows(2), Click(kOk)},
                    1, Import("$FILE", "\t", "*#", 0, "", Column(0, "C1", kInteger) + Column(1, "C2", kInteger))});
    rows.push_back({"ImportFileThatCannotBeOpened", 102, "", "", 1, "points.txt", "$DIR/missing.txt", false,
                    {Alert(60043, "$DIR/missing.txt"), PreviewRows(0), ColumnRows(0), Click(kOk)},
                    1, Import("$DIR/missing.txt", "\t", "*#", 0, "", "")});
    rows.push_back({"ImportDirectoryAsTheFile", 102, "", "", 1, "points.txt", "$DIR", false,
                    {Alert(60043, "$DIR"), PreviewRows(0), ColumnRows(0), Click(kOk)},
                    1, Import("$DIR", "\t", "*#", 0, "", "")});
    // Read and previewed whole; the stored path has the code page's default character for
    // every letter that code page 1252 lacks.
    rows.push_back({"ImportFileNamedInPolishGreekAndJapanese", 102, "", "#Nr\tH\n1\t2.5\n", 1, kUnicodeName, "$FILE",
                    false,
                    {Shows(imp::kPath, "$FILE"), PreviewRows(2), ColumnName(0, "Nr"), Click(kOk)},
                    1,
                    Import("$DIR/?=EF=BF=B3d?-" + std::string(5, '?') + "-" + std::string(2, '?') + ".txt", "\t", "*#", 0, "",
                           Column(0, "Nr", kInteger) + Column(1, "H", kReal))});
    // One line of 100 MB without a delimiter: one text column.
    rows.push_back({"ImportOneLineOfOneHundredMegabytes", 102, "", "0123456789", 10'000'000, "points.txt", "$FILE",
                    false, {PreviewRows(1), ColumnRows(1), Click(kOk)},
                    1, Import("$FILE", "\t", "*#", 0, "", Column(0, "C1", kText))});
    return rows;
}

std::vector<DialogScenario> AllScenarios()
{
    std::vector<DialogScenario> all = ExportScenarios();
    for (auto group : {FileChoiceScenarios(), ImportScenarios()})
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

} // namespace

const std::vector<DialogScenario>& DialogScenarios()
{
    static const std::vector<DialogScenario> scenarios = AllScenarios();
    return scenarios;
}
