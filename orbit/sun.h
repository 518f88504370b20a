#pragma once

#include "orbit/vector.h"

namespace pelorin::orbit {

/// The Sun's inertial position in km, w = distance: low-precision theory (Meeus, 1979), good to 0.02°.
void SunPosition(double julianDate, Vector& position);

}  // namespace pelorin::orbit
