#pragma once
// The character ruler as a window: draws a RulerModel double-buffered (background, ticks,
// a label every 10th position, the breaks in their colours, the keyboard cursor), moves the
// cursor with the arrow keys, and reports a click with the notification RulerNotifyEvent
// (code 4370) to its notification target, or to its parent when there is none. Where breaks
// go is its owner's decision.

#include "ui/RulerModel.h"

#include <wx/event.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <array>

class RulerNotifyEvent;
wxDECLARE_EVENT(EVT_RULER_NOTIFY, RulerNotifyEvent);

class RulerNotifyEvent final : public wxCommandEvent {
public:
    static constexpr int kCode = 4370;

    RulerNotifyEvent(int controlId, int argument, std::uint32_t style, const std::array<int, 5>& values)
        : wxCommandEvent(EVT_RULER_NOTIFY, controlId), argument_(argument), style_(style), values_(values)
    {
    }
    wxEvent* Clone() const override { return new RulerNotifyEvent(*this); }

    int Code() const { return kCode; }
    // For a click: the ruler position under the pointer (-1 off the scale).
    int Argument() const { return argument_; }
    std::uint32_t RulerStyle() const { return style_; }
    // For a click: x, y, the break count, the cursor, 0.
    const std::array<int, 5>& Values() const { return values_; }

private:
    int argument_;
    std::uint32_t style_;
    std::array<int, 5> values_;
};

class CRulerWnd final : public wxWindow {
public:
    // The ruler draws model, which its owner keeps for as long as the window lives.
    CRulerWnd(wxWindow* parent, int id, RulerModel& model, const wxSize& size = wxDefaultSize);

    RulerModel& Model() { return model_; }
    // The window notifications go to; null (or a window since destroyed) means the parent.
    int SetNotifyTarget(wxWindow* target);
    // Sends the notification to the target or the parent.
    void Notify(int argument, const std::array<int, 5>& values);

private:
    void OnPaint(wxPaintEvent& event);
    void OnLeftDown(wxMouseEvent& event);
    void OnKeyDown(wxKeyEvent& event);
    void DrawScale(class wxDC& dc, const wxSize& client);
    void DrawBreaks(wxDC& dc, const wxSize& client);
    void DrawCursor(wxDC& dc, const wxSize& client);

    RulerModel& model_;
    wxWeakRef<wxWindow> target_;
};
