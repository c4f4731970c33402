// The GIS framework's icon button on Windows: the dialog template's push button, taken over,
// showing the host's icon (BM_SETIMAGE).

#include "host/CadDialogs.h" // before the Windows headers: their IDOK and IDCANCEL are macros
#include "host/GisUtility.h"

#include <windows.h>

namespace VeltoGis {
namespace Utility {

CVeltoBitmapButton::CVeltoBitmapButton(void* moduleInstance) : moduleInstance_(moduleInstance) {}

// The button belongs to its dialog window, the icon to the host.
CVeltoBitmapButton::~CVeltoBitmapButton() = default;

HWND CVeltoBitmapButton::Create(HWND parent, int controlId)
{
    button_ = parent ? GetDlgItem(parent, controlId) : nullptr;
    return button_;
}

void CVeltoBitmapButton::SetButtonIcon(const WChar* name, unsigned int type, int cx, int cy, unsigned int flags)
{
    auto* icon = static_cast<HICON>(CModuleConfiguration::Instance()->LoadImageW(name, type, cx, cy, flags));
    if (!button_ || !icon)
        return;
    // A button without a caption shows the icon alone (the older controls show an image only
    // then); one with a caption shows both.
    if (GetWindowTextLengthW(button_) == 0)
        SetWindowLongPtrW(button_, GWL_STYLE, GetWindowLongPtrW(button_, GWL_STYLE) | BS_ICON);
    SendMessageW(button_, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
}

} // namespace Utility
} // namespace VeltoGis
