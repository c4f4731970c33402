#pragma once
// The one procedure behind the three writers of the text export engine. It reads the job's
// configuration and binds, settles the output file with the user, writes the header line and
// one delimited line per entity, and drives the host's progress bar. The writers differ only
// in where the value of (entity, column) comes from, which each supplies as a value source.

#include "host/ImpexDefinitions.h"
#include "host/ImpexData.h"

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <vector>

using ExportBindList = std::vector<boost::shared_ptr<VeltoGis::ImportExport::CDataBind>>;

class ExportValueSource {
public:
    virtual ~ExportValueSource();
    virtual std::size_t EntityCount() const = 0;
    // False when some bind cannot be served at all (it has no source definition to read
    // through); the export then stops before the output file is touched.
    virtual bool CanServe(const ExportBindList& binds) const = 0;
    // The value of the entity's column, or null when there is none. bind may be null (an
    // empty bind). The writer transforms the value for export in place; it stays valid until
    // the next call.
    // Entities are asked for in order, each once, its columns one after the other.
    virtual VeltoGis::Data::CDataBox* ValueOf(std::size_t entity, std::size_t column,
                                              const VeltoGis::ImportExport::CDataBind* bind) = 0;
};

// The entities of the framework's list, each carrying its values in bind order.
class ImpexEntityValues : public ExportValueSource {
public:
    explicit ImpexEntityValues(VeltoGis::ImportExport::ImpexEntityList& entities) : entities_(entities) {}
    std::size_t EntityCount() const override { return entities_.size(); }

protected:
    // The entity's values; null for a missing entity. The first call for an entity starts
    // fetching the ones that follow.
    VeltoGis::ImportExport::DataValueList* ValuesOf(std::size_t entity)
    {
        if (entity != fetchedFor_) {
            FetchAhead(entity);
            fetchedFor_ = entity;
        }
        VeltoGis::ImportExport::CImpexEntity* item = entities_[entity].get();
        return item ? item->GetData() : nullptr;
    }

private:
    // Each entity is a chain of objects (the entity, its value list, its values) that the
    // host made one by one: the next entities' links are fetched a few steps apart, so that
    // the walk does not wait for memory at every link.
    void FetchAhead(std::size_t entity) const;

    VeltoGis::ImportExport::ImpexEntityList& entities_;
    std::size_t fetchedFor_ = static_cast<std::size_t>(-1);
};

// True when every bind is there and names its source field.
bool EveryBindHasSource(const ExportBindList& binds);

// Writes the job's file from the source. The main configuration and binds apply when the
// job's entity type is mainEntityType, the node ones otherwise. Returns 1 when the file was
// written to the end and closed without error, 0 when there was nothing to do, the user
// cancelled, the file could not be opened, the source could not serve the binds, or a write
// failed (which an alert names). Whenever it returns 0 an existing file is byte for byte as
// it was. Exceptions of the source leave the procedure; the file and the progress bar are
// put right.
int RunEntityExport(VeltoGis::ImportExport::CExportDefinition* definition, VeltoGis::enmEntityType mainEntityType,
                    ExportValueSource& source);
