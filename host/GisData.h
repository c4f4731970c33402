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

// The variant value of one field: null, integer, real or text. Kept to 24 bytes, because
// an import of millions of lines creates several per line: a text of up to eight code units
// (most survey codes and point names) lives in the box itself, a longer one in one block of
// its own.
class VELTOGIS_CORE_API CDataBox {
public:
    enum class Kind : unsigned char { Null, Integer, Real, Text };

    CDataBox() = default;                 // a null value
    explicit CDataBox(const WChar* text); // a text value (null pointer: null value)
    CDataBox(const CDataBox& other);
    CDataBox(CDataBox&& other) noexcept;
    CDataBox& operator=(const CDataBox& other);
    CDataBox& operator=(CDataBox&& other) noexcept;
    ~CDataBox();

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

private:
    friend class VeltoGis::HostSide;
    static constexpr unsigned kInlineUnits = 8;
    const WChar* TextData() const { return length_ <= kInlineUnits ? storage_.inlineText : storage_.heapText; }
    void AssignText(const WChar* text, std::size_t length);
    void ReleaseText();

    Kind kind_ = Kind::Null;
    unsigned length_ = 0; // code units of a text value
    union Storage {
        int integer;
        double real;
        WChar inlineText[kInlineUnits];
        WChar* heapText;
    } storage_{};
};

// Describes one field: id, display name and value type code.
class VELTOGIS_CORE_API CDataDefinition {
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

class VELTOGIS_CORE_API CDataRW {
public:
    // Reads the field that definition names from a drawing entity into value (which stays
    // null when the entity has no such field). Returns 1 when the field was found, else 0.
    static int Read(CDataDefinition* definition, Topology::CEntity* entity, CDataBox& value, int flags,
                    System::CGisSystem* system);
};

} // namespace Data
} // namespace VeltoGis
