#pragma once
// The X and Y that one line's binds give a point, for the point and the cloud builder alike.

#include "host/GisUtility.h"
#include "host/Text.h"
#include "import/ImportTargets.h"

struct PointCoordinates {
    double x = 0.0;
    double y = 0.0;
    bool xSet = false;
    bool ySet = false;

    // Reads the field of a BindRole::X or BindRole::Y bind as that coordinate, from the raw
    // text with CUtility::AtoF (no import transform); returns the number. A later bind to
    // the same coordinate wins.
    double Take(BindRole role, const WString& field)
    {
        const double value = VeltoGis::Utility::CUtility::AtoF(field.c_str());
        if (role == BindRole::X) {
            x = value;
            xSet = true;
        } else {
            y = value;
            ySet = true;
        }
        return value;
    }

    // Only both coordinates make a position.
    bool Complete() const { return xSet && ySet; }
};
