#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pelorin::orbit {

/// One pass as a line of text: "mmddhhnnss" of the rise, "N" or "S" at culmination, longitude below the
/// satellite at culmination (whole degrees), maximum elevation (whole degrees), duration (seconds) and the
/// satellite's name, which may hold blanks. For example  1115143005 S 357 63 781 NOAA 15.
struct PassInfo {
  std::string AosStamp;
  bool SouthBound = false;
  std::string LongitudeDeg, MaxElevationDeg;
  int DurationSeconds = 0;
  std::string Name;

  std::string ToText() const;
  /// The line of the pass list and of "PassList.txt": without the elevation.
  std::string ToListEntry() const;
  /// Nothing when the line has not all fields.
  static std::optional<PassInfo> FromText(std::string_view line);
};

}  // namespace pelorin::orbit
