#pragma once

#include <QString>

namespace pelorin::app {

/// The local time zone: minutes east of UTC in standard and in daylight time, and what the two are called.
/// Both offsets are 0 where the system does not tell; a zone without daylight time has the standard offset
/// twice.
struct TimeZoneDetails {
  int StandardOffsetMinutes = 0;
  int DaylightOffsetMinutes = 0;
  QString StandardName, DaylightName;
};

/// The zone that the computer is set to, as it is this year.
TimeZoneDetails LocalTimeZone();

}  // namespace pelorin::app
