#include "ui/ModalDialogScope.h"

#include "host/CadPlatform.h"

ModalDialogScope::ModalDialogScope() : document_(nullptr)
{
    if (AcApDocManager* manager = acDocManagerPtr()) {
        document_ = manager->curDocument();
        manager->lockDocument(document_);
    }
}

ModalDialogScope::~ModalDialogScope()
{
    if (AcApDocManager* manager = acDocManagerPtr())
        manager->unlockDocument(document_);
}
