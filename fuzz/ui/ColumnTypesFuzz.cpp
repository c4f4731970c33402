// Arbitrary bytes as a field (two bytes a unit): a guessed type must convert the field, and a
// field that converts to Integer must convert to Real as well.

#include "ui/ColumnTypes.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    WString field;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        field.push_back(static_cast<WChar>(data[i] | data[i + 1] << 8));
    const int guess = GuessColumnType(field);
    if (guess < ColumnTypeText || guess > ColumnTypeReal || !FieldConverts(field, guess))
        std::abort();
    if (FieldConverts(field, ColumnTypeInteger) && !FieldConverts(field, ColumnTypeReal))
        std::abort();
    return 0;
}
