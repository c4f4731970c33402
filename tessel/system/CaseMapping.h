#pragma once
// Letters in upper or lower case by Unicode's rules, whatever locale the user's environment
// sets: the invariant locale on Windows, C.UTF-8 elsewhere.

#include "host/Text.h"

namespace tessel {

enum class LetterCase { Upper, Lower };

// The unit in that case; a unit without one stays as it is.
WChar ToLetterCase(WChar unit, LetterCase to);

} // namespace tessel
