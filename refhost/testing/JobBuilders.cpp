#include "refhost/testing/JobBuilders.h"

#include "host/Utf8.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>

namespace refhost {
namespace testing {

using namespace VeltoGis::ImportExport;

boost::shared_ptr<CDataBindCollection> MakeBinds(const std::vector<BindPair>& pairs)
{
    auto collection = boost::make_shared<CDataBindCollection>();
    for (const BindPair& pair : pairs) {
        const WString source = FromUtf8(pair.first);
        auto bind = boost::make_shared<CDataBind>(source.c_str(), FromUtf8(pair.second).c_str());
        auto definition = boost::make_shared<CDataDefinition>();
        definition->SetDataID(source.c_str());
        definition->SetName(source.c_str());
        definition->SetDataType(VeltoGis::Data::DataTypeText);
        refhost::SetSourceDataDefinition(*bind, definition);
        refhost::AddBind(*collection, bind);
    }
    return collection;
}

CImportDefinition MakeImportDefinition(VeltoGis::enmEntityType type, const WString& configuration,
                                       const std::vector<BindPair>& binds)
{
    CImportDefinition definition;
    refhost::SetEntityType(definition, type);
    definition.SetImporterConfiguration(configuration.c_str());
    refhost::SetDBCollection(definition, MakeBinds(binds));
    refhost::SetDBCollectionNode(definition, MakeBinds({}));
    return definition;
}

CExportDefinition MakeExportDefinition(VeltoGis::enmEntityType type, const WString& configuration,
                                       const std::vector<BindPair>& binds)
{
    CExportDefinition definition;
    refhost::SetEntityType(definition, type);
    definition.SetExporterConfiguration(configuration.c_str());
    refhost::SetDBCollection(definition, MakeBinds(binds));
    refhost::SetDBCollectionNode(definition, MakeBinds({}));
    return definition;
}

} // namespace testing
} // namespace refhost
