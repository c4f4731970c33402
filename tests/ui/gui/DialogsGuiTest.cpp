// The module's dialogs in real windows, driven by real input events.

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
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include <filesystem>

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

TEST_F(DialogsGui, ExportDialogStoresWhatWasTypedAndChosen)
{
    CExportDefinition definition;
    CXMLTextFileExportConfiguration start;
    start.SetTxtFile(WTEXT("/survey/old.txt"));
    start.SetFormat(2);
    definition.SetExporterConfigurationNode(start.ToXml().c_str());
    bool screenshotWritten = false;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        EXPECT_EQ(TextOf(dialog, 105), "/survey/old.txt");
        EXPECT_TRUE(dynamic_cast<wxRadioButton*>(Control(dialog, 107))->GetValue()); // format 2 opens as the first
        EXPECT_FALSE(Control(dialog, 114)->IsEnabled());                            // tab: no other delimiter
        TypeInto(dialog, 105, "/survey/new points.txt");
        TypeInto(dialog, 204, "##");
        Click(dialog, 112);
        EXPECT_TRUE(Control(dialog, 114)->IsEnabled());
        TypeInto(dialog, 114, ";");
        Click(dialog, 109);
        Click(dialog, 108);
        screenshotWritten = std::filesystem::exists(Screenshot(dialog, "export-configuration"));
        Click(dialog, IDOK);
    });
    CDlgTxtConfigurationExport dialog(definition, true);
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(screenshotWritten);

    const CXMLTextFileExportConfiguration stored = Parsed(definition.GetExporterConfigurationNode());
    EXPECT_EQ(stored.GetTxtFile(), WTEXT("/survey/new points.txt"));
    EXPECT_EQ(stored.GetComment(), WTEXT("##"));
    EXPECT_EQ(stored.GetDelimiter(), WTEXT(";"));
    EXPECT_EQ(stored.GetHeader(), 0); // the default configuration had a header: the click took it away
    EXPECT_EQ(stored.GetFormat(), 1);
    EXPECT_EQ(definition.GetExporterConfiguration(), WString());
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].templateId, 103u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].keepFocusAnswer, 1);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].title, LoadMessage(MessageId::ExportDialogTitle));
}

TEST_F(DialogsGui, OkWithAnEmptyOtherDelimiterAlertsStoresAndStaysOpen)
{
    CExportDefinition definition;
    bool stillOpen = false;
    WString storedWhileOpen;
    CadShim::DriveNextDialog([&](wxWindow* dialog) {
        TypeInto(dialog, 105, "/tmp/out.txt");
        Click(dialog, 112);
        Click(dialog, IDOK);
        stillOpen = dialog->IsShown();
        storedWhileOpen = definition.GetExporterConfiguration();
        Screenshot(dialog, "export-configuration-alert");
        Click(dialog, IDCANCEL);
    });
    CDlgTxtConfigurationExport dialog(definition, false);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_TRUE(stillOpen);
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 1u);
    EXPECT_EQ(CadShim::RecordedAlerts()[0], LoadMessage(MessageId::ExportDelimiterMissing));
    EXPECT_EQ(Parsed(storedWhileOpen).GetTxtFile(), WTEXT("/tmp/out.txt"));
    EXPECT_EQ(Parsed(storedWhileOpen).GetDelimiter(), WString());
}

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

TEST_F(DialogsGui, EachAnswerOfTheFileQuestionAndItsCloseBox)
{
    struct Case {
        const char* name;
        std::function<void(wxWindow*)> answer;
        int result;
    };
    const Case cases[] = {
        {"overwrite", [](wxWindow* d) { Click(d, 113); }, 1},
        {"append", [](wxWindow* d) { Click(d, 112); }, 2},
        {"cancel", [](wxWindow* d) { Click(d, 111); }, 3},
        {"escape", [](wxWindow* d) { PressKey(d, WXK_ESCAPE); }, 3},
        {"close box", [](wxWindow* d) { d->Close(); }, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        wxString question;
        CadShim::DriveNextDialog([&](wxWindow* dialog) {
            question = TextOf(dialog, 114);
            if (c.result == 1)
                Screenshot(dialog, "file-choice");
            c.answer(dialog);
        });
        CDlgFileChoice dialog;
        dialog.SetFilePath(WTEXT("/data/\u0141\u00f3d\u017a.txt"));
        EXPECT_EQ(dialog.DoModal(), c.result);
        EXPECT_TRUE(question.Contains(wxString::FromUTF8("/data/Łódź.txt")));
    }
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 5u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].keepFocusAnswer, 1);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].title, LoadMessage(MessageId::FileExistsTitle));
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
