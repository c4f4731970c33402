#pragma once
// The system's file choosers, for the dialogs' browse buttons. Filters come in the host's
// form, "Text files (*.txt)|*.txt|All files (*.*)|*.*||"; paths may be as long as the system
// allows (32767 characters), not just MAX_PATH.

#include "host/CadDialogs.h"
#include "host/Text.h"

// The host's filter in the form the system's chooser takes: every '|' a NUL, ending in two.
// An empty filter gives an empty string (the chooser then shows every file).
WString FileDialogFilter(const WString& hostFilter);

// Asks for an existing file to read. path is where the chooser starts (a file or a folder,
// or empty); true with the chosen file in path, false (path unchanged) when the user
// cancelled or the chooser could not be shown.
bool ChooseFileToOpen(DialogWindow owner, const WString& hostFilter, WString& path);

// Asks for a file to write, asking before an existing one is chosen; otherwise as
// ChooseFileToOpen.
bool ChooseFileToSave(DialogWindow owner, const WString& hostFilter, WString& path);
