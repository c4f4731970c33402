#pragma once
// The module's one export beyond the host's protocol: the record of its last import run, for
// the application that started it (tessel prints a summary and writes the rejects file from
// it). A host that does not know the export loses nothing; the engines work as they did.
//
// The record is read on the thread that ran the import, after the run and before the next
// one. It is C++ across the boundary, so only a program built from the same sources reads it.

#include "host/HostApi.h"
#include "import/ImportAccountRecord.h"

// The name the application looks the export up by, and its type.
constexpr const char* kLastImportAccountExport = "TesselLastImportAccount";
using LastImportAccountFunction = const TxtImport::CImportAccount* (*)();

// The record of the last run that read its file; an empty record before any run and after a
// run whose file did not open.
TESSEL_EXPORT const TxtImport::CImportAccount* TesselLastImportAccount();

// Replaces the kept record (an import run does so when it begins and when it ends).
void KeepLastImportAccount(const TxtImport::CImportAccount& account);
