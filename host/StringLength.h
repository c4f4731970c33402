#pragma once
// Lines and fields are written into strings that keep their room from one line to the next.
// Setting such a string's length is done here: shortening (the usual case) stays inline
// and fills nothing; only growing goes through resize().

#include "host/Text.h"

#include <cstddef>

inline void SetLength(WString& text, std::size_t length)
{
    if (length <= text.size())
        text.erase(length);
    else
        text.resize(length);
}
