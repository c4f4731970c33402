#include "host/ImpexData.h"

namespace VeltoGis {
namespace ImportExport {

CDBRow::CDBRow() = default;
CDBRow::~CDBRow() = default;

CDBTable::CDBTable() = default;
CDBTable::~CDBTable() = default;

void CDBTable::AddDBRow(boost::shared_ptr<CDBRow> row) { rows_.push_back(std::move(row)); }

} // namespace ImportExport
} // namespace VeltoGis
