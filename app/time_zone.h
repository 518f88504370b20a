#pragma once

#include <QString>

namespace pelorin::app {

/// The local time zone: minutes east of UTC in standard and in daylight time, and what the two are called.
/// Both offsets are 0 where the system does not tell; a zone without daylight time has the standard offset
/// twice.
struct TimeZoneDetails {
  enum class Time { Unknown, Standard, Daylight };

  int StandardOffsetMinutes = 0;
  int DaylightOffsetMinutes = 0;
  QString StandardName, DaylightName;  ///< each at most 32 characters
  Time InForce = Time::Unknown;        ///< which of the two it was when the zone was read

  /// What the clock on the wall is ahead of UTC.
  int OffsetMinutesInForce() const {
    return InForce == Time::Daylight ? DaylightOffsetMinutes : StandardOffsetMinutes;
  }
};

/// The zone that the computer is set to, as it is this year.
TimeZoneDetails LocalTimeZone();

}  // namespace pelorin::app
