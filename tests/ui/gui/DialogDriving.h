#pragma once
// Driving the module's dialogs in real windows with real input events (the X server's test
// extension through wxUIActionSimulator), and pictures of what the user sees.

#include <functional>
#include <string>

class wxWindow;

// Lets the toolkit work until the condition holds or timeoutMs pass; true when it held.
bool PumpUntil(const std::function<bool()>& condition, int timeoutMs = 2000);
// Lets the toolkit work for a while (drawing, focus changes).
void Pump(int milliseconds = 150);

// The control with that id in the dialog; fails the test when it is missing.
wxWindow* Control(wxWindow* dialog, int id);
// A mouse click in the middle of the control.
void Click(wxWindow* dialog, int id);
// Clicks into a text control, selects what it holds and types ASCII text over it.
void TypeInto(wxWindow* dialog, int id, const std::string& text);
// A key pressed and released while the dialog has the focus (e.g. WXK_ESCAPE).
void PressKey(wxWindow* dialog, int keyCode);

// Writes a PNG of the dialog as shown into the build's screenshots folder; returns its path.
std::string Screenshot(wxWindow* dialog, const std::string& name);
