#include "ui/DialogFactory.h"

namespace {
DialogFactory* installed = nullptr;
} // namespace

DialogFactory::~DialogFactory() = default;

DialogFactory& Dialogs() { return installed ? *installed : DefaultDialogs(); }

DialogFactory* InstallDialogFactory(DialogFactory* factory)
{
    DialogFactory* previous = installed;
    installed = factory;
    return previous;
}
