#pragma once

#include "orbit/observer.h"
#include "orbit/satellite.h"
#include "orbit/vector.h"

namespace pelorin::orbit {

/// A satellite's state in the frame of the elements (true equator, mean equinox of date): km and km/s,
/// magnitudes set.
struct SatelliteState {
  Vector Position, Velocity;
};

/// Position (Earth radii) and velocity (Earth radii per minute) at a Julian date; magnitudes are not set. The
/// first call for a satellite initialises its model. Allocates nothing. Elements without an orbit, and times
/// far beyond a decay, give meaningless numbers or NaN, never an error.
void Propagate(const TSatellite& satellite, double julianDate, Vector& position, Vector& velocity);

/// The same for `tsince` minutes after the epoch.
void PropagateSinceEpoch(const TSatellite& satellite, double tsince, Vector& position, Vector& velocity);

/// To km and km/s, magnitudes set.
void ConvertSatState(Vector& position, Vector& velocity);

/// Propagate and ConvertSatState in one step.
SatelliteState SatelliteStateKm(const TSatellite& satellite, double julianDate);

/// Whether a state is one of a satellite of the Earth; `below` is its sub-satellite point. Past a decay the
/// model goes on with numbers that are below the ground, farther than any satellite, or none at all.
bool IsAboveTheEarth(const SatelliteState& state, const Geodetic& below);

/// Whether the elements describe an orbit at all: a turn of at most a year, a perigee above the ground, and a
/// position at the epoch.
bool CanPropagate(const TSatellite& satellite);

}  // namespace pelorin::orbit
