#pragma once
// One column of a text file as the import configuration describes it.

#include "host/Text.h"

// Value type codes of a column; the same codes go to the host's data definitions.
enum ColumnTypeCode {
    kColumnReal = 5001,
    kColumnText = 5005,
    kColumnInteger = 5010
};

// A new column: number 0, no name, type and on/off 0.
class CColumnData {
public:
    // Index of the field in a split line that this column takes (0: the first field).
    int GetNo() const;
    void SetNo(int no);
    // Also the column's source data id in the host.
    const WString& GetName() const;
    void SetName(const WString& name);
    // A ColumnTypeCode; any other value gives null values.
    int GetType() const;
    void SetType(int type);
    // Non-zero: offered to the host as a source field; 0: present but ignored.
    int GetOnOff() const;
    void SetOnOff(int onOff);

private:
    int no_ = 0;
    WString name_;
    int type_ = 0;
    int onOff_ = 0;
};
