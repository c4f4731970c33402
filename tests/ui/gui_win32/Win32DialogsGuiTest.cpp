// What only the Win32 views have to get right on their own: the keyboard (tab order,
// mnemonics), captions that fit at every DPI, the system's file chooser, paths beyond
// MAX_PATH, and alerts in a message box over the dialog. Screenshots of each for people.

#include "DrivenDialog.h"

#include "export/CXMLTextFileExportConfiguration.h"
#include "host/ImpexDefinitions.h"
#include "host/Messages.h"
#include "refhost/CadShimDialogs.h"
#include "refhost/CadShimRecording.h"
#include "refhost/testing/TempDir.h"
#include "refhost/testing/TestText.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/DlgFileChoice.h"
#include "ui/win32/DlgTxtConfiguration.h"
#include "ui/win32/DlgTxtConfigurationExport.h"
#include "ui/win32/Win32.h"

#include <gtest/gtest.h>

#include <vector>

using refhost::testing::U8;
using refhost::testing::W;
using VeltoGis::ImportExport::CExportDefinition;
using VeltoGis::ImportExport::CImportDefinition;

namespace {

int ShowExportDialog(CExportDefinition& definition) { return CDlgTxtConfigurationExport(definition, false).DoModal(); }

int ShowFileQuestion()
{
    CDlgFileChoice dialog;
    dialog.SetFilePath(W("C:\\pomiary\\\xC5\x81\xC3\xB3" "d\xC5\xBA-\xCE\x91\xCE\xB8\xCE\xAE\xCE\xBD\xCE\xB1-"
                         "\xE6\x9D\xB1\xE4\xBA\xAC.txt"));
    return dialog.DoModal();
}

// The wizard on a delimited file, its preview and column list filled.
int ShowImportWizard()
{
    refhost::testing::TempDir folder;
    const WString file = folder.WriteFile("points.txt", "#Nr\tEast\tNorth\tCode\n1\t456705.25\t5123398.004\tBM1\n");
    CImportDefinition definition;
    return CDlgTxtConfiguration(definition, false, file.c_str()).DoModal();
}

struct DialogUnderTest {
    const char* name;
    const DialogTemplate& (*dialogTemplate)();
    std::function<int(CExportDefinition&)> show;
};

const DialogUnderTest kDialogs[] = {
    {"export-configuration", &ExportDialogTemplate, ShowExportDialog},
    {"file-choice", &FileChoiceDialogTemplate, [](CExportDefinition&) { return ShowFileQuestion(); }},
    {"import-wizard", &ImportDialogTemplate, [](CExportDefinition&) { return ShowImportWizard(); }},
};

// How much wider than its text a control must be: the box of a check or radio button and
// the gap after it, a push button's edges.
int Allowance(ControlKind kind)
{
    switch (kind) {
    case ControlKind::Check:
    case ControlKind::Radio:
    case ControlKind::RadioFirst: return GetSystemMetrics(SM_CXMENUCHECK) + 6;
    case ControlKind::Button:
    case ControlKind::DefaultButton: return 8;
    default: return 0;
    }
}

// The control's caption that does not fit its width in the dialog's font, or "".
std::string ClippedCaption(HWND dialog, const DialogControl& control)
{
    HWND window = GetDlgItem(dialog, control.id);
    const WString caption = ControlText(dialog, control.id);
    // What an edit or the preset choice holds is the user's or the model's, not a caption.
    if (!window || caption.empty() || control.kind == ControlKind::Edit || control.kind == ControlKind::ReadOnlyText ||
        control.kind == ControlKind::Combo)
        return {};
    HDC dc = GetDC(window);
    HGDIOBJ previous = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT text{0, 0, 0, 0};
    DrawTextW(dc, caption.c_str(), -1, &text, DT_CALCRECT | DT_SINGLELINE);
    SelectObject(dc, previous);
    ReleaseDC(window, dc);
    RECT area{};
    GetClientRect(window, &area);
    const int needed = text.right + Allowance(control.kind);
    if (needed <= area.right && text.bottom <= area.bottom + 2)
        return {};
    return U8(caption) + " needs " + std::to_string(needed) + "x" + std::to_string(text.bottom) + " px, has " +
           std::to_string(area.right) + "x" + std::to_string(area.bottom);
}

class Win32DialogsGui : public ::testing::Test {
protected:
    void SetUp() override
    {
        CadShim::ClearRecordings();
        CadShim::ClearRecordedDialogs();
    }
    void TearDown() override
    {
        CDlgTxtConfigurationExport::SetFileChooser(nullptr);
        CadShim::ShowAlertsInMessageBoxes(false);
    }
};

} // namespace

TEST_F(Win32DialogsGui, EveryCaptionFitsItsControlAndEveryDialogIsPictured)
{
    for (const DialogUnderTest& tested : kDialogs) {
        SCOPED_TRACE(tested.name);
        CExportDefinition definition;
        RunDriven([&] { return tested.show(definition); },
                  [&](const DrivenDialog& dialog) {
                      for (const DialogControl& control : tested.dialogTemplate()) {
                          std::string clipped;
                          dialog.InDialogThread([&] { clipped = ClippedCaption(dialog.Window(), control); });
                          EXPECT_EQ(clipped, "") << "control " << control.id;
                      }
                      dialog.Screenshot(tested.name);
                      dialog.PressKey(VK_ESCAPE);
                  });
    }
}

TEST_F(Win32DialogsGui, TabVisitsTheControlsInTheTemplatesOrder)
{
    struct Case {
        const DialogUnderTest& dialog;
        std::vector<int> order; // from the control that has the focus when the dialog opens
    };
    const Case cases[] = {
        // The delimiter's radio group is one stop (the checked one); 114 is off for a space.
        {kDialogs[0], {105, 200, 204, 110, 109, 107, IDOK, IDCANCEL, 105}},
        {kDialogs[1], {113, 112, 111, 113}},
        // Delimited: the ruler and its button are off; the preview list stands where its
        // placeholder did. The note beside the presets is read, not a stop.
        {kDialogs[2], {201, 200, 203, 206, 207, 208, 209, 204, 555, 104, 102, 240, 241, 242, 243, IDOK, IDCANCEL, 201}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dialog.name);
        CExportDefinition definition;
        RunDriven([&] { return c.dialog.show(definition); },
                  [&](const DrivenDialog& dialog) {
                      std::vector<int> visited{dialog.FocusedId()};
                      for (std::size_t i = 1; i < c.order.size(); ++i) {
                          dialog.PressKey(VK_TAB);
                          visited.push_back(dialog.FocusedId());
                      }
                      EXPECT_EQ(visited, c.order);
                      dialog.PressKey(VK_ESCAPE);
                  });
    }
}

TEST_F(Win32DialogsGui, AltAndTheUnderlinedLetterReachesEachControl)
{
    struct Case {
        char letter;
        int focused;   // the control that then has the focus
        int checked;   // a button that is then checked, 0 none
    };
    const Case cases[] = {
        {'f', 105, 0}, {'m', 204, 0}, {'t', 111, 111}, {'l', 111, 111}, {'o', 112, 112},
        {'h', 109, 109}, {'u', 108, 108}, {'a', 107, 107}, {'s', 110, 110},
    };
    CExportDefinition definition;
    RunDriven([&] { return ShowExportDialog(definition); },
              [&](const DrivenDialog& dialog) {
                  for (const Case& c : cases) {
                      SCOPED_TRACE(std::string("Alt+") + c.letter);
                      dialog.PressAltAnd(c.letter);
                      EXPECT_EQ(dialog.FocusedId(), c.focused);
                      if (c.checked) {
                          EXPECT_TRUE(dialog.IsChecked(c.checked));
                      }
                      EXPECT_EQ(dialog.IsEnabled(114), dialog.IsChecked(112)) << "the delimiter's edit is for Other";
                  }
                  dialog.PressKey(VK_ESCAPE);
              });
    EXPECT_EQ(definition.GetExporterConfiguration(), WString()) << "Esc stores nothing";
}

// The wizard's preset controls: the label's letter reaches the choice, a button's is a click.
TEST_F(Win32DialogsGui, AltAndTheUnderlinedLetterReachesTheWizardsPresetControls)
{
    struct Case {
        char letter;
        int focused;
        bool togglesNamesLine;
    };
    const Case cases[] = {{'r', 240, false}, {'n', 243, true}, {'r', 240, false}, {'n', 243, true}, {'e', 241, false}};
    CExportDefinition unused;
    RunDriven([&] { return kDialogs[2].show(unused); },
              [&](const DrivenDialog& dialog) {
                  for (const Case& c : cases) {
                      SCOPED_TRACE(std::string("Alt+") + c.letter);
                      const bool namesLine = dialog.IsChecked(243);
                      dialog.PressAltAnd(c.letter);
                      EXPECT_EQ(dialog.FocusedId(), c.focused);
                      if (c.togglesNamesLine) {
                          EXPECT_NE(dialog.IsChecked(243), namesLine);
                      }
                  }
                  dialog.PressKey(VK_ESCAPE);
              });
}

// The preset choice by keyboard alone: Enter takes a typed entry's exact name and stays, else
// moves on; Down on the closed list takes the next entry. Every shipped preset is tried with
// a comma first, which the wizard's tab-delimited file does not have ticked.
TEST_F(Win32DialogsGui, TheKeyboardChoosesAPreset)
{
    constexpr int kPreset = 240, kDetect = 241, kOther = 208;
    CExportDefinition unused;
    RunDriven([&] { return kDialogs[2].show(unused); },
              [&](const DrivenDialog& dialog) {
                  dialog.TypeText(kPreset, W("no such preset"));
                  dialog.PressKey(VK_RETURN);
                  EXPECT_EQ(dialog.FocusedId(), kDetect);
                  EXPECT_FALSE(dialog.IsChecked(kOther));

                  dialog.TypeText(kPreset, W("XYZ"));
                  dialog.PressKey(VK_RETURN);
                  EXPECT_EQ(dialog.FocusedId(), kPreset);
                  EXPECT_TRUE(dialog.IsChecked(kOther)) << "XYZ taken";

                  dialog.Click(kOther);
                  EXPECT_FALSE(dialog.IsChecked(kOther));
                  dialog.PressAltAnd('r');
                  dialog.PressKey(VK_DOWN);
                  // Taken with the delimiter that fits the file, which need not be the comma.
                  EXPECT_EQ(U8(dialog.Text(kPreset)), "XYZD");
                  dialog.PressKey(VK_ESCAPE);
              });
}

// Letters of code page 1252 only: the configuration stores the path in that code page.
TEST_F(Win32DialogsGui, PathsLongerThanMaxPathAreTypedAndStoredWhole)
{
    WString longPath = W("C:\\mesures");
    while (longPath.size() <= MAX_PATH + 40)
        longPath += W("\\relev\xC3\xA9s-\xC3\x9F\xC3\xA4\xC3\xB6\xC3\xBC-r\xC3\xA9seau");
    longPath += W("\\punkty.txt");
    CExportDefinition definition;
    EXPECT_EQ(RunDriven([&] { return ShowExportDialog(definition); },
                        [&](const DrivenDialog& dialog) {
                            dialog.TypeText(105, longPath);
                            EXPECT_EQ(dialog.Text(105).size(), longPath.size());
                            dialog.PressKey(VK_RETURN);
                        }),
              IDOK);
    CXMLTextFileExportConfiguration stored;
    stored.FromXml(definition.GetExporterConfiguration());
    EXPECT_EQ(U8(stored.GetTxtFile()), U8(longPath));
}

TEST_F(Win32DialogsGui, TheSystemsChooserEntersAFolderAndTakesAFileNamedInAnyScript)
{
    refhost::testing::TempDir folder;
    const WString name = W("\xE7\x82\xB9\xE7\xBE\xA4-\xCE\xB1-\xC5\xBC");
    const WString expected = folder.FilePath(U8(name) + ".txt");
    CExportDefinition definition;
    RunDriven([&] { return ShowExportDialog(definition); },
              [&](const DrivenDialog& dialog) {
                  dialog.Click(200);
                  const DrivenDialog chooser(dialog.WaitForWindowAbove());
                  ASSERT_NE(chooser.Window(), nullptr) << "no file chooser";
                  HWND nameEdit = GetDlgItem(chooser.Window(), 0x480); // edt1, the chooser's file name
                  const int nameId = nameEdit ? 0x480 : 0x47c;        // else cmb13's
                  chooser.Screenshot("file-chooser");
                  // A folder's name goes into the folder; the chooser stays.
                  chooser.TypeText(nameId, W(folder.Path()));
                  chooser.PressKey(VK_RETURN);
                  EXPECT_TRUE(chooser.IsOpen());
                  EXPECT_EQ(dialog.Text(105), WString()) << "nothing taken yet";
                  chooser.TypeText(nameId, name);
                  chooser.PressKey(VK_RETURN);
                  EXPECT_FALSE(chooser.IsOpen());
                  EXPECT_EQ(U8(dialog.Text(105)), U8(expected)) << ".txt appended";
                  dialog.PressKey(VK_ESCAPE);
              });
    EXPECT_EQ(definition.GetExporterConfiguration(), WString()) << "Esc stores nothing";
}

TEST_F(Win32DialogsGui, AnAlertShowsInAMessageBoxAndTheDialogStaysOpen)
{
    CadShim::ShowAlertsInMessageBoxes(true);
    CExportDefinition definition;
    EXPECT_EQ(RunDriven([&] { return ShowExportDialog(definition); },
                        [&](const DrivenDialog& dialog) {
                            dialog.Click(IDOK);
                            const DrivenDialog box(dialog.WaitForWindowAbove());
                            ASSERT_NE(box.Window(), nullptr) << "no message box";
                            box.Screenshot("export-configuration-alert");
                            box.PressKey(VK_RETURN);
                            EXPECT_FALSE(box.IsOpen());
                            EXPECT_TRUE(dialog.IsOpen());
                            dialog.PressKey(VK_ESCAPE);
                        }),
              IDCANCEL);
    ASSERT_EQ(CadShim::RecordedAlerts().size(), 1u);
    EXPECT_EQ(CadShim::RecordedAlerts()[0], LoadMessage(MessageId::ExportPathMissing));
}
