#pragma once
// The column types the import wizard offers, their codes in the configuration, the guess
// of a column's type from a sample field, and whether a field converts to a type.

#include "host/Text.h"

#include <cstddef>

// The entries of a column's type choice, in the order the drop-down lists them.
enum ColumnTypeChoice { ColumnTypeNone = -1, ColumnTypeText = 0, ColumnTypeInteger = 1, ColumnTypeReal = 2 };
constexpr int kColumnTypeChoices = 3;

// "Text", "Integer", "Real".
const WChar* ColumnTypeName(int choice);
// The code a choice writes: 5005 text, 5010 integer, 5001 real; 0 for anything else.
int ColumnTypeCode(int choice);
// The choice a stored code selects; ColumnTypeNone for a code that is none of the three.
int ColumnTypeChoiceOf(int code);

// The type a sample field suggests: Integer for a whole number that an int holds, Real for
// another number ('.' or ',' as the decimal separator, optional exponent), Text otherwise.
// Numbers with leading zeros ("007", "0012") are identifiers and stay Text. Blanks around
// the number are allowed, as the host's number reading skips them.
int GuessColumnType(const WString& sample);

// True when the field converts to the type without becoming 0 or losing a part of it: every
// field converts to Text, an empty field is null in any type, an Integer needs a whole number
// and a Real any number (leading zeros are fine for a conversion).
bool FieldConverts(const WString& field, int choice);
