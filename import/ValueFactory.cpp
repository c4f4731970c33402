#include "import/ValueFactory.h"

#include "import/FieldValues.h"
#include "import/ObjectArena.h"

using VeltoGis::Data::CDataBox;
using namespace VeltoGis::ImportExport;

ValueFactory::ValueFactory() : arena_(std::make_unique<ObjectArena>()) {}

ValueFactory::~ValueFactory() = default;

template <class Entity>
boost::shared_ptr<Entity> ValueFactory::NewEntity(std::size_t valueCount)
{
    auto entity = arena_->Make<Entity>();
    entity->GetData()->reserve(valueCount);
    return entity;
}

template boost::shared_ptr<CImpexPoint> ValueFactory::NewEntity<CImpexPoint>(std::size_t);
template boost::shared_ptr<CImpexLine> ValueFactory::NewEntity<CImpexLine>(std::size_t);
template boost::shared_ptr<CImpexPolygon> ValueFactory::NewEntity<CImpexPolygon>(std::size_t);

boost::shared_ptr<CDBRow> ValueFactory::NewRow(std::size_t valueCount)
{
    auto row = arena_->Make<CDBRow>();
    row->Data().reserve(valueCount);
    return row;
}

boost::shared_ptr<CDataBox> ValueFactory::FieldValue(const WString* field, int type)
{
    auto value = arena_->Make<CDataBox>();
    if (field && !field->empty())
        SetValueByType(*value, *field, type);
    return value;
}

boost::shared_ptr<CDataBox> ValueFactory::RealValue(double number)
{
    auto value = arena_->Make<CDataBox>();
    value->SetValue(number);
    return value;
}
