#pragma once
// Whether a position lies in the area of use that the coordinate system's authority gives it.

#include "tessel/gis/CoordinateSystem.h"

#include <functional>

namespace tessel {

// A test of X (easting), Y (northing) in the coordinate system: true when the position,
// taken to geographic coordinates, lies in the system's area of use. Empty when GDAL knows
// no area of use for it or cannot take its positions to geographic coordinates.
std::function<bool(double x, double y)> AreaOfUseTest(const CoordinateSystem& crs);

} // namespace tessel
