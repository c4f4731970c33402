// The import wizard's survey-preset controls: the preset choice (an editable drop-down list),
// Detect, Save as preset, the names-line check box and the note beside them.

#include "ui/win32/DlgTxtConfiguration.h"

#include "ui/TemplateIds.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/Win32.h"

#include <vector>

using namespace ImportControl;

namespace {

WString WithCrLf(const WString& text)
{
    WString converted;
    converted.reserve(text.size() + text.size() / 16);
    for (const WChar unit : text) {
        if (unit == WTEXT('\n'))
            converted += WTEXT('\r');
        converted += unit;
    }
    return converted;
}

} // namespace

bool CDlgTxtConfiguration::OnPresetCommand(int control, unsigned code)
{
    switch (control) {
    case kPreset: {
        // A pick ends with CBN_SELENDOK; arrows on the closed list change the selection
        // alone on some systems, and on others the end comes first: whichever comes first
        // applies it, the other one finds it applied.
        const int index = static_cast<int>(::SendDlgItemMessageW(Window(), kPreset, CB_GETCURSEL, 0, 0));
        if (index == CB_ERR)
            return false;
        if (code == CBN_SELENDOK || (code == CBN_SELCHANGE && !IsPresetListOpen() && index != appliedPreset_)) {
            ChoosePreset(index);
            return true;
        }
        return false;
    }
    case kDetect:
        if (code != BN_CLICKED)
            return false;
        Detect();
        return true;
    case kSavePreset:
        if (code != BN_CLICKED)
            return false;
        SavePreset();
        return true;
    case kNamesLine:
        if (code != BN_CLICKED)
            return false;
        TakeNamesLine();
        return true;
    default: return false;
    }
}

void CDlgTxtConfiguration::ShowPresetChoices()
{
    HWND combo = ::GetDlgItem(Window(), kPreset);
    const WString typed = ControlText(Window(), kPreset);
    ++showing_;
    ::SendMessageW(combo, CB_RESETCONTENT, 0, 0);
    for (const PresetChoice& choice : model_.PresetChoices())
        ::SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.label.c_str()));
    ::SetWindowTextW(combo, typed.c_str());
    --showing_;
    appliedPreset_ = -1;
}

void CDlgTxtConfiguration::ChoosePreset(int index)
{
    appliedPreset_ = index;
    model_.ChoosePreset(static_cast<std::size_t>(index));
    ShowFields();
    ShowMode();
    ShowPreview();
}

bool CDlgTxtConfiguration::IsPresetChoice(DialogWindow window) const
{
    HWND combo = ::GetDlgItem(Window(), kPreset);
    return window && (window == combo || ::GetParent(window) == combo);
}

bool CDlgTxtConfiguration::IsPresetListOpen() const
{
    return ::SendDlgItemMessageW(Window(), kPreset, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

bool CDlgTxtConfiguration::OnPresetEnter(const tagMSG& message)
{
    if (!IsPresetChoice(message.hwnd))
        return false;
    HWND combo = ::GetDlgItem(Window(), kPreset);
    if (IsPresetListOpen()) {
        // The combo box closes its list on Enter and reports the pick; its edit may not.
        ::SendMessageW(combo, WM_KEYDOWN, VK_RETURN, message.lParam);
        return true;
    }
    const std::optional<std::size_t> entry = model_.PresetLabelled(ControlText(Window(), kPreset));
    if (!entry)
        return false;
    ::SendMessageW(combo, CB_SETCURSEL, *entry, 0);
    ChoosePreset(static_cast<int>(*entry));
    return true;
}

void CDlgTxtConfiguration::Detect()
{
    const bool found = model_.Detect();
    ShowPresetChoices();
    if (found) {
        ::SendDlgItemMessageW(Window(), kPreset, CB_SETCURSEL, 0, 0);
        appliedPreset_ = 0;
        ShowFields();
        ShowMode();
        ShowPreview();
    } else {
        ShowNote(); // why nothing fits
    }
}

void CDlgTxtConfiguration::SavePreset()
{
    model_.SavePreset(ControlText(Window(), kPreset));
    ShowPresetChoices();
    ShowNote();
}

void CDlgTxtConfiguration::TakeNamesLine()
{
    model_.SetFirstLineHoldsNames(IsButtonChecked(Window(), kNamesLine));
    ShowPreview();
}

void CDlgTxtConfiguration::ShowNote() { SetControlText(Window(), kNote, WithCrLf(model_.Note())); }
