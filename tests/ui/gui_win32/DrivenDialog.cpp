#include "DrivenDialog.h"

#include "PngScreenshot.h"
#include "refhost/CadShimDialogs.h"
#include "ui/win32/ControlText.h"
#include "ui/win32/Win32.h"
#include "ui/win32/WindowDpi.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace {

// How long the dialog's thread may take over one step before the test gives up on it.
constexpr auto kStepLimit = std::chrono::seconds(10);

std::atomic<DWORD> dialogThread{0};
std::atomic<unsigned long> lastPosted{0};
std::atomic<unsigned long> lastSettled{0};

// Work handed to the dialog's thread. The driver may give up waiting (the dialog's thread
// stopped taking messages); the work then never runs, as what it refers to may be gone.
struct Job {
    enum State { Pending, Running, Done, Abandoned };
    std::function<void()> work;
    std::atomic<int> state{Pending};
};

UINT SettledMessage()
{
    static const UINT message = RegisterWindowMessageW(L"VeltoXTesselTests.Settled");
    return message;
}

UINT JobMessage()
{
    static const UINT message = RegisterWindowMessageW(L"VeltoXTesselTests.Job");
    return message;
}

// Sees every message the dialog's thread takes from its queue, whichever loop takes it (the
// dialog's modal run, a message box's, a file chooser's), in the order they were posted.
LRESULT CALLBACK TakenMessages(int code, WPARAM removal, LPARAM lParam)
{
    auto* message = reinterpret_cast<MSG*>(lParam);
    if (code == HC_ACTION && removal == PM_REMOVE && message->hwnd == nullptr) {
        if (message->message == SettledMessage()) {
            lastSettled = static_cast<unsigned long>(message->wParam);
            message->message = WM_NULL;
        } else if (message->message == JobMessage()) {
            std::unique_ptr<std::shared_ptr<Job>> held(reinterpret_cast<std::shared_ptr<Job>*>(message->lParam));
            Job& job = **held;
            int pending = Job::Pending;
            if (job.state.compare_exchange_strong(pending, Job::Running)) {
                job.work();
                job.state = Job::Done;
            }
            message->message = WM_NULL;
        }
    }
    return CallNextHookEx(nullptr, code, removal, lParam);
}

template <typename Condition> bool WaitFor(Condition condition)
{
    const auto limit = std::chrono::steady_clock::now() + kStepLimit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

void PostKey(HWND target, UINT down, UINT up, WPARAM key, LPARAM flags)
{
    const LPARAM scan = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16;
    PostMessageW(target, down, key, 1 | scan | flags);
    PostMessageW(target, up, key, 1 | scan | flags | (LPARAM(1) << 30) | (LPARAM(1) << 31));
}

BOOL CALLBACK CancelWindow(HWND window, LPARAM)
{
    wchar_t className[16] = {};
    GetClassNameW(window, className, 16);
    if (IsWindowVisible(window) && std::wstring(className) == L"#32770")
        PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
    return TRUE;
}

struct WindowAboveSearch {
    HWND dialog;
    HWND found;
};

BOOL CALLBACK FindWindowAbove(HWND window, LPARAM lParam)
{
    auto* search = reinterpret_cast<WindowAboveSearch*>(lParam);
    if (window != search->dialog && IsWindowVisible(window) && GetWindow(window, GW_OWNER) == search->dialog) {
        search->found = window;
        return FALSE;
    }
    return TRUE;
}

} // namespace

void SetDialogThread()
{
    dialogThread = GetCurrentThreadId();
    SetWindowsHookExW(WH_GETMESSAGE, &TakenMessages, nullptr, dialogThread);
}

void CancelEveryOpenDialog() { EnumThreadWindows(dialogThread, &CancelWindow, 0); }

bool DrivenDialog::IsOpen() const { return IsWindow(window_) && IsWindowVisible(window_); }

DialogWindow DrivenDialog::Control(int id) const
{
    HWND control = GetDlgItem(window_, id);
    if (!control)
        ADD_FAILURE() << "the dialog has no control " << id;
    return control;
}

void DrivenDialog::InDialogThread(const std::function<void()>& work) const
{
    auto job = std::make_shared<Job>();
    job->work = work;
    if (!PostThreadMessageW(dialogThread, JobMessage(), 0,
                            reinterpret_cast<LPARAM>(new std::shared_ptr<Job>(job)))) {
        ADD_FAILURE() << "the dialog's thread takes no messages";
        return;
    }
    if (WaitFor([&] { return job->state == Job::Done || !IsWindow(window_); }) && job->state == Job::Done)
        return;
    int pending = Job::Pending;
    if (!job->state.compare_exchange_strong(pending, Job::Abandoned)) {
        WaitFor([&] { return job->state == Job::Done; }); // it runs now: let it finish
        return;
    }
    if (IsWindow(window_))
        ADD_FAILURE() << "the dialog's thread did not come back within " << kStepLimit.count() << " s";
}

bool DrivenDialog::Settle() const
{
    const unsigned long mark = ++lastPosted;
    PostThreadMessageW(dialogThread, SettledMessage(), mark, 0);
    const bool settled = WaitFor([&] { return lastSettled >= mark || !IsWindow(window_); });
    if (!settled)
        ADD_FAILURE() << "the dialog's thread did not take its messages within " << kStepLimit.count() << " s";
    if (IsWindow(window_)) // let it draw what the input changed
        InDialogThread([this] { RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
    return IsOpen();
}

void DrivenDialog::Click(int id) const
{
    HWND control = Control(id);
    if (!control)
        return;
    wchar_t className[16] = {};
    GetClassNameW(control, className, 16);
    if (lstrcmpiW(className, L"Button") == 0) {
        PostMessageW(control, BM_CLICK, 0, 0);
        Settle();
        return;
    }
    // Any other control (an edit that takes the focus) gets the mouse itself, in its middle.
    RECT client{};
    GetClientRect(control, &client);
    ClickAt(control, client.right / 2, client.bottom / 2);
}

void DrivenDialog::ClickAt(DialogWindow window, int x, int y) const
{
    const LPARAM point = MAKELPARAM(x, y);
    PostMessageW(window, WM_MOUSEMOVE, 0, point);
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(window, WM_LBUTTONUP, 0, point);
    Settle();
}

void DrivenDialog::Type(const WString& text) const
{
    HWND focused = Focused();
    for (const WChar unit : text)
        PostMessageW(focused ? focused : window_, WM_CHAR, static_cast<WPARAM>(unit), 1);
    Settle();
}

void DrivenDialog::TypeText(int id, const WString& text) const
{
    HWND control = Control(id);
    if (!control)
        return;
    // The keys go where the focus lands: a combined control (the system chooser's file name)
    // hands it to the edit inside.
    HWND target = control;
    InDialogThread([control, &target] {
        SetFocus(control);
        HWND focused = GetFocus();
        if (focused && IsChild(control, focused))
            target = focused;
        SendMessageW(target, EM_SETSEL, 0, -1);
    });
    if (text.empty())
        PostKey(target, WM_KEYDOWN, WM_KEYUP, VK_DELETE, 0);
    for (const WChar unit : text)
        PostMessageW(target, WM_CHAR, static_cast<WPARAM>(unit), 1);
    Settle();
}

DialogWindow DrivenDialog::Focused() const
{
    HWND focused = nullptr;
    InDialogThread([&focused] { focused = GetFocus(); });
    return focused;
}

void DrivenDialog::PressKey(unsigned virtualKey) const
{
    HWND focused = Focused();
    PostKey(focused ? focused : window_, WM_KEYDOWN, WM_KEYUP, virtualKey, 0);
    Settle();
}

void DrivenDialog::PressAltAnd(char letter) const
{
    HWND focused = Focused();
    constexpr LPARAM kAltDown = LPARAM(1) << 29;
    PostMessageW(focused ? focused : window_, WM_SYSCHAR, static_cast<WPARAM>(letter), 1 | kAltDown);
    Settle();
}

void DrivenDialog::ClickCloseBox() const
{
    PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0);
    Settle();
}

int DrivenDialog::FocusedId() const
{
    int id = 0;
    InDialogThread([this, &id] {
        HWND focused = GetFocus();
        if (focused && IsChild(window_, focused)) {
            // An edit of a combined control reports its parent's id.
            while (GetParent(focused) != window_)
                focused = GetParent(focused);
            id = GetDlgCtrlID(focused);
        }
    });
    return id;
}

WString DrivenDialog::Text(int id) const
{
    WString text;
    InDialogThread([&] { text = ControlText(window_, id); });
    return text;
}

bool DrivenDialog::IsChecked(int id) const
{
    bool checked = false;
    InDialogThread([&] { checked = IsButtonChecked(window_, id); });
    return checked;
}

bool DrivenDialog::IsEnabled(int id) const
{
    HWND control = Control(id);
    return control && IsWindowEnabled(control);
}

DialogWindow DrivenDialog::WaitForWindowAbove() const
{
    WindowAboveSearch search{window_, nullptr};
    WaitFor([&] {
        EnumThreadWindows(dialogThread, &FindWindowAbove, reinterpret_cast<LPARAM>(&search));
        return search.found != nullptr || !IsWindow(window_);
    });
    return search.found;
}

std::string DrivenDialog::Screenshot(const std::string& name) const
{
    std::string path;
    InDialogThread([&] {
        RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
        path = WritePngScreenshot(window_, name + "-" + std::to_string(WindowDpi(window_)) + "dpi");
    });
    if (path.empty())
        ADD_FAILURE() << "no screenshot of " << name;
    return path;
}

int RunDriven(const std::function<int()>& showDialog, const std::function<void(const DrivenDialog&)>& steps)
{
    std::thread driver;
    CadShim::DriveNextDialog([&](DialogWindow window) {
        driver = std::thread([window, &steps] {
            const DrivenDialog dialog(window);
            steps(dialog);
            if (dialog.Settle()) {
                ADD_FAILURE() << "the steps left the dialog open";
                PostMessageW(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            }
        });
    });
    const int result = showDialog();
    if (driver.joinable())
        driver.join();
    else
        ADD_FAILURE() << "no dialog was shown";
    return result;
}
