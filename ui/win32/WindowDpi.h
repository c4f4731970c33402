#pragma once
// The DPI a window is shown at, for what the views draw or load in pixels themselves (icons,
// owner-drawn controls); the templates' dialog units scale on their own.

#include "host/CadDialogs.h"

// The window's DPI: its monitor's where the system tells (per-monitor awareness), else the
// screen's. 96 is 100 %.
unsigned WindowDpi(DialogWindow window);

// pixelsAt96 scaled to the window's DPI, rounded.
int ScaledToWindow(DialogWindow window, int pixelsAt96);
