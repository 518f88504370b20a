#pragma once

#include <string>

#include "orbit/date_time.h"

namespace pelorin::orbit {

/// One pass as the search describes it. Its culmination is the search's own, up to a minute before the true
/// one; overhead the elevation is then up to some twenty degrees too low. RefineCulmination knows better.
struct PassInfo {
  TDateTime Aos;               ///< rise, UTC
  bool SouthBound = false;     ///< at culmination
  double LongitudeDeg = 0;     ///< of the point below the satellite at culmination, [0, 360)
  double MaxElevationDeg = 0;  ///< at culmination
  int DurationSeconds = 0;
  std::string Name;  ///< of the satellite; may hold blanks

  /// The pass as a line: "mmddhhnnss" of the rise, "N" or "S", longitude and elevation in whole degrees,
  /// seconds, name. For example  1115143005 S 357 63 781 NOAA 15.
  std::string ToText() const;
  /// The line of the pass list and of "PassList.txt": without the elevation.
  std::string ToListEntry() const;
};

}  // namespace pelorin::orbit
