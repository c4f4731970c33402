#include "DialogDriving.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/image.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>
#include <wx/utils.h>
#include <wx/window.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <filesystem>

bool PumpUntil(const std::function<bool()>& condition, int timeoutMs)
{
    for (int waited = 0;; waited += 10) {
        wxYield();
        if (condition())
            return true;
        if (waited >= timeoutMs)
            return false;
        wxMilliSleep(10);
    }
}

void Pump(int milliseconds)
{
    PumpUntil([] { return false; }, milliseconds);
}

wxWindow* Control(wxWindow* dialog, int id)
{
    wxWindow* control = dialog->FindWindow(id);
    EXPECT_NE(control, nullptr) << "no control " << id;
    return control;
}

void Click(wxWindow* dialog, int id)
{
    wxWindow* control = Control(dialog, id);
    if (!control)
        return;
    // Without a window manager the frame's position is not what wx believes: ask the
    // control where its own client area is.
    const wxSize size = control->GetClientSize();
    wxUIActionSimulator simulator;
    simulator.MouseMove(control->ClientToScreen(wxPoint(size.x / 2, size.y / 2)));
    Pump(30);
    simulator.MouseClick();
    Pump();
}

void TypeInto(wxWindow* dialog, int id, const std::string& text)
{
    Click(dialog, id);
    wxWindow* control = Control(dialog, id);
    auto* edit = dynamic_cast<wxTextEntry*>(control);
    ASSERT_NE(edit, nullptr);
    PumpUntil([control] { return control->HasFocus(); });
    edit->SelectAll();
    wxUIActionSimulator simulator;
    simulator.Text(text.c_str());
    PumpUntil([edit, &text] { return edit->GetValue() == wxString::FromUTF8(text); });
}

void PressKey(wxWindow* dialog, int keyCode)
{
    dialog->SetFocus();
    Pump(50);
    wxUIActionSimulator simulator;
    simulator.Char(keyCode);
    Pump();
}

std::string Screenshot(wxWindow* dialog, const std::string& name)
{
    dialog->Refresh();
    dialog->Update();
    Pump(300);
    // A screen DC can hand back stale pixels after its first use: ask the X server itself,
    // on a connection of our own.
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return std::string();
    const wxPoint origin = dialog->ClientToScreen(wxPoint(0, 0));
    const wxSize size = dialog->GetClientSize();
    XImage* pixels = XGetImage(display, DefaultRootWindow(display), origin.x, origin.y, size.x, size.y, AllPlanes,
                               ZPixmap);
    std::string path;
    if (pixels) {
        wxImage image(size.x, size.y);
        for (int y = 0; y < size.y; ++y) {
            for (int x = 0; x < size.x; ++x) {
                const unsigned long pixel = XGetPixel(pixels, x, y);
                image.SetRGB(x, y, (pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
            }
        }
        XDestroyImage(pixels);
        std::filesystem::create_directories(TESSEL_SCREENSHOT_DIR);
        path = std::string(TESSEL_SCREENSHOT_DIR) + "/" + name + ".png";
        if (!image.SaveFile(path, wxBITMAP_TYPE_PNG))
            path.clear();
    }
    XCloseDisplay(display);
    return path;
}
