#include "orbit/propagation.h"

#include <cmath>

#include "orbit/date_time.h"
#include "orbit/model_constants.h"
#include "orbit/sdp4.h"
#include "orbit/sgp4.h"

namespace pelorin::orbit {
namespace {

/// Beyond, the Sun's pull is stronger than the Earth's: the radius of its sphere of influence (Hill), km.
constexpr double kFarthestKm = 1.5e6;

}  // namespace

void PropagateSinceEpoch(const TSatellite& satellite, double tsince, Vector& position, Vector& velocity) {
  PropagatorState& state = satellite.Propagator;
  if (std::holds_alternative<std::monostate>(state)) {
    if (satellite.IsDeepSpace) {
      state = InitialiseSdp4(satellite);
    } else {
      state = InitialiseSgp4(satellite);
    }
  }
  if (const auto* deep = std::get_if<Sdp4State>(&state)) {
    Sdp4(*deep, tsince, position, velocity);
  } else if (const auto* near = std::get_if<Sgp4State>(&state)) {
    Sgp4(*near, tsince, position, velocity);
  }
}

void Propagate(const TSatellite& satellite, double julianDate, Vector& position, Vector& velocity) {
  PropagateSinceEpoch(satellite, (julianDate - satellite.Epoch) * kMinutesPerDay, position, velocity);
}

void ConvertSatState(Vector& position, Vector& velocity) {
  const auto scale = [](Vector& v, double factor) {
    v.x *= factor;
    v.y *= factor;
    v.z *= factor;
    Magnitude(v);
  };
  scale(position, XKMPER);
  scale(velocity, XKMPER / kSecondsPerMinute);
}

SatelliteState SatelliteStateKm(const TSatellite& satellite, double julianDate) {
  SatelliteState state;
  Propagate(satellite, julianDate, state.Position, state.Velocity);
  ConvertSatState(state.Position, state.Velocity);
  return state;
}

bool IsAboveTheEarth(const SatelliteState& state, const Geodetic& below) {
  return state.Position.w <= kFarthestKm && std::isfinite(state.Velocity.w) && below.Altitude >= 0;
}

bool CanPropagate(const TSatellite& satellite) {
  const double minutes = satellite.PeriodDays() * kMinutesPerDay;
  if (!(minutes > 0 && minutes <= 366 * kMinutesPerDay)) return false;
  const double semiMajorAxis = std::pow(XKE / satellite.MeanMotion, kTwoThirds);
  if (!(semiMajorAxis * (1 - satellite.Eccentricity) >= AE)) return false;
  const SatelliteState state = SatelliteStateKm(satellite, satellite.Epoch);
  return std::isfinite(state.Velocity.w) && state.Position.w > XKMPER * 0.99;
}

}  // namespace pelorin::orbit
