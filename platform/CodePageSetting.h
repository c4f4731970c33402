#pragma once
// Inside the platform layer only: the code page that the environment variable TESSEL_CODEPAGE
// chooses for code page 0, the same way on every system.

namespace Platform::CodePageSetting {

// The number in "1250", "cp1250" or "windows-1250" (any case); 0 when the text is null or
// names no number from 1 to 65535.
unsigned Parse(const char* text);
// Parse of TESSEL_CODEPAGE; 0 when it is not set or names no number.
unsigned FromEnvironment();

} // namespace Platform::CodePageSetting
