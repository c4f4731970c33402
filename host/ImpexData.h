#pragma once
// What import and export jobs exchange with the framework (VeltoXImportExportCore): entities,
// rows, tables, clouds, the coordinate filter, and the data binds with their transforms.

#include "host/CadPlatform.h"
#include "host/GisData.h"
#include "host/HostApi.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <functional>
#include <vector>

namespace VeltoGis {
namespace ImportExport {

using Data::CDataBox;
using Data::CDataDefinition;
using DataValueList = std::vector<boost::shared_ptr<CDataBox>>;

// An entity exchanged with the framework: a name and attribute values in bind order.
class VELTOGIS_IMPEX_API CImpexEntity {
public:
    CImpexEntity();
    virtual ~CImpexEntity();

    void SetName(const WChar* name);
    void AddData(boost::shared_ptr<CDataBox> value);
    DataValueList* GetData() { return &values_; }

private:
    friend class VeltoGis::HostSide;
    CDataBox name_; // a text value once named; compact, as millions of entities carry one
    DataValueList values_;
};

class VELTOGIS_IMPEX_API CImpexPoint : public CImpexEntity {
public:
    CImpexPoint();
    ~CImpexPoint() override;
    void SetPosition(const AcGePoint3d& position);

private:
    friend class VeltoGis::HostSide;
    AcGePoint3d position_;
    bool hasPosition_ = false;
};

class VELTOGIS_IMPEX_API CImpexLine : public CImpexEntity {
public:
    CImpexLine();
    ~CImpexLine() override;
    void SetStartingNodeName(const WChar* name);
    void SetEndingNodeName(const WChar* name);

private:
    friend class VeltoGis::HostSide;
    WString start_;
    WString end_;
    bool hasStart_ = false;
    bool hasEnd_ = false;
};

class VELTOGIS_IMPEX_API CImpexPolygon : public CImpexEntity {
public:
    CImpexPolygon();
    ~CImpexPolygon() override;
};

// The receiver of imported entities and the source of exported ones.
using ImpexEntityList = std::vector<boost::shared_ptr<CImpexEntity>>;

// Receiver of point-cloud points. Keeps the points, or (for very large imports measured by
// benchmarks) only counts them and folds them into a checksum.
class VELTOGIS_IMPEX_API CCloud {
public:
    enum class Storage { KeepPoints, CountOnly };
    explicit CCloud(Storage storage = Storage::KeepPoints);
    virtual ~CCloud();

    void AddPoint(const double& x, const double& y);

private:
    friend class VeltoGis::HostSide;
    Storage storage_;
    std::vector<double> coordinates_;
    std::size_t count_ = 0;
    std::uint64_t checksum_ = 0;
};

class VELTOGIS_IMPEX_API CDBRow {
public:
    CDBRow();
    ~CDBRow();
    DataValueList& Data() { return values_; }

private:
    DataValueList values_;
};

class VELTOGIS_IMPEX_API CDBTable {
public:
    CDBTable();
    virtual ~CDBTable();
    void AddDBRow(boost::shared_ptr<CDBRow> row);
    int GetLinkedFieldIndex() const { return linkedFieldIndex_; }

private:
    friend class VeltoGis::HostSide;
    std::vector<boost::shared_ptr<CDBRow>> rows_;
    int linkedFieldIndex_ = 0;
};

// Coordinate acceptance test for imported points: a rectangle, edges included. A
// default-constructed filter accepts everything.
class VELTOGIS_IMPEX_API CLq {
public:
    CLq();
    CLq(double xMin, double yMin, double xMax, double yMax);
    virtual ~CLq();
    int CheckPoint(double x, double y);

private:
    double xMin_, yMin_, xMax_, yMax_;
};

// Binds one source field to one target field, with transforms of the value in both
// directions. Both transforms are the identity unless the host gave the bind one.
class VELTOGIS_IMPEX_API CDataBind {
public:
    using Transform = std::function<void(CDataBox&)>;

    CDataBind();
    CDataBind(const WChar* sourceDataId, const WChar* targetDataId);
    virtual ~CDataBind();

    WString GetSourceDataId() const { return sourceId_; }
    WString GetTargetDataId() const { return targetId_; }
    CDataDefinition* GetSourceDataDefinition() const { return sourceDefinition_.get(); }
    void TransformData_Import(CDataBox* value);
    void TransformData_Export(CDataBox* value);

private:
    friend class VeltoGis::HostSide;
    WString sourceId_;
    WString targetId_;
    boost::shared_ptr<CDataDefinition> sourceDefinition_;
    Transform importTransform_;
    Transform exportTransform_;
};

class VELTOGIS_IMPEX_API CDataBindCollection {
public:
    CDataBindCollection();
    virtual ~CDataBindCollection();
    std::vector<boost::shared_ptr<CDataBind>>& GetDataBindCollection() { return binds_; }
    // The first bind with that target id, or an empty pointer.
    boost::shared_ptr<CDataBind> GetDataBindByTargetDataId(const WChar* targetId);

private:
    friend class VeltoGis::HostSide;
    std::vector<boost::shared_ptr<CDataBind>> binds_;
};

} // namespace ImportExport
} // namespace VeltoGis
