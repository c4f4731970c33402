#pragma once
// The host's ANSI code page as the loaded module sees it. The ANSI code page is the
// process's: tessel's own code and the module it loads read the same choice (the platform
// layer keeps it in the process's environment), so both sides always agree.

namespace tessel {

// The code page chosen by SelectModuleCodePage, else the one TESSEL_CODEPAGE names ("1250",
// "cp1250", "windows-1250"), else 1252 (on Windows the system's ANSI code page).
unsigned ModuleCodePage();

// Makes codePage the process's ANSI code page, for tessel and the module alike. Runs before
// the module is loaded, as nothing may read or write text meanwhile. Throws a usage AppError,
// listing the code pages there are, when the system does not convert it.
void SelectModuleCodePage(unsigned codePage);

} // namespace tessel
