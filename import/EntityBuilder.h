#pragma once
// What the point, line and polygon builders share per line: one new entity per non-comment
// line, the walk over the binds in collection order with the name rule and one attribute
// value per bind that names a column, and the hand-over to the caller's list. A builder adds
// only what its own reserved targets do and whether it keeps the entity.

#include "host/ImpexData.h"
#include "import/EntityValues.h"
#include "import/ImportRun.h"
#include "import/ResolvedBinds.h"

#include <boost/shared_ptr.hpp>

// Roles of binds in entity builders; a builder's own roles follow FirstOwnRole.
enum EntityBindRole { AttributeRole = 0, NameRole = 1, FirstOwnRole = 2 };

template <class Entity>
class EntityBuilder : public ImportLineSink {
public:
    // A null bind collection reads the file and hands nothing over.
    EntityBuilder(const boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>& binds, ImportRun& run,
                  VeltoGis::ImportExport::ImpexEntityList& entities, ResolvedBinds::RoleOfTarget roleOf)
        : bindCollection_(binds), binds_(binds.get(), run.Columns(), roleOf), entities_(entities), values_(run.Values())
    {
        run.ReadColumnsUpTo(binds_.HighestColumnNo());
    }

    void ExpectLines(std::uint64_t lineCount) override
    {
        if (bindCollection_)
            ReserveForLines(entities_, lineCount);
    }

    void ImportLine(LineFields& fields) override
    {
        if (!bindCollection_)
            return;
        auto entity = values_.NewEntity<Entity>(binds_.ValueCount());
        for (const ResolvedBind& bind : binds_) {
            const WString* field = bind.Field(fields);
            if (field && bind.role == NameRole)
                nameRule_.Apply(*entity, *bind.bind, *field);
            else if (field && bind.role >= FirstOwnRole && TakeField(*entity, bind, *field))
                continue;
            AddBindValue(values_, *entity, bind, field);
        }
        if (Finish(*entity))
            entities_.push_back(std::move(entity));
    }

protected:
    ~EntityBuilder() = default;

    ValueFactory& Values() { return values_; }

    // A bind with one of the builder's own roles whose field is on this line. Returns true
    // when it has appended the bind's value itself.
    virtual bool TakeField(Entity& entity, const ResolvedBind& bind, const WString& field) = 0;
    // After the last bind of the line; false discards the entity.
    virtual bool Finish(Entity& entity) = 0;

private:
    boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection> bindCollection_;
    ResolvedBinds binds_;
    VeltoGis::ImportExport::ImpexEntityList& entities_;
    EntityNameRule nameRule_;
    ValueFactory& values_;
};
