// The CAD shim's dialogs on Windows: the system's own dialog manager and common controls.
// They start the first time a dialog is wanted, when dialogs are allowed and the process has
// a desktop to show them on.

#include "refhost/CadShimDialogs.h"
#include "refhost/dialogs/DialogState.h"

#include <windows.h>

#include <commctrl.h>

namespace CadShim {
namespace {

// Whether this process can show windows to a person: its window station is the interactive
// one (services run in one that is not), and a top-level window can be made there. Under
// Wine without an X display the window is refused at once; on Windows a session without a
// desktop refuses it too.
bool HasDesktop()
{
    USEROBJECTFLAGS flags{};
    DWORD needed = 0;
    if (HWINSTA station = GetProcessWindowStation();
        station && GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof flags, &needed) &&
        !(flags.dwFlags & WSF_VISIBLE))
        return false;
    HWND probe = CreateWindowExW(WS_EX_TOOLWINDOW, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    if (!probe)
        return false;
    DestroyWindow(probe);
    return true;
}

// The title of the application's message boxes: the program's name, as the system shows it.
WString ApplicationName()
{
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    WString name(path, length < MAX_PATH ? length : 0);
    if (const auto slash = name.find_last_of(L"\\/"); slash != WString::npos)
        name.erase(0, slash + 1);
    if (const auto dot = name.rfind(L'.'); dot != WString::npos && dot > 0)
        name.erase(dot);
    return name;
}

} // namespace

bool ShowAlertBox(const WString& text)
{
    const DialogState& state = Dialogs();
    if (!state.alertBoxes || state.openWindows.empty())
        return false;
    // Owned by the innermost dialog, which stays disabled while the box is open.
    MessageBoxW(state.openWindows.back(), text.c_str(), ApplicationName().c_str(), MB_OK | MB_ICONEXCLAMATION);
    return true;
}

bool StartDialogs()
{
    DialogState& state = Dialogs();
    if (!state.allowed)
        return false;
    if (state.started)
        return true;
    if (state.startFailed)
        return false;
    // The common controls the module's dialogs use, in whichever version the caller's
    // activation context names (a dialog run registers version 6 again inside the module's
    // own context).
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_LISTVIEW_CLASSES |
                                                       ICC_BAR_CLASSES | ICC_TAB_CLASSES | ICC_UPDOWN_CLASS |
                                                       ICC_PROGRESS_CLASS | ICC_USEREX_CLASSES | ICC_LINK_CLASS};
    InitCommonControlsEx(&controls);
    if (!HasDesktop()) {
        state.startFailed = true;
        return false;
    }
    state.started = true;
    return true;
}

} // namespace CadShim
