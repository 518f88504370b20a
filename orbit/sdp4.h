#pragma once

#include "orbit/propagator_state.h"
#include "orbit/satellite.h"
#include "orbit/vector.h"

namespace pelorin::orbit {

/// Deep-space model, initialisation.
Sdp4State InitialiseSdp4(const TSatellite& satellite);

/// Deep-space model: position (Earth radii) and velocity (Earth radii per minute) `tsince` minutes after the
/// epoch. The result depends on `tsince` alone; the state only remembers how far the integrator has walked.
void Sdp4(const Sdp4State& state, double tsince, Vector& position, Vector& velocity);

}  // namespace pelorin::orbit
