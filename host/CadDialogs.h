#pragma once
// The CAD application's dialog base and the GIS framework's icon button, as the module's
// dialogs use them. In the CAD application they are MFC classes. On Windows the dialog is
// made from its template in the module's resources and Window() is its handle, with the
// template's controls in it; with the wxWidgets toolkit (the reference host on Linux) the
// window is empty and the dialog makes its controls as wx windows.

#include "host/HostApi.h"
#include "host/Text.h"

#include <cstdint>

#if defined(_WIN32)
struct HWND__;
struct tagMSG;
using DialogWindow = HWND__*;
#else
class wxWindow;
using DialogWindow = wxWindow*;
#endif

// The CAD application asks a dialog with this message whether it keeps the focus while the
// user works in the drawing; the module's dialogs answer 1 (keep it).
constexpr unsigned WM_ACAD_KEEPFOCUS = 0x7101;

// Results of a modal run ended by the standard buttons; -1 when no dialog could be shown.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int kDialogNotShown = -1;

class VELTOGIS_CAD_API CAdUiBaseDialog {
public:
    // templateId names the dialog's resource template; resourceInstance is the module whose
    // resources hold it (its instance handle on Windows), null for the application's own.
    explicit CAdUiBaseDialog(unsigned templateId, void* resourceInstance = nullptr);
    virtual ~CAdUiBaseDialog();
    CAdUiBaseDialog(const CAdUiBaseDialog&) = delete;
    CAdUiBaseDialog& operator=(const CAdUiBaseDialog&) = delete;

    // Makes the window, lets OnInitDialog fill it, shows it and runs until EndDialog. Returns
    // the result given to EndDialog, or kDialogNotShown when the application shows no
    // dialogs (no display, or dialogs switched off); OnInitDialog is not called then.
    int DoModal();
    // Ends the modal run with the result; the window closes when the handler returns.
    void EndDialog(int result);

    unsigned TemplateId() const { return templateId_; }

    // The answer to WM_ACAD_KEEPFOCUS: 0 (let the application take the focus) unless a
    // dialog says otherwise.
    virtual long OnAcadKeepFocus();

#if defined(_WIN32)
    // Every message the modal run takes from the queue for the dialog or its controls, before
    // the dialog navigation and dispatch see it; true when the dialog handled it (it is then
    // neither translated nor dispatched).
    virtual bool PreTranslateMessage(tagMSG* message);
#endif

protected:
    // The window exists and is empty: make the controls in Window(), fill them, and return
    // true. False ends the run with IDCANCEL before the window is shown.
    virtual bool OnInitDialog();
    // The window's close box and Esc; ends the run with IDCANCEL unless a dialog says
    // otherwise.
    virtual void OnCancel();

#if defined(_WIN32)
    // IDOK from the OK button or from Enter: ends the run with IDOK unless a dialog says
    // otherwise.
    virtual void OnOK();
    // Every message the dialog window receives, before the base's own handling (the end
    // buttons, WM_ACAD_KEEPFOCUS). True when the dialog handled it, with the dialog
    // procedure's result in result.
    virtual bool OnMessage(unsigned message, std::uintptr_t wParam, std::intptr_t lParam, std::intptr_t& result);
#endif

    // The dialog's window while DoModal runs, null otherwise.
    DialogWindow Window() const { return window_; }
    void SetWindowText(const WChar* title);

private:
    friend class CadDialogWindow;

    unsigned templateId_;
    [[maybe_unused]] void* resourceInstance_;
    DialogWindow window_ = nullptr;
};

namespace VeltoGis {
namespace Utility {

// A push button showing one of the host's icons.
class VELTOGIS_CORE_API CVeltoBitmapButton {
public:
    // moduleInstance: the module's instance handle, where the host looks for the icon first.
    explicit CVeltoBitmapButton(void* moduleInstance);
    virtual ~CVeltoBitmapButton();
    CVeltoBitmapButton(const CVeltoBitmapButton&) = delete;
    CVeltoBitmapButton& operator=(const CVeltoBitmapButton&) = delete;

    // The button as control controlId of the dialog window parent: on Windows the template's
    // button, taken over; with wx a new button (owned by parent). Returns it for the layout.
    DialogWindow Create(DialogWindow parent, int controlId);
    // Shows the named icon at cx by cy pixels; an unknown name leaves the button without one.
    void SetButtonIcon(const WChar* name, unsigned int type, int cx, int cy, unsigned int flags);

private:
    [[maybe_unused]] void* moduleInstance_;
    DialogWindow button_ = nullptr;
};

} // namespace Utility
} // namespace VeltoGis
