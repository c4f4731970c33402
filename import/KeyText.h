#pragma once
// Upper-casing of key fields for matching against a table's key set.

#include "host/Text.h"

// Upper-cases each UTF-16 unit by the C library's current locale (towupper), the way the
// host's string type does it: in the "C" locale only a-z change. Surrogates stay as they are.
void UpperCaseInPlace(WString& text);
