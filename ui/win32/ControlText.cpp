#include "ui/win32/ControlText.h"

#include "ui/win32/Win32.h"

WString ControlText(DialogWindow dialog, int controlId)
{
    HWND control = GetDlgItem(dialog, controlId);
    if (!control)
        return WString();
    WString text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, WChar());
    const int length = GetWindowTextW(control, text.data(), static_cast<int>(text.size()));
    text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return text;
}

void SetControlText(DialogWindow dialog, int controlId, const WString& text)
{
    SetDlgItemTextW(dialog, controlId, text.c_str());
}

bool IsButtonChecked(DialogWindow dialog, int controlId)
{
    return IsDlgButtonChecked(dialog, controlId) == BST_CHECKED;
}

void SetButtonChecked(DialogWindow dialog, int controlId, bool checked)
{
    CheckDlgButton(dialog, controlId, checked ? BST_CHECKED : BST_UNCHECKED);
}

void EnableControl(DialogWindow dialog, int controlId, bool enabled)
{
    if (HWND control = GetDlgItem(dialog, controlId))
        EnableWindow(control, enabled ? TRUE : FALSE);
}
