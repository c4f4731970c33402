#pragma once
// The text-file import engine ("IMPORT_TXT"). It keeps no state: every operation parses the
// job's configuration afresh and works from the definition the framework passes.

#include "host/ImpexEngines.h"

class CImportEngine_Txt : public VeltoGis::ImportExport::IImportEngine {
public:
    CImportEngine_Txt();
    ~CImportEngine_Txt() override;

    using CImportDefinition = VeltoGis::ImportExport::CImportDefinition;
    using ImpexEntityList = VeltoGis::ImportExport::ImpexEntityList;
    using CDataBox = VeltoGis::Data::CDataBox;

    /* 1 */ int PrepareImport(CImportDefinition* definition) override;
    /* 2 */ int ImportCapability2() override;
    /* 3 */ int ImportPoints(CImportDefinition* definition, ImpexEntityList& entities, int secondary,
                             VeltoGis::ImportExport::CLq* filter) override;
    /* 4 */ int ImportLines(CImportDefinition* definition, ImpexEntityList& entities) override;
    /* 5 */ int ImportPolygons(CImportDefinition* definition, ImpexEntityList& entities) override;
    /* 6 */ int UpdateLinkedTableRows(const WChar* configuration,
                                      boost::shared_ptr<VeltoGis::ImportExport::CDBTable> table,
                                      const CDataBox* keyValue) override;
    /* 7 */ int ImportLinkedTableRows(const WChar* configuration,
                                      boost::shared_ptr<VeltoGis::ImportExport::CDBTable> table,
                                      const VeltoGis::ImportExport::KeySet& keys) override;
    /* 8 */ int ImportTableRows(const WChar* configuration, boost::shared_ptr<VeltoGis::ImportExport::CDBTable> table,
                                int maxLines) override;
    /* 9 */ int ImportCloud(CImportDefinition* definition, boost::shared_ptr<VeltoGis::ImportExport::CCloud> cloud) override;
    /* 10 */ boost::shared_ptr<VeltoGis::ImportExport::CImportExtension> GetImportExtension() override;
    /* 11 */ void GetSourceDataDefinitions(CImportDefinition* definition,
                                           VeltoGis::ImportExport::DataDefinitionList& definitions,
                                           int secondary) override;
    /* 12 */ int Configure(CImportDefinition* definition, int secondary) override;
    /* 13 */ void GetDescription(WString& description, CImportDefinition* definition, int secondary) override;
    /* 14 */ int ValidateDefinition(CImportDefinition* definition, WString& message) override;
    /* 15 */ int ImportCapability15() override;
    /* 16 */ int ConfigureForFile(CImportDefinition* definition, const WChar* path, WString& configuration,
                                  int secondary) override;
    /* 17 */ int ImportCapability17() override;
    /* 18 */ void GetRequiredTargetIds(CImportDefinition* definition,
                                       VeltoGis::ImportExport::TargetIdList& ids) override;
    /* 19 */ void GetExcludedTargetIds(CImportDefinition* definition,
                                       VeltoGis::ImportExport::TargetIdList& ids) override;
    /* 20 */ int ImportCapability20() override;
    /* 21 */ WString GetPrimaryFilePath(CImportDefinition* definition) override;
    /* 22 */ WString GetSecondaryFilePath(CImportDefinition* definition) override;
    // 23, 24: AllowPrimaryFilePathEdit, AllowSecondaryFilePathEdit: the framework's own.
    /* 25 */ int SetPrimaryFilePath(CImportDefinition* definition, const WChar* path) override;
    /* 26 */ int SetSecondaryFilePath(CImportDefinition* definition, const WChar* path) override;
    // 27: GetFileFilter: the framework's own.
};
