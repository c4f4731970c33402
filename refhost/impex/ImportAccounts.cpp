#include "host/ImpexAccount.h"
#include "refhost/ImportAccountRecording.h"

namespace {

VeltoGis::ImportExport::CImportAccount& Last()
{
    static VeltoGis::ImportExport::CImportAccount account;
    return account;
}

} // namespace

namespace VeltoGis {
namespace ImportExport {

void CImportAccounts::Report(const CImportAccount& account) { Last() = account; }

} // namespace ImportExport
} // namespace VeltoGis

namespace refhost {

const VeltoGis::ImportExport::CImportAccount& LastImportAccount() { return Last(); }

void ForgetImportAccount() { Last() = VeltoGis::ImportExport::CImportAccount(); }

} // namespace refhost
