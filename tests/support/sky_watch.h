#pragma once

#include <cmath>
#include <vector>

#include "orbit/look_angles.h"
#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::tests {

/// A pass as somebody saw it; times are Julian dates, of the last look before or the first one after.
struct SeenPass {
  double Rise = 0, Top = 0, Set = 0;
  double TopDeg = -90, LongitudeAtTopDeg = 0;
  bool SouthBound = false;  ///< at the top

  double Seconds() const { return std::round((Set - Rise) * 86400); }
};

/// What somebody sees who looks at the satellite every `stepS` seconds from `from` to `to`: each time above
/// the minimum elevation that begins and ends in this span.
inline std::vector<SeenPass> WatchTheSky(const orbit::TSatellite& satellite, orbit::Observer observer,
                                         double minDeg, double from, double to, double stepS) {
  std::vector<SeenPass> seen;
  bool wasUp = true, isWatched = false;
  for (long look = 0; from + static_cast<double>(look) * stepS / 86400 < to; ++look) {
    const double jd = from + static_cast<double>(look) * stepS / 86400;
    const orbit::SatelliteState state = SatelliteStateKm(satellite, jd);
    orbit::LookAngleSet angles;
    bool visible = false;
    LookAngles(state.Position, state.Velocity, observer, jd, angles, visible);
    const double degrees = orbit::Degrees(angles.Elevation);
    const bool isUp = degrees > minDeg;
    if (isUp && !wasUp) {
      seen.push_back({jd});
      isWatched = true;
    }
    if (isWatched && degrees > seen.back().TopDeg) {
      orbit::Geodetic below;
      SatLatLonAlt(state.Position, jd, below);
      seen.back().Top = jd;
      seen.back().TopDeg = degrees;
      seen.back().LongitudeAtTopDeg = orbit::Degrees(below.Longitude);
      seen.back().SouthBound = state.Velocity.z < 0;
    }
    if (isWatched && !isUp) {
      seen.back().Set = jd;
      isWatched = false;
    }
    wasUp = isUp;
  }
  if (isWatched) seen.pop_back();
  return seen;
}

}  // namespace pelorin::tests
