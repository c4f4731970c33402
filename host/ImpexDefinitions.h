#pragma once
// Import and export jobs as the framework hands them to an engine (VeltoXImportExportCore).

#include "host/HostApi.h"
#include "host/ImpexData.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>

namespace VeltoGis {

// Entity type of a job.
enum enmEntityType : int {
    EntityTypeNone = 0,
    EntityTypePoint = 1,
    EntityTypeLine = 2,
    EntityTypePolygon = 16,
    EntityTypeNodeXY = 32 // the kind whose coordinate targets are "NODE_X" and "NODE_Y"
};

class VELTOGIS_IMPEX_API CRepositoryItem {
public:
    CRepositoryItem();
    virtual ~CRepositoryItem();
    enmEntityType GetEntityType() const { return entityType_; }

private:
    friend class VeltoGis::HostSide;
    enmEntityType entityType_ = EntityTypeNone;
};

namespace ImportExport {

// One import job: two configuration strings (the main file's and the secondary file's),
// two bind collections, and the job's option flags.
class VELTOGIS_IMPEX_API CImportDefinition : public CRepositoryItem {
public:
    CImportDefinition();
    ~CImportDefinition() override;

    WString GetImporterConfiguration() const { return configuration_; }
    WString GetImporterConfigurationNode() const { return configurationNode_; }
    void SetImporterConfiguration(const WChar* configuration);
    void SetImporterConfigurationNode(const WChar* configuration);
    boost::shared_ptr<CDataBindCollection> GetDBCollection() const { return binds_; }
    boost::shared_ptr<CDataBindCollection> GetDBCollectionNode() const { return bindsNode_; }
    int GetImportDataOnly() const { return dataOnly_; }
    int GetImportSectionNodes() const { return sectionNodes_; }

private:
    friend class VeltoGis::HostSide;
    WString configuration_;
    WString configurationNode_;
    boost::shared_ptr<CDataBindCollection> binds_;
    boost::shared_ptr<CDataBindCollection> bindsNode_;
    int dataOnly_ = 0;
    int sectionNodes_ = 0;
    int allowPrimaryEdit_ = 1;
    int allowSecondaryEdit_ = 1;
};

// One export job: two configuration strings and two bind collections.
class VELTOGIS_IMPEX_API CExportDefinition : public CRepositoryItem {
public:
    CExportDefinition();
    ~CExportDefinition() override;

    WString GetExporterConfiguration() const { return configuration_; }
    WString GetExporterConfigurationNode() const { return configurationNode_; }
    void SetExporterConfiguration(const WChar* configuration);
    void SetExporterConfigurationNode(const WChar* configuration);
    boost::shared_ptr<CDataBindCollection> GetDBCollection() const { return binds_; }
    boost::shared_ptr<CDataBindCollection> GetDBCollectionNode() const { return bindsNode_; }

private:
    friend class VeltoGis::HostSide;
    WString configuration_;
    WString configurationNode_;
    boost::shared_ptr<CDataBindCollection> binds_;
    boost::shared_ptr<CDataBindCollection> bindsNode_;
    int allowPrimaryEdit_ = 1;
    int allowSecondaryEdit_ = 1;
};

} // namespace ImportExport
} // namespace VeltoGis
