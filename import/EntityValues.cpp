#include "import/EntityValues.h"

#include "import/FieldValues.h"

using VeltoGis::Data::CDataBox;

void EntityNameRule::Apply(VeltoGis::ImportExport::CImpexEntity& entity, VeltoGis::ImportExport::CDataBind& bind,
                           const WString& field)
{
    // The value handed to the transform holds the field text, exactly as a new one would.
    transformed_.SetValue(field.c_str());
    bind.TransformData_Import(&transformed_);
    raw_.SetValue(field.c_str());
    // Unchanged text (the usual case) needs no conversion back to text.
    if (!transformed_.IsNotNull() || transformed_ == raw_) {
        if (!field.empty())
            entity.SetName(field.c_str());
        return;
    }
    const WString name = transformed_;
    if (!name.empty())
        entity.SetName(name.c_str());
}

void AddBindValue(ValueFactory& values, VeltoGis::ImportExport::CImpexEntity& entity, const ResolvedBind& bind,
                  const WString* field)
{
    if (bind.column)
        entity.AddData(values.FieldValue(field, bind.column->GetType()));
}

void AddCoordinateValue(ValueFactory& values, VeltoGis::ImportExport::CImpexEntity& entity, const ResolvedBind& bind,
                        const WString& field, double coordinate)
{
    if (bind.column->GetType() != kColumnReal || field.empty())
        return AddBindValue(values, entity, bind, &field);
    entity.AddData(values.RealValue(coordinate));
}
