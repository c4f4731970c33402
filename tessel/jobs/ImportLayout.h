#pragma once
// What the layout options make of an import request before the job is built: --preset (a
// survey preset's name, or "auto") fills the delimiters, columns, header lines and binds
// exactly as if they had been given on the command line (explicit --binds win), and
// --header-lines is checked against the file.

#include "tessel/core/Requests.h"
#include "ui/SurveyPresets.h"

#include <functional>
#include <ostream>
#include <vector>

namespace tessel {

// The shipped presets, then the user's own. Each user preset file that is none is named on
// err and left out.
std::vector<SurveyPreset> KnownPresets(std::ostream& err);

// The preset of that name; throws a usage AppError listing the known ones when none has it.
const SurveyPreset& PresetNamed(const std::vector<SurveyPreset>& presets, const std::string& name,
                                const char* option);

// The request the job is built from. areaOfUse (may be empty) orders northing and easting
// for "auto". Says on err which preset "auto" chose; throws a usage AppError when it cannot
// decide (listing the candidates), when no preset fits, or when --header-lines exceeds the
// lines the file has that are not comments.
ImportRequest ResolveImportLayout(const ImportRequest& request, const std::function<bool(double, double)>& areaOfUse,
                                  std::ostream& err);

} // namespace tessel
