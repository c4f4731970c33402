#pragma once
// Import and export jobs as the framework would hand them to an engine, built in one line.

#include "host/ImpexDefinitions.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <string>
#include <utility>
#include <vector>

namespace refhost {
namespace testing {

// (source id, target id), in UTF-8.
using BindPair = std::pair<std::string, std::string>;

// One bind per pair, in order. Each bind carries a source data definition whose id and name
// are the source id (type text), as the framework gives exported fields.
boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection> MakeBinds(const std::vector<BindPair>& pairs);

// A job of the entity type with the primary configuration string and primary binds; the
// node configuration is empty and the node binds an empty collection.
VeltoGis::ImportExport::CImportDefinition MakeImportDefinition(VeltoGis::enmEntityType type,
                                                               const WString& configuration,
                                                               const std::vector<BindPair>& binds);
VeltoGis::ImportExport::CExportDefinition MakeExportDefinition(VeltoGis::enmEntityType type,
                                                               const WString& configuration,
                                                               const std::vector<BindPair>& binds);

} // namespace testing
} // namespace refhost
