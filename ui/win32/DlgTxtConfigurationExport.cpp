#include "ui/win32/DlgTxtConfigurationExport.h"

#include "host/CadPlatform.h"
#include "host/Messages.h"
#include "platform/Platform.h"
#include "ui/TemplateIds.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/FileDialogs.h"
#include "ui/win32/TemplateCaptions.h"
#include "ui/win32/Win32.h"
#include "ui/win32/WindowDpi.h"

using VeltoGis::ImportExport::CExportDefinition;

namespace {

using namespace ExportControl;
// The delimiter kinds' buttons are kSpace, kTab, kOther in DelimiterKind's order.

constexpr int kIconSize = 16; // at 96 DPI
// The longest path the system's wide calls take.
constexpr WPARAM kLongestPath = 32767;

CDlgTxtConfigurationExport::FileChooser& InstalledChooser()
{
    static CDlgTxtConfigurationExport::FileChooser chooser;
    return chooser;
}

} // namespace

CDlgTxtConfigurationExport::CDlgTxtConfigurationExport(CExportDefinition& definition, bool node)
    : CAdUiBaseDialog(kTemplateId, Platform::ModuleInstance()), model_(definition, node),
      browse_(Platform::ModuleInstance())
{
}

void CDlgTxtConfigurationExport::SetFileChooser(FileChooser chooser) { InstalledChooser() = std::move(chooser); }

bool CDlgTxtConfigurationExport::OnInitDialog()
{
    ShowTemplateCaptions(Window(), ExportDialogTemplate());
    SetWindowText(TemplateTitle(ExportDialogTemplate()).c_str());
    SendDlgItemMessageW(Window(), kFilePath, EM_LIMITTEXT, kLongestPath, 0);
    browse_.Create(Window(), kBrowse);
    const int iconSize = ScaledToWindow(Window(), kIconSize);
    browse_.SetButtonIcon(WTEXT("IDI_OPEN"), IMAGE_ICON, iconSize, iconSize, 0);

    model_.Open();
    ShowFields();
    return true;
}

void CDlgTxtConfigurationExport::ShowFields()
{
    SetControlText(Window(), kFilePath, model_.filePath);
    SetControlText(Window(), kComment, model_.comment);
    CheckRadioButton(Window(), kSpace, kOther, kSpace + model_.delimiterKind);
    SetControlText(Window(), kOtherDelimiter, model_.otherDelimiter);
    SetButtonChecked(Window(), kHeader, model_.header);
    CheckRadioButton(Window(), kAnsi, kUtf16, model_.formatChoice == 1 ? kUtf16 : kAnsi);
    ApplyDelimiterKind();
}

void CDlgTxtConfigurationExport::ReadFields()
{
    model_.filePath = ControlText(Window(), kFilePath);
    model_.comment = ControlText(Window(), kComment);
    for (int kind = ExportConfigurationModel::DelimiterSpace; kind <= ExportConfigurationModel::DelimiterOther; ++kind) {
        if (IsButtonChecked(Window(), kSpace + kind))
            model_.delimiterKind = static_cast<ExportConfigurationModel::DelimiterKind>(kind);
    }
    model_.otherDelimiter = ControlText(Window(), kOtherDelimiter);
    model_.header = IsButtonChecked(Window(), kHeader);
    model_.formatChoice = IsButtonChecked(Window(), kUtf16) ? 1 : 0;
}

void CDlgTxtConfigurationExport::ApplyDelimiterKind()
{
    ReadFields();
    EnableControl(Window(), kOtherDelimiter, model_.OtherDelimiterEnabled());
}

void CDlgTxtConfigurationExport::ChooseFile()
{
    ReadFields();
    WString chosen = model_.filePath;
    const FileChooser& chooser = InstalledChooser();
    const bool taken = chooser ? chooser(Window(), ExportConfigurationModel::kFileFilter, chosen)
                               : ChooseFileToSave(Window(), ExportConfigurationModel::kFileFilter, chosen);
    if (!taken)
        return;
    model_.TakeChosenFile(chosen);
    SetControlText(Window(), kFilePath, model_.filePath);
}

bool CDlgTxtConfigurationExport::OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t,
                                           std::intptr_t& result)
{
    if (message != WM_COMMAND || HIWORD(wParam) != BN_CLICKED)
        return false;
    const int control = LOWORD(wParam);
    if (control == kBrowse)
        ChooseFile();
    else if (control >= kSpace && control <= kOther)
        ApplyDelimiterKind();
    else
        return false;
    result = 0;
    return true;
}

void CDlgTxtConfigurationExport::OnOK()
{
    ReadFields();
    if (const auto problem = model_.Confirm()) {
        acedAlert(LoadMessage(*problem).c_str());
        return;
    }
    EndDialog(IDOK);
}
