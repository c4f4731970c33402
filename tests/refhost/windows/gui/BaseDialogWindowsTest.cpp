// The CAD shim's dialog base on Windows, in real windows made from the test program's template.

#include "host/CadPlatform.h"
#include "tests/refhost/windows/DialogTesting.h"

#include <commctrl.h>

#include <stdexcept>
#include <string>

using shimtest::DialogsOnWindows;
using shimtest::KeepFocusDialog;
using shimtest::TestDialog;

namespace {

void PostKey(HWND dialog, WPARAM key)
{
    HWND target = GetFocus();
    if (!target || (target != dialog && !IsChild(dialog, target)))
        target = GetDlgItem(dialog, SHIM_TEST_EDIT);
    PostMessageW(target, WM_KEYDOWN, key, 1);
    PostMessageW(target, WM_KEYUP, key, 0xC0000001);
}

struct EndingCase {
    const char* how;
    std::function<void(TestDialog&, HWND)> end;
    int result;
};

} // namespace

TEST_F(DialogsOnWindows, ModalRunEndsWithTheResultOfHowItWasClosed)
{
    const EndingCase cases[] = {
        {"EndDialog", [](TestDialog& dialog, HWND) { dialog.EndDialog(7); }, 7},
        {"OK button", [](TestDialog&, HWND window) { SendMessageW(GetDlgItem(window, IDOK), BM_CLICK, 0, 0); }, IDOK},
        {"Enter", [](TestDialog&, HWND window) { PostKey(window, VK_RETURN); }, IDOK},
        {"Esc", [](TestDialog&, HWND window) { PostKey(window, VK_ESCAPE); }, IDCANCEL},
        {"Cancel button",
         [](TestDialog&, HWND window) { SendMessageW(GetDlgItem(window, IDCANCEL), BM_CLICK, 0, 0); }, IDCANCEL},
        {"close box", [](TestDialog&, HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); }, IDCANCEL},
    };
    for (const EndingCase& ending : cases) {
        SCOPED_TRACE(ending.how);
        CadShim::ClearRecordedDialogs();
        TestDialog dialog;
        HWND seen = nullptr;
        CadShim::DriveNextDialog([&](HWND window) {
            seen = window;
            EXPECT_EQ(dialog.Handle(), window);
            EXPECT_TRUE(IsWindowVisible(window));
            ending.end(dialog, window);
        });
        EXPECT_EQ(dialog.DoModal(), ending.result);
        EXPECT_EQ(dialog.initCalls, 1);
        EXPECT_EQ(dialog.Handle(), nullptr);
        EXPECT_FALSE(IsWindow(seen)) << "the window is destroyed once the run ends";
        ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
        EXPECT_EQ(CadShim::RecordedDialogs()[0].templateId, unsigned(SHIM_TEST_DIALOG));
        EXPECT_EQ(CadShim::RecordedDialogs()[0].title, WTEXT("Shim test dialog"));
        EXPECT_EQ(CadShim::RecordedDialogs()[0].result, ending.result);
    }
}

TEST_F(DialogsOnWindows, RecordedKeepFocusAnswerIsWhatTheWindowAnswers)
{
    TestDialog base;
    KeepFocusDialog keeping;
    struct {
        TestDialog& dialog;
        long answer;
    } cases[] = {{base, 0}, {keeping, 1}};
    for (auto& [dialog, answer] : cases) {
        SCOPED_TRACE(answer);
        CadShim::ClearRecordedDialogs();
        LRESULT sent = -1;
        CadShim::DriveNextDialog([&, &dialog = dialog](HWND window) {
            sent = SendMessageW(window, WM_ACAD_KEEPFOCUS, 0, 0);
            dialog.EndDialog(IDOK);
        });
        EXPECT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(sent, answer);
        ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
        EXPECT_EQ(CadShim::RecordedDialogs()[0].keepFocusAnswer, answer);
    }
}

TEST_F(DialogsOnWindows, TitleSetWhileOpenIsRecordedAndShown)
{
    TestDialog dialog;
    dialog.onInit = [](TestDialog& self) {
        self.SetWindowText(WTEXT("Zażółć gęślą jaźń"));
        return true;
    };
    std::wstring shown(64, L'\0');
    CadShim::DriveNextDialog([&](HWND window) {
        shown.resize(GetWindowTextW(window, shown.data(), int(shown.size())));
        dialog.EndDialog(IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(shown, L"Zażółć gęślą jaźń");
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 1u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].title, WTEXT("Zażółć gęślą jaźń"));
}

TEST_F(DialogsOnWindows, InitialisationThatFailsEndsWithCancelBeforeShowing)
{
    TestDialog dialog;
    bool wasVisible = true;
    dialog.onInit = [&](TestDialog& self) {
        wasVisible = IsWindowVisible(self.Handle());
        return false;
    };
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_FALSE(wasVisible);
    EXPECT_TRUE(CadShim::RecordedDialogs().empty());
}

TEST_F(DialogsOnWindows, OwnerIsDisabledWhileTheDialogIsOpen)
{
    HWND owner = CreateWindowExW(0, L"STATIC", L"Shim test owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300,
                                 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(owner, nullptr);
    SetActiveWindow(owner);
    TestDialog dialog;
    bool ownerEnabledWhileOpen = true;
    HWND ownerOfDialog = nullptr;
    CadShim::DriveNextDialog([&](HWND window) {
        ownerEnabledWhileOpen = IsWindowEnabled(owner);
        ownerOfDialog = GetWindow(window, GW_OWNER);
        dialog.EndDialog(IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(ownerOfDialog, owner);
    EXPECT_FALSE(ownerEnabledWhileOpen);
    EXPECT_TRUE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

TEST_F(DialogsOnWindows, NestedDialogOwnsTheOuterOneWhileOpen)
{
    TestDialog outer;
    TestDialog inner;
    HWND outerWindow = nullptr;
    bool outerEnabledUnderInner = true;
    HWND innerOwner = nullptr;
    int innerResult = 0;
    bool outerEnabledAfterInner = false;
    CadShim::DriveNextDialog([&](HWND window) {
        outerWindow = window;
        innerResult = inner.DoModal();
        outerEnabledAfterInner = IsWindowEnabled(window);
        outer.EndDialog(IDOK);
    });
    CadShim::DriveNextDialog([&](HWND window) {
        outerEnabledUnderInner = IsWindowEnabled(outerWindow);
        innerOwner = GetWindow(window, GW_OWNER);
        inner.EndDialog(5);
    });
    EXPECT_EQ(outer.DoModal(), IDOK);
    EXPECT_EQ(innerResult, 5);
    EXPECT_EQ(innerOwner, outerWindow);
    EXPECT_FALSE(outerEnabledUnderInner);
    EXPECT_TRUE(outerEnabledAfterInner);
    ASSERT_EQ(CadShim::RecordedDialogs().size(), 2u);
    EXPECT_EQ(CadShim::RecordedDialogs()[0].result, IDOK);
    EXPECT_EQ(CadShim::RecordedDialogs()[1].result, 5);
}

TEST_F(DialogsOnWindows, AlertOverAnOpenDialogIsAMessageBoxItOwns)
{
    CadShim::ShowAlertsInMessageBoxes(true);
    TestDialog dialog;
    std::vector<HWND> boxes;
    bool dialogEnabledUnderBox = true;
    wchar_t className[16] = {};
    CadShim::DriveNextDialog([&](HWND window) {
        shimtest::RunInsideNextModalLoop([&, window] {
            boxes = shimtest::OwnedWindows(window);
            dialogEnabledUnderBox = IsWindowEnabled(window);
            for (HWND box : boxes) {
                GetClassNameW(box, className, 16);
                PostMessageW(box, WM_COMMAND, IDOK, 0);
            }
        });
        acedAlert(WTEXT("Cannot read the file."));
        dialog.EndDialog(IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    CadShim::ShowAlertsInMessageBoxes(false);
    ASSERT_EQ(boxes.size(), 1u) << "one message box over the dialog";
    EXPECT_FALSE(dialogEnabledUnderBox);
    EXPECT_STREQ(className, L"#32770");
}

TEST_F(DialogsOnWindows, PreTranslateMessageSeesTheControlsKeysBeforeTheDialogNavigation)
{
    TestDialog dialog;
    dialog.onPreTranslate = [](MSG& message) { return message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE; };
    HWND edit = nullptr;
    CadShim::DriveNextDialog([&](HWND window) {
        edit = GetDlgItem(window, SHIM_TEST_EDIT);
        SetFocus(edit);
        PostKey(window, VK_ESCAPE); // swallowed: does not cancel
        PostKey(window, VK_RETURN);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    const auto keyDownOnEdit = [&](WPARAM key) {
        for (const MSG& message : dialog.preTranslated)
            if (message.message == WM_KEYDOWN && message.wParam == key && message.hwnd == edit)
                return true;
        return false;
    };
    EXPECT_TRUE(keyDownOnEdit(VK_ESCAPE));
    EXPECT_TRUE(keyDownOnEdit(VK_RETURN));
}

TEST_F(DialogsOnWindows, ExceptionFromAHandlerLeavesDoModalOnceTheWindowIsGone)
{
    HWND owner = CreateWindowExW(0, L"STATIC", L"Shim test owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 300,
                                 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetActiveWindow(owner);
    TestDialog dialog;
    HWND seen = nullptr;
    CadShim::DriveNextDialog([&](HWND window) {
        seen = window;
        throw std::runtime_error("view failed");
    });
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_FALSE(IsWindow(seen));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(dialog.Handle(), nullptr);
    DestroyWindow(owner);
}

TEST_F(DialogsOnWindows, TemplateComesFromTheGivenModule)
{
    struct {
        const char* module;
        void* instance;
        bool shown;
    } cases[] = {
        {"the application (null)", nullptr, true},
        {"the test program", GetModuleHandleW(nullptr), true},
        {"the CAD shim, which has no such template", GetModuleHandleW(L"VeltoXCadShim.dll"), false},
    };
    for (const auto& module : cases) {
        SCOPED_TRACE(module.module);
        CadShim::ClearRecordedDialogs();
        TestDialog dialog(module.instance);
        if (module.shown)
            CadShim::DriveNextDialog([&](HWND) { dialog.EndDialog(IDCANCEL); });
        EXPECT_EQ(dialog.DoModal(), module.shown ? IDCANCEL : kDialogNotShown);
        EXPECT_EQ(dialog.initCalls, module.shown ? 1 : 0);
        EXPECT_EQ(CadShim::RecordedDialogs().size(), module.shown ? 1u : 0u);
    }
}

TEST_F(DialogsOnWindows, ControlsAreTheVersionTheModulesManifestNames)
{
    // Version 6 buttons know their ideal size; the program's own (no manifest of its own) do not.
    TestDialog dialog;
    BOOL idealSizeKnown = FALSE;
    CadShim::DriveNextDialog([&](HWND window) {
        SIZE size{};
        idealSizeKnown = BOOL(SendMessageW(GetDlgItem(window, IDOK), BCM_GETIDEALSIZE, 0, LPARAM(&size)));
        dialog.EndDialog(IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_TRUE(idealSizeKnown);

    HWND ownButton = CreateWindowExW(0, L"BUTTON", L"OK", WS_POPUP | BS_PUSHBUTTON, 0, 0, 50, 20, nullptr, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
    SIZE size{};
    EXPECT_FALSE(SendMessageW(ownButton, BCM_GETIDEALSIZE, 0, LPARAM(&size)));
    DestroyWindow(ownButton);
}
