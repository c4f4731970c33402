// The GIS framework's icon button on Windows, on the test program's dialog template.

#include "host/GisUtility.h"
#include "tests/refhost/windows/DialogTesting.h"

using shimtest::DialogsOnWindows;
using shimtest::TestDialog;
using VeltoGis::CModuleConfiguration;

TEST_F(DialogsOnWindows, IconButtonIsTheTemplatesButtonShowingTheHostsIcon)
{
    struct {
        const WChar* name;
        bool shown;
    } cases[] = {{WTEXT("IDI_OPEN"), true}, {WTEXT("IDI_NO_SUCH_ICON"), false}};
    for (const auto& icon : cases) {
        SCOPED_TRACE(icon.shown ? "known icon" : "unknown icon");
        TestDialog dialog;
        VeltoGis::Utility::CVeltoBitmapButton button(nullptr);
        HWND created = nullptr;
        dialog.onInit = [&](TestDialog& self) {
            created = button.Create(self.Handle(), SHIM_TEST_ICON_BUTTON);
            button.SetButtonIcon(icon.name, IMAGE_ICON, 16, 16, 0);
            return true;
        };
        HANDLE shown = nullptr;
        HWND templateButton = nullptr;
        CadShim::DriveNextDialog([&](HWND window) {
            templateButton = GetDlgItem(window, SHIM_TEST_ICON_BUTTON);
            shown = reinterpret_cast<HANDLE>(SendMessageW(templateButton, BM_GETIMAGE, IMAGE_ICON, 0));
            dialog.EndDialog(IDOK);
        });
        EXPECT_EQ(dialog.DoModal(), IDOK);
        EXPECT_EQ(created, templateButton);
        if (icon.shown)
            EXPECT_EQ(shown, CModuleConfiguration::Instance()->LoadImageW(icon.name, IMAGE_ICON, 16, 16, 0));
        else
            EXPECT_EQ(shown, nullptr);
    }
}
