#pragma once
// Field values and field descriptions of the GIS framework (VeltoXGisCore).

#include "host/HostApi.h"
#include "host/Text.h"

namespace VeltoGis {
namespace System {
class CGisSystem;
}
namespace Topology {
class CEntity;
}

namespace Data {

// Value type codes shared by field descriptions and the import configuration.
enum enmDataType { DataTypeReal = 5001, DataTypeText = 5005, DataTypeInteger = 5010 };

// The variant value of one field: null, integer, real or text.
class VELTOGIS_API CDataBox {
public:
    enum class Kind : unsigned char { Null, Integer, Real, Text };

    CDataBox() = default;                 // a null value
    explicit CDataBox(const WChar* text); // a text value (null pointer: null value)

    void SetValue(int value);
    void SetValue(double value);
    void SetValue(const WChar* text);
    void SetNull();

    bool IsNotNull() const { return kind_ != Kind::Null; }
    // The value as text: "" for null, decimal for integers, the shortest text that reads
    // back to the same double for reals, the text itself for text.
    operator WString() const;
    // Equal kinds and equal values; null equals null. Used to match key values in rows.
    bool operator==(const CDataBox& other) const;
    bool operator!=(const CDataBox& other) const { return !(*this == other); }

    // Reference host: read access for the host application and tests.
    Kind GetKind() const { return kind_; }
    int GetInteger() const { return integer_; }
    double GetReal() const { return real_; }
    const WString& GetText() const { return text_; }

private:
    Kind kind_ = Kind::Null;
    int integer_ = 0;
    double real_ = 0.0;
    WString text_;
};

// Describes one field: id, display name and value type code.
class VELTOGIS_API CDataDefinition {
public:
    CDataDefinition() = default;
    void SetDataID(const WChar* id);
    void SetName(const WChar* name);
    void SetDataType(int type);

    const WString& GetDataID() const { return id_; }
    const WString& GetName() const { return name_; }
    int GetDataType() const { return type_; }

private:
    WString id_;
    WString name_;
    int type_ = 0;
};

class VELTOGIS_API CDataRW {
public:
    // Reads the field that definition names from a drawing entity into value (which stays
    // null when the entity has no such field). Returns 1 when the field was found, else 0.
    static int Read(CDataDefinition* definition, Topology::CEntity* entity, CDataBox& value, int flags,
                    System::CGisSystem* system);
};

} // namespace Data
} // namespace VeltoGis
