#pragma once

#include "orbit/propagator_state.h"
#include "orbit/satellite.h"
#include "orbit/vector.h"

namespace pelorin::orbit {

/// Near-Earth model, initialisation.
Sgp4State InitialiseSgp4(const TSatellite& satellite);

/// Near-Earth model: position (Earth radii) and velocity (Earth radii per minute) `tsince` minutes after the
/// epoch.
void Sgp4(const Sgp4State& state, double tsince, Vector& position, Vector& velocity);

}  // namespace pelorin::orbit
