// The module's dialogs in real windows, driven by real input events: what only the wx views
// have (the file chooser's hook, the default factory, the host's images); the flows users
// take are in the shared scenarios (ScenarioRunner.cpp).

#include "DialogDriving.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "host/GisUtility.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "ui/DialogFactory.h"
#include "ui/wx/DlgFileChoice.h"
#include "ui/wx/DlgTxtConfigurationExport.h"

#include <gtest/gtest.h>
#include <wx/bitmap.h>
#include <wx/textctrl.h>


using VeltoGis::ImportExport::CExportDefinition;

namespace {

CXMLTextFileExportConfiguration Parsed(const WString& text)
{
    CXMLTextFileExportConfiguration configuration;
    configuration.FromXml(text);
    return configuration;
}

wxString TextOf(wxWindow* dialog, int id) { return dynamic_cast<wxTextCtrl*>(Control(dialog, id))->GetValue(); }

class DialogsGui : public ::testing::Test {
protected:
    void SetUp() override
    {
        CadShim::ClearRecordings();
        CadShim::ClearRecordedDialogs();
    }
    void TearDown() override { CDlgTxtConfigurationExport::SetFileChooser(nullptr); }
};

} // namespace

TEST_F(DialogsGui, TheBrowseButtonTakesTheChosenFileWithTxtAppended)
{
    CExportDefinition definition;
    WString offeredFilter;
    CDlgTxtConfigurationExport::SetFileChooser([&](wxWindow*, const WString& filter, WString& path) {
        offeredFilter = filter;
        path = WTEXT("/data/points.csv");
        return true;
    });
    wxString shown;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        Click(dialog, 200);
        shown = TextOf(dialog, 105);
        Click(dialog, IDOK);
    });
    CDlgTxtConfigurationExport dialog(definition, false);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(shown, "/data/points.csv.txt");
    EXPECT_EQ(offeredFilter, WTEXT("Txt files (*.txt)|*.txt|All Files (*.*)|*.*||"));
    EXPECT_EQ(Parsed(definition.GetExporterConfiguration()).GetTxtFile(), WTEXT("/data/points.csv.txt"));
}

// The buttons and Esc are in the shared scenarios; the close box is the toolkit's own.
TEST_F(DialogsGui, TheFileQuestionsCloseBoxCancels)
{
    CadShim::DriveNextDialog([](wxWindow* dialog) { dialog->Close(); });
    CDlgFileChoice dialog;
    dialog.SetFilePath(WTEXT("/data/points.txt"));
    EXPECT_EQ(dialog.DoModal(), 3);
}

TEST_F(DialogsGui, TheEnginesReachTheDialogsThroughTheDefaultFactory)
{
    CExportDefinition definition;
    CadShim::DriveNextDialog([](wxWindow* dialog) { Click(dialog, IDCANCEL); });
    EXPECT_EQ(Dialogs().RunExportConfiguration(&definition, 0), ModalResultCancel);
    CadShim::DriveNextDialog([](wxWindow* dialog) { Click(dialog, 112); });
    EXPECT_EQ(Dialogs().RunFileChoice(WTEXT("/tmp/x.txt")), FileChoiceAppend);
    VeltoGis::ImportExport::CImportDefinition importDefinition;
    CadShim::DriveNextDialog([](wxWindow* dialog) { Click(dialog, IDOK); });
    EXPECT_EQ(Dialogs().RunImportConfiguration(&importDefinition, 1, WTEXT("/tmp/none.txt")), ModalResultOk);
    EXPECT_NE(importDefinition.GetImporterConfigurationNode().find(WTEXT("txtFile=\"/tmp/none.txt\"")), WString::npos);
    // With dialogs switched off the command line answers, and nobody is there to ask.
    CadShim::AllowDialogs(false);
    EXPECT_EQ(Dialogs().RunFileChoice(WTEXT("/tmp/x.txt")), FileChoiceCancel);
    CadShim::AllowDialogs(true);
    EXPECT_EQ(CadShim::RecordedDialogs().size(), 3u);
}

TEST_F(DialogsGui, HostImagesAreRealAndOneHandlePerNameAndSize)
{
    const auto* configuration = VeltoGis::CModuleConfiguration::Instance();
    const auto* open = static_cast<const wxBitmap*>(configuration->LoadImageW(WTEXT("IDI_OPEN"), 1, 16, 16, 0));
    const auto* remove = static_cast<const wxBitmap*>(configuration->GetIcon(WTEXT("IDI_DELETE")));
    ASSERT_NE(open, nullptr);
    ASSERT_NE(remove, nullptr);
    EXPECT_TRUE(open->IsOk());
    EXPECT_EQ(open->GetWidth(), 16);
    EXPECT_NE(static_cast<const void*>(open), static_cast<const void*>(remove));
    EXPECT_EQ(configuration->LoadImageW(WTEXT("IDI_OPEN"), 1, 16, 16, 0), open);
    EXPECT_EQ(configuration->GetIcon(WTEXT("IDI_OPEN2")), nullptr);
    EXPECT_EQ(configuration->LoadImageW(nullptr, 1, 16, 16, 0), nullptr);
}
