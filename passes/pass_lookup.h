#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/observer.h"
#include "orbit/pass_search.h"
#include "orbit/satellite.h"
#include "passes/chosen_pass.h"

namespace pelorin::passes {

/// The passes of a satellite that rise on a day, in time order. A list of that day has those that culminate
/// on it; here are also those that culminate after its midnight, and not those that rose before.
std::vector<orbit::Pass> PassesRisingOn(orbit::TDateTime day, const orbit::TSatellite& satellite,
                                        const orbit::Observer& station, double minElevationDeg);

/// What became of a pass string.
struct PassMatch {
  QString Entry;          ///< the pass in the form of the list; empty when no pass matches
  ChosenPass Pass;        ///< the same, read
  QString Key;            ///< the key as last tried
  orbit::TDateTime Time;  ///< the moment that the pass string names
};

/// Finds the pass that a pass string, "mmddhhnnss" or "yyyymmddhhnnss" with or without the seconds, means:
/// of the satellites' passes that rise on its day the first whose list entry begins with it. Receiving
/// programs name a picture by the moment at which recording began, seconds to minutes off the predicted rise;
/// therefore the seconds are given up one digit at a time. Without a year it is the year of `now`. Raises
/// ConvertError.
PassMatch FindPassByString(const QString& passString, const std::vector<orbit::TSatellite>& satellites,
                           const orbit::Observer& station, double minElevationDeg, orbit::TDateTime now);

/// What the user reads when no pass matches.
QString NoMatchText(const QString& passString, const QString& key);

}  // namespace pelorin::passes
