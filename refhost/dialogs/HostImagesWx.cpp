// The host's icons and images for the module's dialogs, drawn from the toolkit's stock art:
// each is made once, at the size asked for, and kept for the life of the process. Before
// the toolkit has started, and for an unknown name, there is no image (null).

#include "host/GisUtility.h"

#include <wx/app.h>
#include <wx/artprov.h>
#include <wx/bitmap.h>

#include <map>
#include <memory>
#include <string_view>
#include <tuple>

namespace VeltoGis {
namespace {

struct StockImage {
    std::basic_string_view<WChar> name;
    const char* art;
};

const StockImage kStockImages[] = {{WTEXT("IDI_OPEN"), wxART_FILE_OPEN}, {WTEXT("IDI_DELETE"), wxART_DELETE}};

// A host image handle is the address of a wxBitmap owned here.
HostIcon FindImage(const WChar* name, int cx, int cy)
{
    if (!name || !wxTheApp)
        return nullptr;
    static std::map<std::tuple<const char*, int, int>, std::unique_ptr<wxBitmap>> made;
    for (const StockImage& image : kStockImages) {
        if (image.name != name)
            continue;
        auto& bitmap = made[{image.art, cx, cy}];
        if (!bitmap) {
            const wxSize size = cx > 0 && cy > 0 ? wxSize(cx, cy) : wxDefaultSize;
            bitmap = std::make_unique<wxBitmap>(wxArtProvider::GetBitmap(image.art, wxART_BUTTON, size));
        }
        return bitmap->IsOk() ? bitmap.get() : nullptr;
    }
    return nullptr;
}

} // namespace

HostIcon CModuleConfiguration::GetIcon(const WChar* name) const { return FindImage(name, 16, 16); }

HostIcon CModuleConfiguration::LoadImageW(const WChar* name, unsigned int /*type*/, int cx, int cy,
                                          unsigned int /*flags*/) const
{
    return FindImage(name, cx, cy);
}

} // namespace VeltoGis
