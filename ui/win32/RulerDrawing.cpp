#include "ui/win32/RulerDrawing.h"

#include <algorithm>
#include <cwchar>

namespace {

// Draws along/across the ruler whichever way it runs.
struct RulerAxes {
    bool vertical;
    POINT At(int along, int across) const { return vertical ? POINT{across, along} : POINT{along, across}; }
    int Along(SIZE size) const { return vertical ? size.cy : size.cx; }
    int Across(SIZE size) const { return vertical ? size.cx : size.cy; }
};

int TickLength(RulerTick tick, int across)
{
    switch (tick) {
    case RulerTick::Long: return across / 2;
    case RulerTick::Medium: return across / 3;
    default: return across / 5;
    }
}

// A GDI object selected into a device context for a scope, then deleted.
class Selected {
public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), object_(object), previous_(::SelectObject(dc, object)) {}
    ~Selected()
    {
        ::SelectObject(dc_, previous_);
        ::DeleteObject(object_);
    }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

private:
    HDC dc_;
    HGDIOBJ object_;
    HGDIOBJ previous_;
};

void Line(HDC dc, POINT from, POINT to)
{
    ::MoveToEx(dc, from.x, from.y, nullptr);
    ::LineTo(dc, to.x, to.y);
}

void DrawLabel(HDC dc, const RulerModel& model, const RulerAxes& axes, SIZE client, int position, int along)
{
    wchar_t label[16];
    const int length = std::swprintf(label, 16, L"%ld", static_cast<long>(position));
    SIZE extent{};
    ::GetTextExtentPoint32W(dc, label, length, &extent);
    const bool ticksNear = (model.Style() & RulerTicksNear) != 0;
    const int labelAcross = ticksNear ? axes.Across(client) - extent.cy - 1 : 1;
    // Centred on its tick, but never cut by the ends of the ruler.
    const int labelExtent = model.IsVertical() ? extent.cy : extent.cx;
    const int labelAlong = std::clamp(along - labelExtent / 2, 0, std::max(axes.Along(client) - labelExtent, 0));
    const POINT at = axes.At(labelAlong, labelAcross);
    ::TextOutW(dc, at.x, at.y, label, length);
}

void DrawScale(HDC dc, const RulerModel& model, SIZE client, int dpi)
{
    const RulerAxes axes{model.IsVertical()};
    const int across = axes.Across(client);
    const bool ticksNear = (model.Style() & RulerTicksNear) != 0;
    Selected pen(dc, ::CreatePen(PS_SOLID, 1, model.TickColour()));
    Selected font(dc, ::CreateFontW(-::MulDiv(7, dpi, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                                    OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Arial"));
    ::SetTextColor(dc, model.ThirdColour());
    ::SetBkMode(dc, TRANSPARENT);
    for (int i = 0; i <= model.LargestPosition(); ++i) {
        const int along = model.PixelOf(i);
        if (along < 0 || along >= axes.Along(client))
            continue;
        const RulerTick tick = RulerModel::TickOf(i);
        const int length = TickLength(tick, across);
        const int from = ticksNear ? 0 : across - length;
        Line(dc, axes.At(along, from), axes.At(along, from + length));
        if (tick == RulerTick::Long)
            DrawLabel(dc, model, axes, client, i, along);
    }
}

void DrawBreaks(HDC dc, const RulerModel& model, SIZE client)
{
    const RulerAxes axes{model.IsVertical()};
    const int across = axes.Across(client);
    const int half = model.MarkerHalfWidth();
    for (int slot = 0; slot < model.BreakCount(); ++slot) {
        const RulerBreak& record = model.BreakInSlot(slot);
        const int along = model.PixelOf(record.position);
        if (!model.MarkerVisible(along, axes.Along(client)))
            continue;
        // A marker the half-width to each side, outlined in the tick colour so that a pale
        // break colour still stands out.
        const POINT marker[] = {axes.At(along - half, 0), axes.At(along + half, 0), axes.At(along, half + 2)};
        {
            Selected brush(dc, ::CreateSolidBrush(record.colour));
            Selected outline(dc, ::CreatePen(PS_SOLID, 1, model.TickColour()));
            ::Polygon(dc, marker, 3);
        }
        {
            Selected wide(dc, ::CreatePen(PS_SOLID, 3, record.colour));
            Line(dc, axes.At(along, half + 2), axes.At(along, across));
        }
        Selected thin(dc, ::CreatePen(PS_SOLID, 1, model.TickColour()));
        Line(dc, axes.At(along, half + 2), axes.At(along, across));
    }
}

void DrawCursor(HDC dc, const RulerModel& model, SIZE client)
{
    if (model.Cursor() < 0)
        return;
    const RulerAxes axes{model.IsVertical()};
    const int along = model.PixelOf(model.Cursor());
    Selected dashed(dc, ::CreatePen(PS_DOT, 1, model.ThirdColour()));
    ::SetBkMode(dc, TRANSPARENT);
    Line(dc, axes.At(along, 0), axes.At(along, axes.Across(client)));
    HGDIOBJ previousBrush = ::SelectObject(dc, ::GetStockObject(NULL_BRUSH));
    ::Rectangle(dc, 0, 0, client.cx, client.cy);
    ::SelectObject(dc, previousBrush);
}

} // namespace

void DrawRuler(HDC dc, const RulerModel& model, SIZE client, int dpi, bool focused)
{
    const RECT all{0, 0, client.cx, client.cy};
    HBRUSH background = ::CreateSolidBrush(model.BackgroundColour());
    ::FillRect(dc, &all, background);
    ::DeleteObject(background);
    DrawScale(dc, model, client, dpi);
    DrawBreaks(dc, model, client);
    if (focused)
        DrawCursor(dc, model, client);
}
