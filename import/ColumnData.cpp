#include "import/ColumnData.h"

int CColumnData::GetNo() const { return no_; }
void CColumnData::SetNo(int no) { no_ = no; }
const WString& CColumnData::GetName() const { return name_; }
void CColumnData::SetName(const WString& name) { name_ = name; }
int CColumnData::GetType() const { return type_; }
void CColumnData::SetType(int type) { type_ = type; }
int CColumnData::GetOnOff() const { return onOff_; }
void CColumnData::SetOnOff(int onOff) { onOff_ = onOff; }
