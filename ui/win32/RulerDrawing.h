#pragma once
// How a RulerModel looks, drawn with GDI into any device context: the background, the scale
// in a one-pixel pen of the tick colour with "%ld" labels every 10th position in Arial 7 pt
// at the given DPI, the breaks as markers in their colours, and, when focused, the keyboard
// cursor and a frame.

#include "ui/RulerModel.h"
#include "ui/win32/Win32.h"

void DrawRuler(HDC dc, const RulerModel& model, SIZE client, int dpi, bool focused);
