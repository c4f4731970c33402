#pragma once
// The account of the last import run as the host application and tests read it, beyond the
// framework's interface (host/ImpexAccount.h).

#include "host/HostApi.h"
#include "host/ImpexAccount.h"

namespace refhost {

// What the last run that reported handed over; empty before any.
VELTOGIS_IMPEX_API const VeltoGis::ImportExport::CImportAccount& LastImportAccount();
// Empties it, so that a run that reports nothing is told apart from the one before.
VELTOGIS_IMPEX_API void ForgetImportAccount();

} // namespace refhost
