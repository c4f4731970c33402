#pragma once
// The host's ANSI code page as the loaded module sees it. The module takes its ANSI code page
// from the environment variable TESSEL_CODEPAGE (Windows-1252 without it); the host
// application sets that variable before it loads the module, so both sides always agree on
// one code page.

namespace tessel {

// The code page named by TESSEL_CODEPAGE ("1250", "cp1250", "windows-1250"), else 1252:
// the module's own platform layer decides, so both sides always agree.
unsigned ModuleCodePage();

// Makes codePage the module's ANSI code page. Must run before the module is loaded. Throws a
// usage AppError, listing the code pages there are, when the system does not convert it.
void SelectModuleCodePage(unsigned codePage);

} // namespace tessel
