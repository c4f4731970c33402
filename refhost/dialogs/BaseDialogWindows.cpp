// CAdUiBaseDialog on Windows, the MFC way: the window is made from the dialog template in the
// resources of the module that shows it (CreateDialogParamW) and runs in the base's own modal
// loop, so that PreTranslateMessage sees every queued message for the dialog and its controls
// before the dialog navigation (IsDialogMessageW) and dispatch. The application's window that
// was active is the owner and stays disabled while the dialog is open. When the module carries
// a manifest (resource 2), the dialog is made and run inside the activation context it names,
// so that a module inside any application gets the common controls it asks for (version 6).

#include "host/CadDialogs.h" // before the Windows headers: their IDOK and IDCANCEL are macros
#include "refhost/CadShimDialogs.h"
#include "refhost/dialogs/DialogState.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <exception>
#include <map>

// The member's own name, not the Windows headers' SetWindowTextW.
#undef SetWindowText

namespace {

constexpr wchar_t kRunProperty[] = L"VeltoXCadShim.ModalRun";

// One DoModal of one dialog, reachable from the window through the property kRunProperty.
struct ModalRun {
    CAdUiBaseDialog* dialog = nullptr;
    bool ended = false;
    int result = IDCANCEL;
    CadShim::DialogDriver driver;
    // What a handler threw: the run ends and DoModal throws it again once the window is gone,
    // rather than letting it cross the system's dispatch code.
    std::exception_ptr failure;

    void End(int value)
    {
        ended = true;
        result = value;
    }
};

// The run whose window CreateDialogParamW is making on this thread: its procedure takes it up
// with the first message (WM_SETFONT comes before WM_INITDIALOG).
thread_local ModalRun* runBeingCreated = nullptr;

// The private message that hands a dialog to its driver from inside the modal run.
UINT DriveMessage()
{
    static const UINT message = RegisterWindowMessageW(L"VeltoXCadShim.DriveDialog");
    return message;
}

// Messages whose answer is the dialog procedure's return value rather than DWLP_MSGRESULT.
bool AnswersByReturnValue(UINT message)
{
    switch (message) {
    case WM_INITDIALOG:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON:
        return true;
    default:
        return false;
    }
}

// The activation context of a module's manifest (resource 2, ISOLATIONAWARE_MANIFEST_RESOURCE_ID),
// made once per module and kept for the process; INVALID_HANDLE_VALUE when it has none.
HANDLE ModuleActivationContext(HMODULE module)
{
    static std::map<HMODULE, HANDLE> contexts;
    const auto [entry, isNew] = contexts.try_emplace(module, INVALID_HANDLE_VALUE);
    if (!isNew)
        return entry->second;
    if (!FindResourceW(module, MAKEINTRESOURCEW(2), MAKEINTRESOURCEW(24))) // RT_MANIFEST
        return entry->second;
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(module, path, MAX_PATH);
    ACTCTXW context{};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.lpSource = length > 0 && length < MAX_PATH ? path : nullptr;
    context.hModule = module;
    context.lpResourceName = MAKEINTRESOURCEW(2);
    entry->second = CreateActCtxW(&context);
    if (entry->second != INVALID_HANDLE_VALUE) {
        // Register the controls of the version the manifest names (comctl32 loaded inside the
        // context is that version; the one this library imports is the application's).
        ULONG_PTR cookie = 0;
        if (ActivateActCtx(entry->second, &cookie)) {
            if (HMODULE controls = LoadLibraryW(L"comctl32.dll")) {
                using Init = BOOL(WINAPI*)(const INITCOMMONCONTROLSEX*);
                if (auto init = reinterpret_cast<Init>(
                        reinterpret_cast<void*>(GetProcAddress(controls, "InitCommonControlsEx")))) {
                    INITCOMMONCONTROLSEX classes{sizeof classes,
                                                 ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES | ICC_LISTVIEW_CLASSES |
                                                     ICC_BAR_CLASSES | ICC_TAB_CLASSES | ICC_UPDOWN_CLASS |
                                                     ICC_PROGRESS_CLASS | ICC_USEREX_CLASSES | ICC_LINK_CLASS};
                    init(&classes);
                }
            }
            DeactivateActCtx(0, cookie);
        }
    }
    return entry->second;
}

// The module's activation context, active for as long as the dialog is made and runs.
class ContextActivation {
public:
    explicit ContextActivation(HMODULE module)
    {
        const HANDLE context = ModuleActivationContext(module);
        active_ = context != INVALID_HANDLE_VALUE && ActivateActCtx(context, &cookie_);
    }
    ~ContextActivation()
    {
        if (active_)
            DeactivateActCtx(0, cookie_);
    }
    ContextActivation(const ContextActivation&) = delete;
    ContextActivation& operator=(const ContextActivation&) = delete;

private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

// The window a new dialog belongs to: the top-level window of this thread that is active (a
// dialog open already, or the application's main window), else the innermost dialog open,
// else the process's foreground window; null when there is none.
HWND ApplicationOwner()
{
    HWND candidate = GetActiveWindow();
    if (!candidate && !CadShim::Dialogs().openWindows.empty())
        candidate = CadShim::Dialogs().openWindows.back();
    if (!candidate) {
        HWND foreground = GetForegroundWindow();
        DWORD process = 0;
        if (foreground && GetWindowThreadProcessId(foreground, &process) && process == GetCurrentProcessId())
            candidate = foreground;
    }
    return candidate ? GetAncestor(candidate, GA_ROOT) : nullptr;
}

WString WindowTitle(HWND window)
{
    const int length = GetWindowTextLengthW(window);
    if (length <= 0)
        return {};
    WString title(static_cast<std::size_t>(length) + 1, L'\0');
    title.resize(static_cast<std::size_t>(std::max(0, GetWindowTextW(window, title.data(), length + 1))));
    return title;
}

} // namespace

class CadDialogWindow {
public:
    static int Run(CAdUiBaseDialog& dialog);
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

private:
    static INT_PTR Handle(ModalRun& run, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void Loop(ModalRun& run, HWND window);
};

INT_PTR CALLBACK CadDialogWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* run = static_cast<ModalRun*>(GetPropW(window, kRunProperty));
    if (!run) {
        run = runBeingCreated ? runBeingCreated
                              : (message == WM_INITDIALOG ? reinterpret_cast<ModalRun*>(lParam) : nullptr);
        if (!run)
            return FALSE;
        runBeingCreated = nullptr;
        SetPropW(window, kRunProperty, run);
        run->dialog->window_ = window;
    }
    if (message == WM_NCDESTROY)
        RemovePropW(window, kRunProperty);
    try {
        return Handle(*run, window, message, wParam, lParam);
    } catch (...) {
        if (!run->failure)
            run->failure = std::current_exception();
        run->End(IDCANCEL);
        return FALSE;
    }
}

INT_PTR CadDialogWindow::Handle(ModalRun& run, HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    CAdUiBaseDialog& dialog = *run.dialog;
    if (message == DriveMessage()) {
        if (run.driver) {
            const CadShim::DialogDriver driver = std::move(run.driver);
            run.driver = nullptr;
            driver(window);
        }
        return TRUE;
    }
    std::intptr_t answer = 0;
    if (dialog.OnMessage(message, wParam, lParam, answer)) {
        if (AnswersByReturnValue(message))
            return answer;
        SetWindowLongPtrW(window, DWLP_MSGRESULT, answer);
        return TRUE;
    }
    switch (message) {
    case WM_INITDIALOG:
        if (!dialog.OnInitDialog())
            run.End(IDCANCEL);
        return TRUE; // the system puts the focus on the first control
    case WM_ACAD_KEEPFOCUS:
        SetWindowLongPtrW(window, DWLP_MSGRESULT, dialog.OnAcadKeepFocus());
        return TRUE;
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDOK) {
            dialog.OnOK();
            return TRUE;
        }
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == IDCANCEL) {
            dialog.OnCancel();
            return TRUE;
        }
        return FALSE;
    case WM_CLOSE:
        dialog.OnCancel();
        return TRUE;
    default:
        return FALSE;
    }
}

void CadDialogWindow::Loop(ModalRun& run, HWND window)
{
    CAdUiBaseDialog& dialog = *run.dialog;
    while (!run.ended) {
        if (!IsWindow(window)) { // destroyed from outside
            run.End(IDCANCEL);
            break;
        }
        MSG message;
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) {
            if (got == 0) // the application quits: leave its WM_QUIT for the loop outside
                PostQuitMessage(static_cast<int>(message.wParam));
            run.End(IDCANCEL);
            break;
        }
        try {
            if (message.hwnd && (message.hwnd == window || IsChild(window, message.hwnd)) &&
                dialog.PreTranslateMessage(&message))
                continue;
        } catch (...) {
            if (!run.failure)
                run.failure = std::current_exception();
            run.End(IDCANCEL);
            break;
        }
        if (IsDialogMessageW(window, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

int CadDialogWindow::Run(CAdUiBaseDialog& dialog)
{
    HMODULE instance = dialog.resourceInstance_ ? static_cast<HMODULE>(dialog.resourceInstance_)
                                                : GetModuleHandleW(nullptr);
    const LPCWSTR templateName = MAKEINTRESOURCEW(dialog.templateId_);
    if (!FindResourceW(instance, templateName, MAKEINTRESOURCEW(5))) // RT_DIALOG
        return kDialogNotShown;

    const ContextActivation activation(instance);
    HWND owner = ApplicationOwner();
    ModalRun run;
    run.dialog = &dialog;
    ModalRun* const outerRun = runBeingCreated;
    runBeingCreated = &run;
    HWND window = CreateDialogParamW(instance, templateName, owner, &CadDialogWindow::Procedure,
                                     reinterpret_cast<LPARAM>(&run));
    runBeingCreated = outerRun;
    if (!window || run.ended) {
        if (window)
            DestroyWindow(window);
        dialog.window_ = nullptr;
        if (run.failure)
            std::rethrow_exception(run.failure);
        return window ? run.result : kDialogNotShown;
    }

    auto& state = CadShim::Dialogs();
    CadShim::DialogRecord record;
    record.templateId = dialog.templateId_;
    record.title = WindowTitle(window);
    record.keepFocusAnswer = static_cast<long>(SendMessageW(window, WM_ACAD_KEEPFOCUS, 0, 0));
    const std::size_t index = state.records.size();
    state.records.push_back(record);
    if (!state.drivers.empty()) {
        run.driver = std::move(state.drivers.front());
        state.drivers.pop_front();
    }

    const bool ownerDisabled = owner && IsWindowEnabled(owner);
    if (ownerDisabled)
        EnableWindow(owner, FALSE);
    state.openWindows.push_back(window);
    ++state.dialogsShown;
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    if (run.driver)
        PostMessageW(window, DriveMessage(), 0, 0);

    Loop(run, window);

    --state.dialogsShown;
    state.openWindows.erase(std::find(state.openWindows.begin(), state.openWindows.end(), window));
    // The owner comes back before the dialog goes, so that the system activates it rather
    // than some other application's window.
    if (ownerDisabled)
        EnableWindow(owner, TRUE);
    if (owner && GetActiveWindow() == window)
        SetActiveWindow(owner);
    if (IsWindow(window))
        DestroyWindow(window);
    dialog.window_ = nullptr;
    state.records[index].result = run.result;
    if (run.failure)
        std::rethrow_exception(run.failure);
    return run.result;
}

CAdUiBaseDialog::CAdUiBaseDialog(unsigned templateId, void* resourceInstance)
    : templateId_(templateId), resourceInstance_(resourceInstance)
{
}

CAdUiBaseDialog::~CAdUiBaseDialog() = default;

int CAdUiBaseDialog::DoModal()
{
    if (window_ || !CadShim::StartDialogs())
        return kDialogNotShown;
    return CadDialogWindow::Run(*this);
}

void CAdUiBaseDialog::EndDialog(int result)
{
    if (!window_)
        return;
    if (auto* run = static_cast<ModalRun*>(GetPropW(window_, kRunProperty))) {
        run->End(result);
        // Wakes the modal loop should it be waiting for a message.
        PostMessageW(window_, WM_NULL, 0, 0);
    }
}

long CAdUiBaseDialog::OnAcadKeepFocus() { return 0; }

bool CAdUiBaseDialog::PreTranslateMessage(tagMSG*) { return false; }

bool CAdUiBaseDialog::OnInitDialog() { return true; }

void CAdUiBaseDialog::OnCancel() { EndDialog(IDCANCEL); }

void CAdUiBaseDialog::OnOK() { EndDialog(IDOK); }

bool CAdUiBaseDialog::OnMessage(unsigned, std::uintptr_t, std::intptr_t, std::intptr_t&) { return false; }

void CAdUiBaseDialog::SetWindowText(const WChar* title)
{
    if (window_)
        SetWindowTextW(window_, title ? title : L"");
}
