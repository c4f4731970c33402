#pragma once
// The host's ANSI code page as the loaded module sees it, and text in its bytes. The ANSI
// code page is the process's: tessel's own code and the module it loads read the same choice
// (the platform layer keeps it in the process's environment), so both sides always agree.

#include "host/Text.h"

#include <string>

namespace tessel {

// The code page chosen by SelectModuleCodePage, else the one TESSEL_CODEPAGE names ("1250",
// "cp1250", "windows-1250"), else 1252 (on Windows the system's ANSI code page).
unsigned ModuleCodePage();

// Makes codePage the process's ANSI code page, for tessel and the module alike. Runs before
// the module is loaded, as nothing may read or write text meanwhile. Throws a usage AppError,
// listing the code pages there are, when the system does not convert it.
void SelectModuleCodePage(unsigned codePage);

// The bytes of text in the code page. False when a character has no form there (the
// module would write '?' for it) or the code page is unknown.
bool ToCodePageBytes(const WString& text, unsigned codePage, std::string& bytes);

} // namespace tessel
