#pragma once
// The two engine interfaces through which the framework drives a format's engines, the
// plug-in info object a module registers them with, and the engine manager.
// The virtual operations are declared in the framework's slot order; an engine overrides
// them and must not add virtual operations of its own in between.

#include "host/GisData.h"
#include "host/GisSystem.h"
#include "host/HostApi.h"
#include "host/ImpexData.h"
#include "host/ImpexDefinitions.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <set>
#include <vector>

namespace VeltoGis {
namespace ImportExport {

class CImportExtension; // offered by engines with import extensions; this module has none

using DataDefinitionList = std::vector<boost::shared_ptr<CDataDefinition>>;
using TargetIdList = std::vector<WString>;
using KeySet = std::set<WString>; // ordinal, case-sensitive order

class VELTOGIS_IMPEX_API IImportEngine {
public:
    IImportEngine(const WChar* id, const WChar* name, const WChar* description, int value1,
                  unsigned int mask, int value2, const WChar* text);

    /* 0 */ virtual ~IImportEngine();
    /* 1 */ virtual int PrepareImport(CImportDefinition* definition) = 0;
    /* 2 */ virtual int ImportCapability2() = 0;
    /* 3 */ virtual int ImportPoints(CImportDefinition* definition, ImpexEntityList& entities, int secondary,
                                     CLq* filter) = 0;
    /* 4 */ virtual int ImportLines(CImportDefinition* definition, ImpexEntityList& entities) = 0;
    /* 5 */ virtual int ImportPolygons(CImportDefinition* definition, ImpexEntityList& entities) = 0;
    /* 6 */ virtual int UpdateLinkedTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table,
                                              const CDataBox* keyValue) = 0;
    /* 7 */ virtual int ImportLinkedTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table,
                                              const KeySet& keys) = 0;
    /* 8 */ virtual int ImportTableRows(const WChar* configuration, boost::shared_ptr<CDBTable> table,
                                        int maxLines) = 0;
    /* 9 */ virtual int ImportCloud(CImportDefinition* definition, boost::shared_ptr<CCloud> cloud) = 0;
    /* 10 */ virtual boost::shared_ptr<CImportExtension> GetImportExtension() = 0;
    /* 11 */ virtual void GetSourceDataDefinitions(CImportDefinition* definition, DataDefinitionList& definitions,
                                                   int secondary) = 0;
    /* 12 */ virtual int Configure(CImportDefinition* definition, int secondary) = 0;
    /* 13 */ virtual void GetDescription(WString& description, CImportDefinition* definition, int secondary) = 0;
    /* 14 */ virtual int ValidateDefinition(CImportDefinition* definition, WString& message) = 0;
    /* 15 */ virtual int ImportCapability15() = 0;
    /* 16 */ virtual int ConfigureForFile(CImportDefinition* definition, const WChar* path, WString& configuration,
                                          int secondary) = 0;
    /* 17 */ virtual int ImportCapability17() = 0;
    /* 18 */ virtual void GetRequiredTargetIds(CImportDefinition* definition, TargetIdList& ids) = 0;
    /* 19 */ virtual void GetExcludedTargetIds(CImportDefinition* definition, TargetIdList& ids) = 0;
    /* 20 */ virtual int ImportCapability20() = 0;
    /* 21 */ virtual WString GetPrimaryFilePath(CImportDefinition* definition) = 0;
    /* 22 */ virtual WString GetSecondaryFilePath(CImportDefinition* definition) = 0;
    /* 23 */ virtual int AllowPrimaryFilePathEdit(CImportDefinition* definition);
    /* 24 */ virtual int AllowSecondaryFilePathEdit(CImportDefinition* definition);
    /* 25 */ virtual int SetPrimaryFilePath(CImportDefinition* definition, const WChar* path) = 0;
    /* 26 */ virtual int SetSecondaryFilePath(CImportDefinition* definition, const WChar* path) = 0;
    /* 27 */ virtual WString GetFileFilter();

private:
    friend class VeltoGis::HostSide;
    WString id_;
    WString name_;
    WString description_;
    int value1_;
    unsigned int mask_;
    int value2_;
    WString text_;
};

class VELTOGIS_IMPEX_API IExportEngine {
public:
    IExportEngine(const WChar* id, const WChar* name, const WChar* description, unsigned int mask, int value1,
                  int value2, const WChar* text);

    /* 0 */ virtual ~IExportEngine();
    /* 1 */ virtual void GetExportEntityName(WString& exportName, const WChar* name) = 0;
    /* 2 */ virtual int PrepareExport(CExportDefinition* definition) = 0;
    /* 3 */ virtual int ExportCapability3() = 0;
    /* 4 */ virtual int ExportPoints(CExportDefinition* definition, ImpexEntityList& entities) = 0;
    /* 5 */ virtual int ExportLines(CExportDefinition* definition,
                                    boost::shared_ptr<Topology::CEntityContainer> entities) = 0;
    /* 6 */ virtual int ExportPolygons(CExportDefinition* definition, ImpexEntityList& entities) = 0;
    /* 7 */ virtual int ExportCapability7() = 0;
    /* 8 */ virtual int ExportCapability8() = 0;
    /* 9 */ virtual void GetDescription(WString& description, CExportDefinition* definition, int secondary) = 0;
    /* 10 */ virtual int ExportCapability10() = 0;
    /* 11 */ virtual int ExportCapability11() = 0;
    /* 12 */ virtual int ExportCapability12() = 0;
    /* 13 */ virtual void ExportNotify13() = 0;
    /* 14 */ virtual void ExportNotify14() = 0;
    /* 15 */ virtual int Configure(CExportDefinition* definition, int secondary) = 0;
    /* 16 */ virtual int ExportCapability16() = 0;
    /* 17 */ virtual int ExportCapability17() = 0;
    /* 18 */ virtual WString GetPrimaryFilePath(CExportDefinition* definition) = 0;
    /* 19 */ virtual WString GetSecondaryFilePath(CExportDefinition* definition) = 0;
    /* 20 */ virtual int AllowPrimaryFilePathEdit(CExportDefinition* definition);
    /* 21 */ virtual int AllowSecondaryFilePathEdit(CExportDefinition* definition);
    /* 22 */ virtual int SetPrimaryFilePath(CExportDefinition* definition, const WChar* path) = 0;
    /* 23 */ virtual int SetSecondaryFilePath(CExportDefinition* definition, const WChar* path) = 0;
    /* 24 */ virtual WString GetFileFilter();

private:
    friend class VeltoGis::HostSide;
    WString id_;
    WString name_;
    WString description_;
    unsigned int mask_;
    int value1_;
    int value2_;
    WString text_;
};

// A module's plug-in info object, asked for by the framework through the module's exported
// GetVeltoImpexPluginInfo.
class VELTOGIS_IMPEX_API IImpexPluginInfo {
public:
    /* 0 */ virtual void RegisterEngines() = 0;
    virtual ~IImpexPluginInfo();
};

// The process-wide registry of engines.
class VELTOGIS_IMPEX_API CImpexManager {
public:
    static CImpexManager* Instance();

    void RegisterImporter(boost::shared_ptr<IImportEngine> engine);
    void RegisterExporter(boost::shared_ptr<IExportEngine> engine);
    // Creates the framework's per-job data for an import; 1 when created.
    int CreateUserData(CImportDefinition* definition);

private:
    CImpexManager() = default;
};

} // namespace ImportExport
} // namespace VeltoGis
