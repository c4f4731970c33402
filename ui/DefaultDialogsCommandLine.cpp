// A build without the toolkit: the command line answers every question.

#include "ui/DialogFactory.h"

DialogFactory& DefaultDialogs() { return CommandLineDialogs(); }
