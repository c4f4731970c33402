#pragma once
// What the point, line and polygon builders share per line: one new entity per non-comment
// line, the walk over the binds in collection order with the name rule and one attribute
// value per bind that names a column, and the hand-over to the caller's list. A builder adds
// only what its own reserved targets do and whether it keeps the entity; one that reserves
// only the name (polygons) is this class as it stands.

#include "host/ImpexData.h"
#include "import/EntityValues.h"
#include "import/ImportRun.h"
#include "import/ResolvedBinds.h"

#include <boost/shared_ptr.hpp>

template <class Entity>
class EntityBuilder : public ImportLineSink {
public:
    // A null bind collection reads the file and hands nothing over.
    EntityBuilder(ImportRun& run, const boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>& binds,
                  VeltoGis::ImportExport::ImpexEntityList& entities, ResolvedBinds::RoleOfTarget roleOf)
        : binds_(binds, run, roleOf), entities_(entities), values_(run.Values())
    {
    }

    void ExpectLines(std::uint64_t lineCount) override
    {
        if (binds_.Given())
            ReserveForLines(entities_, lineCount);
    }

    void ImportLine(LineFields& fields) override
    {
        if (!binds_.Given())
            return;
        auto entity = values_.NewEntity<Entity>(binds_.ValueCount());
        for (const ResolvedBind& bind : binds_) {
            const WString* field = bind.Field(fields);
            if (field && bind.role == BindRole::Name)
                nameRule_.Apply(*entity, *bind.bind, *field);
            else if (field && bind.role != BindRole::Attribute && TakeField(*entity, bind, *field))
                continue;
            AddBindValue(values_, *entity, bind, field);
        }
        if (Finish(*entity))
            entities_.push_back(std::move(entity));
    }

    virtual ~EntityBuilder() = default;

protected:
    ValueFactory& Values() { return values_; }

    // A bind with one of the builder's own roles (neither an attribute nor the name) whose
    // field is on this line. Returns true when it has appended the bind's value itself.
    virtual bool TakeField(Entity&, const ResolvedBind&, const WString&) { return false; }
    // After the last bind of the line; false discards the entity. Every entity is kept unless
    // the builder says otherwise.
    virtual bool Finish(Entity&) { return true; }

private:
    ResolvedBinds binds_;
    VeltoGis::ImportExport::ImpexEntityList& entities_;
    EntityNameRule nameRule_;
    ValueFactory& values_;
};
