#pragma once

#include <QString>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "orbit/satellite.h"

namespace pelorin::map {

/// How a satellite stands to the station, in words.
struct SatelliteInfo {
  QString StatusText;  ///< point below and height, look angles, radio figures
  QString Title;       ///< short; the name in parentheses below the horizon
  double ElevationDeg = 0;
  bool Visible = false;
};

/// Of a state that is at hand.
SatelliteInfo InfoOf(const orbit::TSatellite& satellite, const orbit::SatelliteState& state, double jd,
                     orbit::Observer station);

/// Propagates the satellite to the moment.
SatelliteInfo InfoAt(const orbit::TSatellite& satellite, orbit::TDateTime moment,
                     const orbit::Observer& station);

}  // namespace pelorin::map
