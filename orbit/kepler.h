#pragma once

#include "orbit/propagator_state.h"
#include "orbit/vector.h"

namespace pelorin::orbit {

/// From mean elements to position (Earth radii) and velocity (Earth radii per minute): long-period terms,
/// Kepler's equation, short-period terms, orientation. The `w` components are not set.
void StateFromMeanOrbit(const OrbitTerms& terms, const MeanOrbit& mean, Vector& position, Vector& velocity);

}  // namespace pelorin::orbit
