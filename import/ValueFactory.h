#pragma once
// Makes the objects that an import hands over to the host: entities, table rows and their
// values. One factory per run; where it places them in memory is its own business (large
// blocks rather than one heap allocation per object: a run makes millions of them).

#include "host/ImpexData.h"
#include "host/Text.h"

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <memory>

class ObjectArena;

class ValueFactory {
public:
    ValueFactory();
    ~ValueFactory();
    ValueFactory(const ValueFactory&) = delete;
    ValueFactory& operator=(const ValueFactory&) = delete;

    // A new entity with room for valueCount values. Made for the entity types the builders
    // import: CImpexPoint, CImpexLine and CImpexPolygon.
    template <class Entity>
    boost::shared_ptr<Entity> NewEntity(std::size_t valueCount);
    // A new table row with room for valueCount values.
    boost::shared_ptr<VeltoGis::ImportExport::CDBRow> NewRow(std::size_t valueCount);

    // The value of a field of the given column type: a null value when the field is missing
    // (null) or empty, otherwise the text converted by the type (see SetValueByType).
    boost::shared_ptr<VeltoGis::Data::CDataBox> FieldValue(const WString* field, int type);
    // A real value holding number.
    boost::shared_ptr<VeltoGis::Data::CDataBox> RealValue(double number);

private:
    std::unique_ptr<ObjectArena> arena_;
};
