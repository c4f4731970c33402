#pragma once
// A job's binds matched once against the configuration's columns, so that the walk over
// the binds on every line neither copies ids nor searches columns again. The result is the
// same as looking each bind's column up on every line: a negative column number still
// throws when a line reaches that bind.

#include "host/ImpexData.h"
#include "import/FieldValues.h"
#include "import/ImportRun.h"

#include <vector>

struct ResolvedBind {
    VeltoGis::ImportExport::CDataBind* bind;
    int role;                  // what the builder makes of the target; see RoleOfTarget
    const CColumnData* column; // the column named by the source id, or null

    // The bind's field on this line, or null (no column, or the line is too short). A
    // negative column number throws std::invalid_argument.
    const WString* Field(const LineFields& fields) const { return ColumnField(fields, column); }
};

class ResolvedBinds {
public:
    // Maps a target id to a builder's role; a negative role leaves the bind out entirely.
    using RoleOfTarget = int (*)(const WString& targetId);

    // Null entries of the collection are skipped; a null collection gives no binds.
    ResolvedBinds(VeltoGis::ImportExport::CDataBindCollection* binds, const ImportTxtConfiguration::ColumnList& columns,
                  RoleOfTarget roleOf);

    std::vector<ResolvedBind>::const_iterator begin() const { return binds_.begin(); }
    std::vector<ResolvedBind>::const_iterator end() const { return binds_.end(); }
    // The highest column number among the binds' columns, -1 when none.
    int HighestColumnNo() const;
    // How many binds name a column: the number of values an entity receives per line.
    std::size_t ValueCount() const { return valueCount_; }

private:
    std::vector<ResolvedBind> binds_;
    std::size_t valueCount_ = 0;
};
