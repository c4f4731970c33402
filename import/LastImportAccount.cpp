#include "import/LastImportAccount.h"

namespace {

TxtImport::CImportAccount& Kept()
{
    static TxtImport::CImportAccount account;
    return account;
}

} // namespace

TESSEL_EXPORT const TxtImport::CImportAccount* TesselLastImportAccount() { return &Kept(); }

void KeepLastImportAccount(const TxtImport::CImportAccount& account) { Kept() = account; }
