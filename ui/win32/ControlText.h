#pragma once
// Reading and setting the state of a dialog's controls by their template ids, in UTF-16
// throughout. A missing control reads as empty or unchecked and ignores what is set.

#include "host/CadDialogs.h"
#include "host/Text.h"

WString ControlText(DialogWindow dialog, int controlId);
void SetControlText(DialogWindow dialog, int controlId, const WString& text);

bool IsButtonChecked(DialogWindow dialog, int controlId);
void SetButtonChecked(DialogWindow dialog, int controlId, bool checked);

void EnableControl(DialogWindow dialog, int controlId, bool enabled);
