#pragma once
// The reserved target ids of import binds, what each builder makes of them, and what a job
// must (or may not) bind.

#include "host/ImpexEngines.h"
#include "host/Text.h"

namespace ImportTarget {
// The entity's name; for data-only jobs the key that attaches data to existing entities.
inline const WChar* const EntityName = WTEXT("ENTITY_NAME");
inline const WChar* const NodeCoordinateX = WTEXT("NODE_COORDINATE_X");
inline const WChar* const NodeCoordinateY = WTEXT("NODE_COORDINATE_Y");
inline const WChar* const NodeX = WTEXT("NODE_X");
inline const WChar* const NodeY = WTEXT("NODE_Y");
// Names of a line's starting and ending node.
inline const WChar* const NodeStart = WTEXT("NODE_S");
inline const WChar* const NodeEnd = WTEXT("NODE_E");
// Every reserved target id, in the order above.
inline const WChar* const kAll[] = {EntityName, NodeCoordinateX, NodeCoordinateY, NodeX, NodeY, NodeStart, NodeEnd};
} // namespace ImportTarget

// What a builder makes of a bind, by the bind's target. The entity builders also give every
// bind that names a column an attribute value; the cloud builder leaves out all but X and Y.
enum class BindRole { LeftOut, Attribute, Name, X, Y, StartNode, EndNode };

// Points: X answers to three targets and Y to one; the asymmetry is required ("NODE_Y" is
// only an attribute of a point). "ENTITY_NAME" names the point.
BindRole PointRoleOf(const WString& targetId);
// Point clouds: the point's X and Y targets; every other bind is left out.
BindRole CloudRoleOf(const WString& targetId);
// Lines: the node names and the name; the coordinate targets are attributes only.
BindRole LineRoleOf(const WString& targetId);
// Polygons: only the name is reserved.
BindRole PolygonRoleOf(const WString& targetId);

// True when the collection has a bind with that target and a non-empty source id.
bool IsTargetBound(VeltoGis::ImportExport::CDataBindCollection* binds, const WChar* targetId);

// Appends the targets the job must bind: "ENTITY_NAME" for a data-only job, else the two
// coordinate targets of a point job (type 1) or of a type 32 job; nothing for a null job.
void AppendRequiredTargetIds(const VeltoGis::ImportExport::CImportDefinition* definition,
                             VeltoGis::ImportExport::TargetIdList& ids);

// Appends the node and coordinate targets that a data-only job does not offer.
void AppendExcludedTargetIds(const VeltoGis::ImportExport::CImportDefinition* definition,
                             VeltoGis::ImportExport::TargetIdList& ids);

// Checks the job's binds against its entity type. Returns 1 when the job may run; on the
// first failure sets message to the host's text (8481 coordinates, 8482 entity name,
// 9001 node names) and returns 0. Polygon jobs that are not data-only and jobs of any
// other type return 0 with the message emptied.
int ValidateImportBinds(const VeltoGis::ImportExport::CImportDefinition* definition, WString& message);
