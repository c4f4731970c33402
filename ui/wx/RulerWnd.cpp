#include "ui/wx/RulerWnd.h"

#include <wx/dcbuffer.h>
#include <wx/font.h>
#include <wx/pen.h>

#include <algorithm>

wxDEFINE_EVENT(EVT_RULER_NOTIFY, RulerNotifyEvent);

namespace {

wxColour ToColour(RulerColour colour)
{
    return wxColour(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

// Draws along/across the ruler whichever way it runs.
struct RulerAxes {
    bool vertical;
    wxPoint At(int along, int across) const { return vertical ? wxPoint(across, along) : wxPoint(along, across); }
    int Along(const wxSize& size) const { return vertical ? size.y : size.x; }
    int Across(const wxSize& size) const { return vertical ? size.x : size.y; }
};

int TickLength(RulerTick tick, int across)
{
    switch (tick) {
    case RulerTick::Long: return across / 2;
    case RulerTick::Medium: return across / 3;
    default: return across / 5;
    }
}

} // namespace

CRulerWnd::CRulerWnd(wxWindow* parent, int id, RulerModel& model, const wxSize& size)
    : wxWindow(parent, id, wxDefaultPosition, size, wxWANTS_CHARS | wxBORDER_SIMPLE), model_(model)
{
    // Everything is painted through the buffer: no separate erase, no flicker.
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Bind(wxEVT_PAINT, &CRulerWnd::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, &CRulerWnd::OnLeftDown, this);
    // A quick second click is a click of its own (the toolkit reports it as a double click).
    Bind(wxEVT_LEFT_DCLICK, &CRulerWnd::OnLeftDown, this);
    Bind(wxEVT_KEY_DOWN, &CRulerWnd::OnKeyDown, this);
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) { Refresh(); event.Skip(); });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) { Refresh(); event.Skip(); });
}

int CRulerWnd::SetNotifyTarget(wxWindow* target)
{
    target_ = target;
    return 1;
}

void CRulerWnd::Notify(int argument, const std::array<int, 5>& values)
{
    wxWindow* target = target_ ? target_.get() : GetParent();
    if (!target)
        return;
    RulerNotifyEvent event(GetId(), argument, model_.Style(), values);
    event.SetEventObject(this);
    target->GetEventHandler()->ProcessEvent(event);
}

void CRulerWnd::OnLeftDown(wxMouseEvent& event)
{
    SetFocus();
    Notify(model_.PositionAt(event.GetX(), event.GetY()),
           {event.GetX(), event.GetY(), model_.BreakCount(), model_.Cursor(), 0});
}

void CRulerWnd::OnKeyDown(wxKeyEvent& event)
{
    int delta = 0;
    switch (event.GetKeyCode()) {
    case WXK_LEFT: case WXK_UP: delta = -1; break;
    case WXK_RIGHT: case WXK_DOWN: delta = 1; break;
    case WXK_PAGEUP: delta = -10; break;
    case WXK_PAGEDOWN: delta = 10; break;
    case WXK_HOME: delta = -model_.LargestPosition(); break;
    case WXK_END: delta = model_.LargestPosition(); break;
    default: event.Skip(); return;
    }
    // Not skipped: the arrow keys would otherwise move the focus on.
    model_.MoveCursor(event.ShiftDown() ? delta * 10 : delta);
    Refresh();
}

void CRulerWnd::OnPaint(wxPaintEvent&)
{
    wxAutoBufferedPaintDC dc(this);
    const wxSize client = GetClientSize();
    dc.SetBackground(wxBrush(ToColour(model_.BackgroundColour())));
    dc.Clear();
    DrawScale(dc, client);
    DrawBreaks(dc, client);
    DrawCursor(dc, client);
}

void CRulerWnd::DrawScale(wxDC& dc, const wxSize& client)
{
    const RulerAxes axes{model_.IsVertical()};
    const int across = axes.Across(client);
    const bool ticksNear = (model_.Style() & RulerTicksNear) != 0;
    dc.SetPen(wxPen(ToColour(model_.TickColour()), 1));
    dc.SetFont(wxFontInfo(7).FaceName("Arial"));
    dc.SetTextForeground(ToColour(model_.ThirdColour()));
    for (int i = 0; i <= model_.LargestPosition(); ++i) {
        const int along = model_.PixelOf(i);
        if (along < 0 || along >= axes.Along(client))
            continue;
        const RulerTick tick = RulerModel::TickOf(i);
        const int length = TickLength(tick, across);
        const int from = ticksNear ? 0 : across - length;
        dc.DrawLine(axes.At(along, from), axes.At(along, from + length));
        if (tick == RulerTick::Long) {
            const wxString label = wxString::Format("%ld", static_cast<long>(i));
            const wxSize extent = dc.GetTextExtent(label);
            const int labelAcross = ticksNear ? across - extent.y - 1 : 1;
            // Centred on its tick, but never cut by the ends of the ruler.
            const int labelExtent = model_.IsVertical() ? extent.y : extent.x;
            const int labelAlong = std::clamp(along - labelExtent / 2, 0, std::max(axes.Along(client) - labelExtent, 0));
            dc.DrawText(label, axes.At(labelAlong, labelAcross));
        }
    }
}

void CRulerWnd::DrawBreaks(wxDC& dc, const wxSize& client)
{
    const RulerAxes axes{model_.IsVertical()};
    const int across = axes.Across(client);
    const int half = model_.MarkerHalfWidth();
    for (int slot = 0; slot < model_.BreakCount(); ++slot) {
        const RulerBreak& record = model_.BreakInSlot(slot);
        const int along = model_.PixelOf(record.position);
        if (!model_.MarkerVisible(along, axes.Along(client)))
            continue;
        // A marker the width of the half-width on each side, outlined in the tick colour so
        // that a pale break colour still stands out.
        const wxPoint marker[] = {axes.At(along - half, 0), axes.At(along + half, 0), axes.At(along, half + 2)};
        dc.SetBrush(wxBrush(ToColour(record.colour)));
        dc.SetPen(wxPen(ToColour(model_.TickColour()), 1));
        dc.DrawPolygon(3, marker);
        dc.SetPen(wxPen(ToColour(record.colour), 3));
        dc.DrawLine(axes.At(along, half + 2), axes.At(along, across));
        dc.SetPen(wxPen(ToColour(model_.TickColour()), 1));
        dc.DrawLine(axes.At(along, half + 2), axes.At(along, across));
    }
}

void CRulerWnd::DrawCursor(wxDC& dc, const wxSize& client)
{
    if (model_.Cursor() < 0 || !HasFocus())
        return;
    const RulerAxes axes{model_.IsVertical()};
    const int along = model_.PixelOf(model_.Cursor());
    dc.SetPen(wxPen(ToColour(model_.ThirdColour()), 1, wxPENSTYLE_SHORT_DASH));
    dc.DrawLine(axes.At(along, 0), axes.At(along, axes.Across(client)));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(wxPoint(0, 0), client);
}
