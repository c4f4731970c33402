#include "ui/ColumnTypes.h"

#include <climits>

namespace {

constexpr int kTypeCodes[kColumnTypeChoices] = {5005, 5010, 5001};
const WChar* const kTypeNames[kColumnTypeChoices] = {WTEXT("Text"), WTEXT("Integer"), WTEXT("Real")};
// No number is this long: longer fields are text without being looked at, so that a huge
// field costs nothing.
constexpr std::size_t kLongestNumber = 64;

enum class NumberKind { None, Whole, Fraction };

struct NumberReading {
    NumberKind kind = NumberKind::None;
    bool leadingZero = false; // the integer part has several digits and begins with 0
};

bool IsDigit(WChar c) { return c >= '0' && c <= '9'; }
bool IsBlank(WChar c) { return c == ' ' || c == '\t'; }

NumberReading ReadNumber(const WString& field)
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

} // namespace

const WChar* ColumnTypeName(int choice)
{
    return choice >= 0 && choice < kColumnTypeChoices ? kTypeNames[choice] : WTEXT("");
}

int ColumnTypeCode(int choice) { return choice >= 0 && choice < kColumnTypeChoices ? kTypeCodes[choice] : 0; }

int ColumnTypeChoiceOf(int code)
{
    for (int choice = 0; choice < kColumnTypeChoices; ++choice) {
        if (kTypeCodes[choice] == code)
            return choice;
    }
    return ColumnTypeNone;
}

int GuessColumnType(const WString& sample)
{
    const NumberReading reading = ReadNumber(sample);
    if (reading.kind == NumberKind::None || reading.leadingZero)
        return ColumnTypeText;
    return reading.kind == NumberKind::Whole ? ColumnTypeInteger : ColumnTypeReal;
}

bool FieldConverts(const WString& field, int choice)
{
    if (field.empty() || choice == ColumnTypeText)
        return true;
    const NumberKind kind = ReadNumber(field).kind;
    if (choice == ColumnTypeInteger)
        return kind == NumberKind::Whole;
    if (choice == ColumnTypeReal)
        return kind != NumberKind::None;
    return false;
}
