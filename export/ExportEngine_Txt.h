#pragma once
// The text export engine ("EXPORT_TXT"): writes the attribute values of exported entities
// as delimited lines, in ANSI or UTF-16LE. It keeps no settings of its own: every operation
// reads the configuration string of the job's definition afresh.

#include "host/ImpexEngines.h"

class CExportEngine_Txt : public VeltoGis::ImportExport::IExportEngine {
public:
    using CExportDefinition = VeltoGis::ImportExport::CExportDefinition;
    using ImpexEntityList = VeltoGis::ImportExport::ImpexEntityList;
    using EntityContainer = VeltoGis::Topology::CEntityContainer;

    // Fetches the engine's name and description (both message 7866) from the host.
    CExportEngine_Txt();
    ~CExportEngine_Txt() override;

    // The entity's name as it stands.
    void GetExportEntityName(WString& exportName, const WChar* name) override;
    // Reads both configurations; never refuses a job.
    int PrepareExport(CExportDefinition* definition) override;
    int ExportCapability3() override;
    // Attribute values of point entities, from each entity's value list.
    int ExportPoints(CExportDefinition* definition, ImpexEntityList& entities) override;
    // Attribute values of topology entities, read from the drawing through each bind's source.
    int ExportLines(CExportDefinition* definition, boost::shared_ptr<EntityContainer> entities) override;
    // Attribute values of polygon entities; an entity with fewer values than binds throws
    // std::out_of_range.
    int ExportPolygons(CExportDefinition* definition, ImpexEntityList& entities) override;
    int ExportCapability7() override;
    int ExportCapability8() override;
    // The file and the delimiter of the main (secondary == 0) or the node configuration.
    void GetDescription(WString& description, CExportDefinition* definition, int secondary) override;
    int ExportCapability10() override;
    int ExportCapability11() override;
    int ExportCapability12() override;
    void ExportNotify13() override;
    void ExportNotify14() override;
    // Runs the export configuration dialog; 1 when the user confirmed it.
    int Configure(CExportDefinition* definition, int secondary) override;
    int ExportCapability16() override;
    int ExportCapability17() override;
    WString GetPrimaryFilePath(CExportDefinition* definition) override;
    WString GetSecondaryFilePath(CExportDefinition* definition) override;
    // Replace the file of the configuration when the host allows it; 1 when replaced.
    int SetPrimaryFilePath(CExportDefinition* definition, const WChar* path) override;
    int SetSecondaryFilePath(CExportDefinition* definition, const WChar* path) override;
    // "TXT (*.txt)|*.txt||"
    WString GetFileFilter() override;
};
