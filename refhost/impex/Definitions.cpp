#include "host/ImpexDefinitions.h"

namespace VeltoGis {

CRepositoryItem::CRepositoryItem() = default;
CRepositoryItem::~CRepositoryItem() = default;

namespace ImportExport {
namespace {

void Assign(WString& target, const WChar* text) { target.assign(text ? text : WTEXT("")); }

} // namespace

CImportDefinition::CImportDefinition() = default;
CImportDefinition::~CImportDefinition() = default;

void CImportDefinition::SetImporterConfiguration(const WChar* configuration) { Assign(configuration_, configuration); }

void CImportDefinition::SetImporterConfigurationNode(const WChar* configuration)
{
    Assign(configurationNode_, configuration);
}

CExportDefinition::CExportDefinition() = default;
CExportDefinition::~CExportDefinition() = default;

void CExportDefinition::SetExporterConfiguration(const WChar* configuration) { Assign(configuration_, configuration); }

void CExportDefinition::SetExporterConfigurationNode(const WChar* configuration)
{
    Assign(configurationNode_, configuration);
}

} // namespace ImportExport
} // namespace VeltoGis
