#include "ui/ColumnTypes.h"

#include "import/NumberText.h"

namespace {

constexpr int kTypeCodes[kColumnTypeChoices] = {5005, 5010, 5001};
const WChar* const kTypeNames[kColumnTypeChoices] = {WTEXT("Text"), WTEXT("Integer"), WTEXT("Real")};

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
    const NumberReading reading = ReadNumberText(sample);
    if (reading.kind == NumberKind::None || reading.leadingZero)
        return ColumnTypeText;
    return reading.kind == NumberKind::Whole ? ColumnTypeInteger : ColumnTypeReal;
}

bool FieldConverts(const WString& field, int choice)
{
    if (field.empty() || choice == ColumnTypeText)
        return true;
    const NumberKind kind = ReadNumberText(field).kind;
    if (choice == ColumnTypeInteger)
        return kind == NumberKind::Whole;
    if (choice == ColumnTypeReal)
        return kind != NumberKind::None;
    return false;
}
