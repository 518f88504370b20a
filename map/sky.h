#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/propagation.h"
#include "orbit/satellite.h"

/// What stands above the ground at one moment, before it is brought on a map: satellites, their last minutes,
/// and the Sun.
namespace pelorin::map {

struct PlaceBelow {
  double LatitudeDeg = 0;
  double LongitudeDeg = 0;  ///< (−180, 180]
  double AltitudeKm = 0;
};

struct TrackedSatellite {
  const orbit::TSatellite* Satellite = nullptr;
  orbit::SatelliteState State;
  PlaceBelow Now;
  std::vector<PlaceBelow> Trail;  ///< one a minute before, the oldest first
};

struct Sky {
  double Jd = 0;
  std::vector<TrackedSatellite> Satellites;  ///< in the order given
  QStringList NotDrawable;                   ///< names of those that have no sensible position
  PlaceBelow Sun;                            ///< the altitude is not set

  /// Null when the satellite is not among those that are tracked.
  const TrackedSatellite* Find(const orbit::TSatellite* satellite) const;
};

/// Each satellite is propagated to the time and to `trailMinutes` minutes before it. One that is below the
/// ground, farther than any satellite of the Earth, or nowhere at all, is told as not drawable.
Sky SkyAt(const std::vector<const orbit::TSatellite*>& satellites, orbit::TDateTime time, int trailMinutes);

/// The sky of the last question, so that a map which is only painted anew, resized, or has another satellite
/// selected propagates nothing twice. The satellites are borrowed.
class SkyKeeper {
 public:
  /// Good until the next question. Its trails may be longer than asked for.
  const Sky& At(const std::vector<const orbit::TSatellite*>& satellites, orbit::TDateTime time,
                int trailMinutes);

  /// The satellites have other elements now, or are others at the same addresses.
  void Forget() { trailMinutes_ = -1; }

 private:
  std::vector<const orbit::TSatellite*> satellites_;
  orbit::TDateTime time_;
  int trailMinutes_ = -1;  ///< of the sky at hand; −1: there is none
  Sky sky_;
};

/// "Not drawable: COSMOS 2405, FENGYUN 1A"; empty when there is none, and cut when there are many.
QString NotDrawableTip(const QStringList& names);

}  // namespace pelorin::map
