#pragma once

#include <array>
#include <vector>

#include "orbit/look_angles.h"
#include "orbit/propagation.h"

/// The culminations of a satellite over a station: the moments at which it stands highest, below the horizon
/// as well as above. Nearly every turn round the Earth has one. Times are Julian dates, UTC.
namespace pelorin::orbit {

/// A satellite at one moment, and how high it stands over the station.
struct ElevationSample {
  double Jd = 0;
  double AboveMinimum = 0;  ///< elevation as LookAngles reports it, less the minimum elevation; radians
  SatelliteState State;
};

/// The elevation as a function of time.
class ElevationFunction {
 public:
  /// Borrows the satellite.
  ElevationFunction(const TSatellite& satellite, const Observer& observer, double minElevationRad)
      : satellite_(satellite), frame_(observer), minElevationRad_(minElevationRad) {}

  double MinElevationRad() const { return minElevationRad_; }

  ElevationSample operator()(double jd);
  /// The same, and kept: the windows of a search share their ends.
  ElevationSample Keep(double jd);

 private:
  const TSatellite& satellite_;
  ElevationFrame frame_;
  double minElevationRad_;
  std::array<ElevationSample, 4> kept_{};
  std::size_t nextKept_ = 0;
};

/// A stretch of time to search, and the orbit's period in it, in days.
struct CulminationSpan {
  double From = 0, To = 0;
  double Period = 0;
  bool IsDeepSpace = false;
};

/// The culminations by hops, in time order, from the period before the span to the first one after it. From
/// one to the next it is about a period, and there it is looked for; each is told as a moment up to a minute
/// before the true one. High latitudes and eccentric orbits have culminations that the hops pass over.
std::vector<ElevationSample> HopCulminations(ElevationFunction& elevation, const CulminationSpan& span);

/// The culminations of the span that are more than a fifth of a period from every one of `found`, which are
/// in time order, as the result is. Looks at all of the span; up to a minute early, too.
std::vector<ElevationSample> MissedCulminations(ElevationFunction& elevation, const CulminationSpan& span,
                                                const std::vector<ElevationSample>& found);

}  // namespace pelorin::orbit
