#pragma once
// A job's binds matched once against the configuration's columns, so that the walk over
// the binds on every line neither copies ids nor searches columns again. The result is the
// same as looking each bind's column up on every line: a negative column number still
// throws when a line reaches that bind.

#include "host/ImpexData.h"
#include "import/FieldValues.h"
#include "import/ImportRun.h"
#include "import/ImportTargets.h"

#include <boost/shared_ptr.hpp>

#include <vector>

struct ResolvedBind {
    VeltoGis::ImportExport::CDataBind* bind;
    BindRole role;
    const CColumnData* column; // the column named by the source id, or null

    // The bind's field on this line, or null (no column, or the line is too short). A
    // negative column number throws std::invalid_argument.
    const WString* Field(const LineFields& fields) const { return ColumnField(fields, column); }
};

class ResolvedBinds {
public:
    // What a builder makes of a target; LeftOut leaves the bind out entirely.
    using RoleOfTarget = BindRole (*)(const WString& targetId);

    // Matches the binds against the run's columns and tells the run how far the builder
    // reads a line. Null entries of the collection are skipped; a null collection gives no
    // binds. The collection is kept for as long as the binds are.
    ResolvedBinds(const boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>& binds, ImportRun& run,
                  RoleOfTarget roleOf);

    // False for a null collection (as opposed to one without binds).
    bool Given() const { return collection_ != nullptr; }
    std::vector<ResolvedBind>::const_iterator begin() const { return binds_.begin(); }
    std::vector<ResolvedBind>::const_iterator end() const { return binds_.end(); }
    // How many binds name a column: the number of values an entity receives per line.
    std::size_t ValueCount() const { return valueCount_; }

private:
    boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection> collection_;
    std::vector<ResolvedBind> binds_;
    std::size_t valueCount_ = 0;
};
