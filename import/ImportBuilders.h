#pragma once
// The builders behind the import engine's slots. Each reads its configuration and binds as
// its slot requires and returns 1 when the file was read, 0 when there was no file to read.

#include "host/ImpexEngines.h"

namespace ImportBuilders {

// Points from the primary (secondary != 0: secondary) configuration and binds; filter may be null.
int ImportPoints(VeltoGis::ImportExport::CImportDefinition& definition,
                 VeltoGis::ImportExport::ImpexEntityList& entities, int secondary, VeltoGis::ImportExport::CLq* filter);

// Lines named by their end nodes, from the primary configuration and binds.
int ImportLines(VeltoGis::ImportExport::CImportDefinition& definition,
                VeltoGis::ImportExport::ImpexEntityList& entities);

// Polygons (name and values only) from the primary configuration, matched against the
// secondary binds when the job reads section nodes.
int ImportPolygons(VeltoGis::ImportExport::CImportDefinition& definition,
                   VeltoGis::ImportExport::ImpexEntityList& entities);

// Cloud points from the X and Y binds.
int ImportCloud(VeltoGis::ImportExport::CImportDefinition& definition, VeltoGis::ImportExport::CCloud& cloud);

// Data-table rows: every line (up to maxLines when 1 or more), the lines whose upper-cased
// key is in keys, or the lines whose empty key converts to keyValue.
int ImportTableRows(const WString& configuration, VeltoGis::ImportExport::CDBTable& table, int maxLines);
int ImportLinkedTableRows(const WString& configuration, VeltoGis::ImportExport::CDBTable& table,
                          const VeltoGis::ImportExport::KeySet& keys);
int UpdateLinkedTableRows(const WString& configuration, VeltoGis::ImportExport::CDBTable& table,
                          const VeltoGis::Data::CDataBox* keyValue);

} // namespace ImportBuilders
