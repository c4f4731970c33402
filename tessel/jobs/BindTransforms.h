#pragma once
// The value transforms this host gives data binds, by name. A transform changes a value in
// place; the same transform serves both directions (import: the field read from the file,
// export: the entity's value before it is written).

#include "host/ImpexData.h"
#include "tessel/core/Requests.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace tessel {

// The names known, for help texts and error lines.
const std::vector<std::string>& TransformNames();

// The transform of that name; throws a usage AppError for an unknown name.
//   upper, lower  text in capitals / small letters (other values unchanged)
//   trim          text without leading and trailing blanks
//   null          every value becomes null
//   text          any value becomes its text form
//   real, integer text becomes the number it starts with (0 when none); numbers convert
VeltoGis::ImportExport::CDataBind::Transform FindTransform(const std::string& name);

// Gives every bind of the collections (null ones skipped) whose target a choice names that
// choice's transform, in both directions. Throws a usage AppError for an unknown transform or a
// target that no bind has.
void ApplyTransforms(const std::vector<TransformOption>& choices,
                     const std::vector<boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>>& collections);

} // namespace tessel
