#pragma once
// What every entity builder does with a bind: the name rule and the attribute value.

#include "host/ImpexData.h"
#include "import/ResolvedBinds.h"
#include "import/ValueFactory.h"


// The name rule: the field text goes through the bind's import transform, a transform that
// yields null keeps the raw text, and an empty name is not set at all. Keeps its two
// scratch values from line to line, so that naming allocates nothing but the name itself.
class EntityNameRule {
public:
    void Apply(VeltoGis::ImportExport::CImpexEntity& entity, VeltoGis::ImportExport::CDataBind& bind,
               const WString& field);

private:
    VeltoGis::Data::CDataBox transformed_;
    VeltoGis::Data::CDataBox raw_;
};

// Makes room in the caller's list for one entity per line, so that it does not regrow
// (and copy itself) again and again over a large file.
inline void ReserveForLines(VeltoGis::ImportExport::ImpexEntityList& entities, std::uint64_t lineCount)
{
    if (lineCount < entities.max_size() - entities.size())
        entities.reserve(entities.size() + static_cast<std::size_t>(lineCount));
}

// Appends the attribute value of a bind whose field on this line is field (null: missing):
// nothing when its source names no column, a null value when the field is missing or
// empty, otherwise the field converted by the column's type.
void AddBindValue(ValueFactory& values, VeltoGis::ImportExport::CImpexEntity& entity, const ResolvedBind& bind,
                  const WString* field);
// The same for a field that the builder has already read as a coordinate with
// CUtility::AtoF: a real column takes that number instead of converting the text again.
void AddCoordinateValue(ValueFactory& values, VeltoGis::ImportExport::CImpexEntity& entity, const ResolvedBind& bind,
                        const WString& field, double coordinate);
