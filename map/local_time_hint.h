#pragma once

#include <QString>

#include "orbit/date_time.h"

namespace pelorin::map {

/// The clock on the wall: which time is in force, what it is ahead of UTC, and what it is called.
struct LocalClock {
  enum class Kind { Unknown, Standard, Daylight };

  Kind InForce = Kind::Unknown;
  int OffsetMinutes = 0;
  QString Name;
};

/// The local time of a moment with the clock's name: in standard time with the month in English words, in
/// daylight time as the user's locale writes date and time. Empty when the clock is not known.
QString LocalTimeHint(orbit::TDateTime utc, const LocalClock& clock);

}  // namespace pelorin::map
