#pragma once
// The modal dialogs and message boxes open in the GUI test program, and ending them all.

// Starts keeping count of the modal dialogs shown (once, before the first is shown).
void TrackOpenDialogs();
// Ends every modal dialog and message box still open, the innermost first, as if cancelled.
void EndOpenDialogs();
