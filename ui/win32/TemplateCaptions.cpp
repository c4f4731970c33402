#include "ui/win32/TemplateCaptions.h"

#include "host/Messages.h"
#include "ui/win32/ControlText.h"

void ShowTemplateCaptions(DialogWindow dialog, const DialogTemplate& dialogTemplate)
{
    for (const DialogControl& control : dialogTemplate) {
        if (control.caption != 0 || control.label[0] != '\0')
            SetControlText(dialog, control.id, ControlCaption(control));
    }
}

WString TemplateTitle(const DialogTemplate& dialogTemplate)
{
    return LoadMessage(static_cast<MessageId>(dialogTemplate.title));
}
