#pragma once

#include "orbit/propagator_state.h"
#include "orbit/satellite.h"

namespace pelorin::orbit {

struct SharedTerms {
  OrbitTerms terms;
  DragTerms drag;
};

/// What both models begin with: the recovered mean motion, the atmosphere's s4 for the perigee height, the
/// drag coefficients and the secular rates.
SharedTerms InitialiseOrbitTerms(const TSatellite& satellite);

}  // namespace pelorin::orbit
