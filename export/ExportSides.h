#pragma once
// Which side of an export job each writer reads: a writer reads the main configuration and
// binds when the job's entity type is the writer's own, the node ones otherwise. The writer
// procedure and every host that prepares export jobs take the rule from here.

#include "host/ImpexEngines.h"

// The entity type each writer calls its own.
constexpr VeltoGis::enmEntityType kPointWriterType = VeltoGis::EntityTypePoint;
constexpr VeltoGis::enmEntityType kLineWriterType = VeltoGis::EntityTypeLine;
constexpr VeltoGis::enmEntityType kPolygonWriterType = VeltoGis::EntityTypePolygon;

inline bool ReadsMainSide(int jobEntityType, int writerType)
{
    return jobEntityType == writerType;
}
