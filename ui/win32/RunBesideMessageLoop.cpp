#include "ui/win32/RunBesideMessageLoop.h"

#include "ui/win32/Win32.h"

#include <exception>
#include <thread>
#include <vector>

namespace {

// Shorter work ends before anyone could see the window freeze, and without flicker.
constexpr DWORD kUnnoticed = 150;    // milliseconds
constexpr DWORD kPollInterval = 30;  // milliseconds

bool IsInput(UINT message)
{
    return (message >= WM_KEYFIRST && message <= WM_KEYLAST) || (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
}

// The thread's enabled top-level windows, disabled for as long as this lives.
class ThreadWindowsDisabled {
public:
    ThreadWindowsDisabled()
    {
        ::EnumThreadWindows(::GetCurrentThreadId(), &ThreadWindowsDisabled::Collect, reinterpret_cast<LPARAM>(this));
        for (HWND window : disabled_)
            ::EnableWindow(window, FALSE);
    }
    ~ThreadWindowsDisabled()
    {
        for (HWND window : disabled_) {
            if (::IsWindow(window))
                ::EnableWindow(window, TRUE);
        }
    }
    ThreadWindowsDisabled(const ThreadWindowsDisabled&) = delete;
    ThreadWindowsDisabled& operator=(const ThreadWindowsDisabled&) = delete;

private:
    static BOOL CALLBACK Collect(HWND window, LPARAM self)
    {
        if (::IsWindowVisible(window) && ::IsWindowEnabled(window))
            reinterpret_cast<ThreadWindowsDisabled*>(self)->disabled_.push_back(window);
        return TRUE;
    }
    std::vector<HWND> disabled_;
};

// Painting, sizing and what other threads send go on; input is dropped. WM_QUIT is put back
// for the loop it belongs to.
void LetTheWindowsPaint()
{
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (IsInput(message.message))
            continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

} // namespace

void RunBesideMessageLoop(const std::function<void()>& work, const std::function<void()>& poll)
{
    HANDLE ended = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (!ended) {
        work();
        poll();
        return;
    }
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        ::SetEvent(ended);
    });
    if (::WaitForSingleObject(ended, kUnnoticed) != WAIT_OBJECT_0) {
        ThreadWindowsDisabled noInput;
        HCURSOR previous = ::SetCursor(::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
        while (::MsgWaitForMultipleObjects(1, &ended, FALSE, kPollInterval, QS_ALLINPUT) != WAIT_OBJECT_0) {
            poll();
            LetTheWindowsPaint();
            ::SetCursor(::LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
        }
        ::SetCursor(previous);
    }
    worker.join();
    ::CloseHandle(ended);
    poll();
    if (failure)
        std::rethrow_exception(failure);
}
