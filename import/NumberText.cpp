#include "import/NumberText.h"

#include <climits>
#include <cstddef>

namespace {

bool IsDigit(WChar c) { return c >= '0' && c <= '9'; }
bool IsBlank(WChar c) { return c == ' ' || c == '\t'; }

} // namespace

NumberReading ReadNumberText(const WString& field)
{
    NumberReading reading;
    std::size_t i = 0, end = field.size();
    if (end > kLongestNumber)
        return reading;
    while (i < end && IsBlank(field[i]))
        ++i;
    while (end > i && IsBlank(field[end - 1]))
        --end;
    const bool negative = i < end && field[i] == '-';
    if (i < end && (field[i] == '+' || field[i] == '-'))
        ++i;
    const std::size_t integerStart = i;
    long long value = 0;
    while (i < end && IsDigit(field[i])) {
        if (value <= INT_MAX)
            value = value * 10 + (field[i] - '0');
        ++i;
    }
    const std::size_t integerDigits = i - integerStart;
    reading.leadingZero = integerDigits > 1 && field[integerStart] == '0';
    bool fraction = false;
    std::size_t fractionDigits = 0;
    if (i < end && (field[i] == '.' || field[i] == ',')) {
        fraction = true;
        for (++i; i < end && IsDigit(field[i]); ++i)
            ++fractionDigits;
    }
    if (integerDigits + fractionDigits == 0)
        return reading;
    if (i < end && (field[i] == 'e' || field[i] == 'E')) {
        fraction = true;
        if (++i < end && (field[i] == '+' || field[i] == '-'))
            ++i;
        const std::size_t exponentStart = i;
        while (i < end && IsDigit(field[i]))
            ++i;
        if (i == exponentStart)
            return reading;
    }
    if (i != end)
        return reading;
    const long long largest = negative ? -static_cast<long long>(INT_MIN) : INT_MAX;
    reading.kind = fraction || value > largest ? NumberKind::Fraction : NumberKind::Whole;
    return reading;
}
