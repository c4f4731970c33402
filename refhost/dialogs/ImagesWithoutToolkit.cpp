// The GIS framework's images and icon button in a build without a toolkit: no dialog is
// ever shown, so there is nothing to draw.

#include "host/CadDialogs.h"
#include "host/GisUtility.h"

namespace VeltoGis {

HostIcon CModuleConfiguration::GetIcon(const WChar*) const { return nullptr; }
HostIcon CModuleConfiguration::LoadImageW(const WChar*, unsigned int, int, int, unsigned int) const { return nullptr; }

namespace Utility {
CVeltoBitmapButton::CVeltoBitmapButton(void* moduleInstance) : moduleInstance_(moduleInstance) {}
CVeltoBitmapButton::~CVeltoBitmapButton() = default;
DialogWindow CVeltoBitmapButton::Create(DialogWindow, int) { return nullptr; }
void CVeltoBitmapButton::SetButtonIcon(const WChar*, unsigned int, int, int, unsigned int) {}
} // namespace Utility

} // namespace VeltoGis
