// The import wizard's survey presets without a display: a preset chosen from the list, Detect,
// the names line, saving the user's own preset, and what OK stores after each.

#include "host/ImpexDefinitions.h"
#include "import/ImportTxtConfiguration.h"
#include "platform/UserFolders.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/ScopedEnvironment.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/ColumnTypes.h"
#include "ui/ImportConfigurationModel.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

// "name:Type" per column, ":off" for one not imported, "!" for one whose type a line disagrees with.
std::string ColumnsOf(const ImportConfigurationModel& model)
{
    std::string text;
    for (const ColumnListRow& row : model.columns)
        text += (text.empty() ? "" : " ") + U8(row.name) + ":" + U8(ColumnTypeName(row.type)) + (row.on ? "" : ":off") +
                (row.typeWarning.empty() ? "" : "!");
    return text;
}

// The delimiter boxes as "space tab other[TEXT]" for those ticked.
std::string DelimitersOf(const ImportConfigurationModel& model)
{
    std::string text;
    if (model.space)
        text += "space ";
    if (model.tab)
        text += "tab ";
    if (model.other)
        text += "other[" + U8(model.otherDelimiters) + "] ";
    return text;
}

// Other ticked with the delimiter, as a user ticks it; tab unticked.
void DelimitBy(ImportConfigurationModel& model, const std::string& delimiter)
{
    model.tab = false;
    model.other = true;
    model.otherDelimiters = W(delimiter);
    model.DelimitersChanged();
}

int IndexOf(const ImportConfigurationModel& model, const std::string& label)
{
    const auto& choices = model.PresetChoices();
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (U8(choices[i].label) == label)
            return static_cast<int>(i);
    }
    ADD_FAILURE() << label << " is not in the preset choice";
    return -1;
}

class ImportWizardPresets : public ::testing::Test {
protected:
    void SetUp() override { CadShim::ClearRecordings(); }

    ImportConfigurationModel& OpenOn(const std::string& bytes)
    {
        model_ = std::make_unique<ImportConfigurationModel>(definition_, false);
        model_->SetUserPresetFolder(W(folder_.Path()) + Platform::PathSeparator() + W("presets"));
        model_->Open();
        model_->ChooseFile(folder_.WriteFile("survey.txt", bytes));
        return *model_;
    }

    // A file's path as the presets' reader and writer spell it.
    std::string InPresetFolder(const std::string& name)
    {
        const std::string separator = U8(WString(1, Platform::PathSeparator()));
        return folder_.Path() + separator + "presets" + separator + name;
    }

    std::string Stored() const { return U8(definition_.GetImporterConfiguration()); }

    CImportDefinition definition_;
    refhost::testing::TempDir folder_;
    std::unique_ptr<ImportConfigurationModel> model_;
};

} // namespace

TEST_F(ImportWizardPresets, APresetChosenFromTheListFillsTheBoxesAndColumnsAsAUserWould)
{
    const struct {
        const char* file;
        const char* preset;
        const char* delimiters;
        const char* columns;
        int headerLines;
    } cases[] = {
        {"1,5123398.0,456705.2,301.2,BM1\n", "PNEZD", "other[,] ",
         "name:Text northing:Real easting:Real elevation:Real description:Text", 0},
        // The first delimiter that fits: blanks here, though comma comes first in the table.
        {"1 456705.2 5123398.0 301.2 BM1\n", "PENZD", "space ",
         "name:Text easting:Real northing:Real elevation:Real description:Text", 0},
        // A value that does not convert picks the delimiter by the column count and is warned of.
        {"1\t456705.2\t5123398.0\tn/a\tTP\n", "PENZD", "tab ",
         "name:Text easting:Real northing:Real elevation:Real! description:Text", 0},
        // A names line is found and names the columns, as Detect would.
        {"E;N;H\n1.5;2.5;3.5\n", "ENZ", "other[;] ", "E:Real N:Real H:Real", 1},
        // Lines the preset cannot cut keep the lines' columns.
        {"a|b\n", "XYZ", "other[,] ", "C1:Text", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.preset) + " on " + c.file);
        ImportConfigurationModel& model = OpenOn(c.file);
        ASSERT_TRUE(model.ChoosePreset(static_cast<std::size_t>(IndexOf(model, c.preset))));
        EXPECT_EQ(DelimitersOf(model), c.delimiters);
        EXPECT_EQ(ColumnsOf(model), c.columns);
        EXPECT_EQ(model.headerLines, c.headerLines);
    }
}

TEST_F(ImportWizardPresets, ThePresetsNoteSaysWhatDisagreesAndWhatDoesNotFit)
{
    ImportConfigurationModel& model = OpenOn("a|b\n");
    model.ChoosePreset(static_cast<std::size_t>(IndexOf(model, "XYZ")));
    EXPECT_EQ(U8(model.Note()), "The lines have 1 columns; XYZ has 3. The columns are taken from the lines.");

    OpenOn("1 456705.2 5123398.0 301.2 BM1\n2 456712.0 5123401.8 n/a TP\n");
    model_->ChoosePreset(static_cast<std::size_t>(IndexOf(*model_, "PENZD")));
    EXPECT_EQ(U8(model_->Note()), "elevation: line 2 holds 'n/a', which is not Real.");
    // A type that takes every value ends the warning; the type itself stays as chosen.
    model_->columns[3].type = ColumnTypeText;
    model_->TypeChanged(3);
    EXPECT_EQ(U8(model_->Note()), "");
}

TEST_F(ImportWizardPresets, DetectTakesTheBestFitWithItsNamesLineAndOkStoresAnOrdinaryConfiguration)
{
    ImportConfigurationModel& model = OpenOn("# site survey\nPoint,Northing,Easting,Elevation,Description\n"
                                             "1,5123398.004,456705.250,301.213,BM1\n2,5123401.882,456712.004,301.498,TP\n");
    ASSERT_TRUE(model.Detect());
    EXPECT_EQ(U8(model.PresetChoices().front().label), "PNEZD (comma, first line holds the names)");
    EXPECT_EQ(model.headerLines, 1);
    EXPECT_EQ(ColumnsOf(model), "Point:Text Northing:Real Easting:Real Elevation:Real Description:Text");
    const std::string note = U8(model.Note());
    EXPECT_NE(note.find("the names line tells northing from easting"), std::string::npos) << note;
    EXPECT_NE(note.find("NEZ (comma) does not fit: line 2 has 5 columns, NEZ needs 3."), std::string::npos) << note;
    // The names line is a header row of the preview, not data.
    EXPECT_EQ(model.Preview().RowColour(1), ImportPreview::kHeaderRowColour);
    EXPECT_TRUE(model.CellConverts(1, 1));

    model.Confirm();
    ImportTxtConfiguration stored;
    ASSERT_EQ(stored.Parse(definition_.GetImporterConfiguration().c_str()), 1);
    EXPECT_EQ(stored.GetHeaderLines(), 1);
    EXPECT_EQ(stored.GetDelimiters(), DelimiterList{W(",")});
    EXPECT_EQ(U8(stored.GetColumns()[1]->GetName()), "Northing");
}

TEST_F(ImportWizardPresets, DetectOnTheOrdnanceSurveyPointsTakesTheirNamesWithoutAWordTyped)
{
    const std::filesystem::path file =
        std::filesystem::path(TESSEL_TESTDATA) / "os-ostn15-testpoints" / "OSTN15_OSGM15_TestInput_OSGBtoETRS.txt";
    if (!std::filesystem::exists(file))
        GTEST_SKIP() << "corpus not found at " << file;
    std::ifstream in(file, std::ios::binary);
    std::stringstream bytes;
    bytes << in.rdbuf();
    ImportConfigurationModel& model = OpenOn(bytes.str());
    ASSERT_TRUE(model.Detect());
    EXPECT_EQ(U8(model.PresetChoices().front().label), "PENZ (comma, first line holds the names)");
    EXPECT_EQ(ColumnsOf(model), "PointID:Text OSGB36 Eastings:Real OSGB36 Northing:Real  Ortho Height:Real");
}

TEST_F(ImportWizardPresets, DetectWithoutAFitChangesNothingAndSaysSo)
{
    ImportConfigurationModel& model = OpenOn("just some words\nand more words here\n");
    const std::string before = ColumnsOf(model);
    EXPECT_FALSE(model.Detect());
    EXPECT_EQ(ColumnsOf(model), before);
    EXPECT_EQ(DelimitersOf(model), "tab ");
    EXPECT_EQ(U8(model.Note()).rfind("No preset fits every line.", 0), 0u);
}

TEST_F(ImportWizardPresets, TheNamesLineBoxNamesTheColumnsAndGuessesTypesFromTheLineAfter)
{
    ImportConfigurationModel& model = OpenOn("X\tY\tZ\n1.5\t2.5\t3\n");
    EXPECT_EQ(ColumnsOf(model), "C1:Text C2:Text C3:Text");
    model.SetFirstLineHoldsNames(true);
    EXPECT_EQ(ColumnsOf(model), "X:Real Y:Real Z:Integer");
    model.Confirm();
    EXPECT_NE(Stored().find(" headerLines=\"1\">"), std::string::npos) << Stored();

    // Unticked, OK writes what a wizard without the box writes.
    model.SetFirstLineHoldsNames(false);
    model.Confirm();
    EXPECT_EQ(Stored().find("headerLines"), std::string::npos) << Stored();
}

TEST_F(ImportWizardPresets, ASavedSetupIsListedAndChosenLikeAShippedOne)
{
    ImportConfigurationModel& model = OpenOn("1;2.5\n2;3.5\n");
    DelimitBy(model, ";");
    model.columns[0].name = W("Nr");
    ASSERT_TRUE(model.SavePreset(W("Mine")));
    const std::string path = InPresetFolder("Mine.xml");
    EXPECT_EQ(U8(model.Note()), "Saved as " + path + ".");

    ImportConfigurationModel& reopened = OpenOn("7;8.5\n");
    ASSERT_TRUE(reopened.ChoosePreset(static_cast<std::size_t>(IndexOf(reopened, "Mine"))));
    EXPECT_EQ(DelimitersOf(reopened), "other[;] ");
    EXPECT_EQ(ColumnsOf(reopened), "Nr:Integer C2:Real");
}

TEST_F(ImportWizardPresets, APresetThatCannotBeSavedLeavesTheOldOneAndSaysWhy)
{
    ImportConfigurationModel& model = OpenOn("1,2\n");
    DelimitBy(model, ",");
    ASSERT_TRUE(model.SavePreset(W("Kept")));
    const std::string kept = folder_.ReadFile("presets/Kept.xml");

    for (const char* name : {"", "../outside", ".hidden", "a/b"}) {
        EXPECT_FALSE(model.SavePreset(W(name))) << name;
        EXPECT_EQ(U8(model.Note()).rfind(std::string("The preset '") + name + "' cannot be saved", 0), 0u) << name;
    }
    // Fixed width is no preset: nothing is written over the old one.
    model.SetMode(ImportConfigurationModel::ModeFixedWidth);
    EXPECT_FALSE(model.SavePreset(W("Kept")));
    EXPECT_EQ(folder_.ReadFile("presets/Kept.xml"), kept);
}

TEST_F(ImportWizardPresets, AFileInThePresetFolderThatIsNoConfigurationIsNamedAndLeftOut)
{
    std::filesystem::create_directories(folder_.Path() + "/presets");
    folder_.WriteFile("presets/Broken.xml", "this is not xml");
    ImportConfigurationModel& model = OpenOn("1,2\n");
    EXPECT_EQ(U8(model.Note()),
              InPresetFolder("Broken.xml") + ": not an import configuration (no cfg element)");
    for (const PresetChoice& choice : model.PresetChoices())
        EXPECT_NE(U8(choice.label), "Broken");
}
