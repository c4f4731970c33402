#pragma once
// Pictures of windows as the user sees them, for people to look at after a test run.

#include "host/CadDialogs.h"

#include <string>

// Writes what the window shows (frame included) as TESSEL_SCREENSHOT_DIR/name.png, through
// the system's imaging component; returns the file's path, "" when it could not be written.
// Call in the window's thread.
std::string WritePngScreenshot(DialogWindow window, const std::string& name);
