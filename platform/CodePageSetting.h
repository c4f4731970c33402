#pragma once
// Inside the platform layer only: the process's choice of ANSI code page. It lives in the
// process's environment, the one place where every copy of the platform layer in a process
// finds the same choice (a host application that links the module's code has one copy, the
// module it loads another):
//   TESSEL_ANSI_CODEPAGE  what SetAnsiCodePage chose for this process, whichever copy set it
//   TESSEL_CODEPAGE       the user's choice, "1250", "cp1250" or "windows-1250" (any case)
// and, without either, the system's own (CP_ACP on Windows, Windows-1252 elsewhere).
//
// The text readers and writers ask for the ANSI code page per line, and a read of the
// environment costs more than a line does: the platform layer reads the choice when it is
// first asked, whenever a file is opened and whenever SetAnsiCodePage sets it, and answers
// from that reading in between.

namespace Platform::CodePageSetting {

constexpr char kProcessVariable[] = "TESSEL_ANSI_CODEPAGE";
constexpr char kUserVariable[] = "TESSEL_CODEPAGE";

// The number in "1250", "cp1250" or "windows-1250" (any case); 0 when the text is null or
// names no number from 1 to 65535.
unsigned Parse(const char* text);

// The choice as last read: the code page, or 0 for the system's own.
unsigned Choice();
// Reads the choice from the environment again.
void ReadAgain();
// Makes codePage the process's choice (0: none, the user's or the system's again) and reads
// it back.
void SetChoice(unsigned codePage);

// Per system (CodePagesPosix.cpp, CodePagesWindows.cpp): the choice in the environment now,
// where TESSEL_CODEPAGE counts only for a code page the system converts; and writing
// SetAnsiCodePage's choice there (0 removes it).
unsigned ReadFromEnvironment();
void WriteToEnvironment(unsigned codePage);

} // namespace Platform::CodePageSetting
