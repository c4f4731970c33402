#include "tests/refhost/windows/DialogTesting.h"

#include <memory>

namespace shimtest {
namespace {

LRESULT CALLBACK RunWorkProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_APP) {
        std::unique_ptr<std::function<void()>> work(reinterpret_cast<std::function<void()>*>(lParam));
        (*work)();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND WorkWindow()
{
    static HWND window = [] {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = RunWorkProcedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"ShimTestWork";
        RegisterClassW(&windowClass);
        return CreateWindowExW(0, L"ShimTestWork", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                               GetModuleHandleW(nullptr), nullptr);
    }();
    return window;
}

} // namespace

void RunInsideNextModalLoop(std::function<void()> work)
{
    auto* posted = new std::function<void()>(std::move(work));
    if (!PostMessageW(WorkWindow(), WM_APP, 0, reinterpret_cast<LPARAM>(posted)))
        delete posted;
}

std::vector<HWND> OwnedWindows(HWND owner)
{
    std::pair<HWND, std::vector<HWND>> search{owner, {}};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM context) -> BOOL {
            auto& [wanted, found] = *reinterpret_cast<std::pair<HWND, std::vector<HWND>>*>(context);
            if (IsWindowVisible(window) && GetWindow(window, GW_OWNER) == wanted)
                found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.second;
}

} // namespace shimtest
