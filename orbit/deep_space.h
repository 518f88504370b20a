#pragma once

#include "orbit/propagator_state.h"
#include "orbit/satellite.h"

/// The Moon's, the Sun's and the resonant field's part of a deep-space orbit: Hume's routines in Hoots and
/// Roehrich, "Spacetrack Report No. 3" (1980), made a function of time alone. The report renews its lunar and
/// solar terms only every 30 minutes and walks its integrator on from the last call; here every call answers
/// for its own moment.
namespace pelorin::orbit {

/// Elements that the deep-space effects act on; radians, radians per minute.
struct DeepElements {
  double xmdf, omgadf, xnode, em, xinc, xn;
};

/// Fills the lunar, solar and resonance terms of `state`, whose orbit terms are there already.
void InitialiseDeepSpace(const TSatellite& satellite, Sdp4State& state);

/// Secular and resonance effects `t` minutes after the epoch: sets em, xinc and xn, and moves the angles.
void DeepSpaceSecular(const Sdp4State& state, double t, DeepElements& elements);

/// Lunar and solar periodic effects on top of the secular ones.
void DeepSpacePeriodic(const Sdp4State& state, double t, DeepElements& elements);

}  // namespace pelorin::orbit
