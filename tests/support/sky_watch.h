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
  double TopDeg = -90;

  double Seconds() const { return std::round((Set - Rise) * 86400); }
};

/// What somebody sees who looks at the satellite every `stepS` seconds from `from` to `to`: each time above
/// the minimum elevation that begins and ends in this span.
inline std::vector<SeenPass> WatchTheSky(const orbit::TSatellite& satellite, const orbit::Observer& observer,
                                         double minDeg, double from, double to, double stepS) {
  std::vector<SeenPass> seen;
  const orbit::ElevationFrame frame(observer);
  bool wasUp = true;
  for (long look = 0; from + static_cast<double>(look) * stepS / 86400 < to; ++look) {
    const double jd = from + static_cast<double>(look) * stepS / 86400;
    const double degrees = orbit::Degrees(frame.Elevation(SatelliteStateKm(satellite, jd).Position, jd));
    const bool isUp = degrees > minDeg;
    if (isUp && !wasUp) seen.push_back({jd});
    if (!isUp && wasUp && !seen.empty()) seen.back().Set = jd;
    wasUp = isUp;
    if (isUp && !seen.empty() && degrees > seen.back().TopDeg) {
      seen.back().Top = jd;
      seen.back().TopDeg = degrees;
    }
  }
  if (wasUp && !seen.empty()) seen.pop_back();
  return seen;
}

}  // namespace pelorin::tests
