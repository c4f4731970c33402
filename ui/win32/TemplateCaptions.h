#pragma once
// The texts of a dialog made from one of the module's templates. The template itself holds
// only the module's own labels; the host's messages are set when the dialog opens.

#include "host/CadDialogs.h"
#include "host/Text.h"
#include "ui/DialogTemplates.h"

// Sets the caption of every control of dialogTemplate that has one (ControlCaption: the host
// message with its mnemonic, or the template label) in the open dialog. Controls without a
// caption keep what they show.
void ShowTemplateCaptions(DialogWindow dialog, const DialogTemplate& dialogTemplate);

// The window title of a dialog made from the template: its host message.
WString TemplateTitle(const DialogTemplate& dialogTemplate);
