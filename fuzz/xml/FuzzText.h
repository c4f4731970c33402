#pragma once
// Turns fuzz input into the module's wide text. Bytes are widened one by one, so seed files
// are plain configuration strings (in Latin-1, "¤" being the byte 0xA4); input that begins
// with the byte 0xFF is read as UTF-16LE after it instead, so every code unit is reachable.

#include "host/Text.h"

#include <cstddef>
#include <cstdint>

inline WString FuzzText(const std::uint8_t* data, std::size_t size)
{
    WString text;
    if (size > 0 && data[0] == 0xFF) {
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text += static_cast<WChar>(data[i] | data[i + 1] << 8);
        return text;
    }
    text.reserve(size);
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<WChar>(data[i]);
    return text;
}
