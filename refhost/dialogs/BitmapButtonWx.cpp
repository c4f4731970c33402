// The GIS framework's icon button on wxWidgets: a plain button carrying the host's image.

#include "host/CadDialogs.h"
#include "host/GisUtility.h"

#include <wx/bitmap.h>
#include <wx/button.h>

namespace VeltoGis {
namespace Utility {

CVeltoBitmapButton::CVeltoBitmapButton(void* moduleInstance) : moduleInstance_(moduleInstance) {}

// The button itself belongs to its dialog window.
CVeltoBitmapButton::~CVeltoBitmapButton() = default;

wxWindow* CVeltoBitmapButton::Create(wxWindow* parent, int controlId)
{
    button_ = new wxButton(parent, controlId, wxString(), wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
    return button_;
}

void CVeltoBitmapButton::SetButtonIcon(const WChar* name, unsigned int type, int cx, int cy, unsigned int flags)
{
    auto* button = dynamic_cast<wxButton*>(button_);
    const auto* image = static_cast<const wxBitmap*>(CModuleConfiguration::Instance()->LoadImageW(name, type, cx, cy, flags));
    if (button && image)
        button->SetBitmap(*image);
}

} // namespace Utility
} // namespace VeltoGis
