#pragma once
// Which of a job's two sides each import builder reads: the primary configuration and binds,
// or the secondary (node) ones. The rules are uneven on purpose and required as they stand;
// the builders and every host that prepares their jobs take them from here.

#include "host/ImpexDefinitions.h"

struct ImportSides {
    bool secondaryConfiguration;
    bool secondaryBinds;
};

// Points: the side the caller names with the secondary flag, for both.
inline ImportSides PointSides(int secondary) { return {secondary != 0, secondary != 0}; }

// Lines and data tables: always the primary side.
inline ImportSides PrimarySides() { return {false, false}; }

// Polygons: the primary configuration; its columns are matched against the secondary binds
// when the job reads section nodes.
inline ImportSides PolygonSides(const VeltoGis::ImportExport::CImportDefinition& definition)
{
    return {false, definition.GetImportSectionNodes() != 0};
}

// Point clouds: the secondary configuration only for a line job reading section nodes; the
// secondary binds whenever section nodes are read.
inline ImportSides CloudSides(const VeltoGis::ImportExport::CImportDefinition& definition)
{
    const bool sectionNodes = definition.GetImportSectionNodes() != 0;
    return {sectionNodes && definition.GetEntityType() == VeltoGis::EntityTypeLine, sectionNodes};
}

// The configuration and the binds of the chosen sides.
inline WString ConfigurationOf(const VeltoGis::ImportExport::CImportDefinition& definition, ImportSides sides)
{
    return sides.secondaryConfiguration ? definition.GetImporterConfigurationNode()
                                        : definition.GetImporterConfiguration();
}
inline boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>
BindsOf(const VeltoGis::ImportExport::CImportDefinition& definition, ImportSides sides)
{
    return sides.secondaryBinds ? definition.GetDBCollectionNode() : definition.GetDBCollection();
}
