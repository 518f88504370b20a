#pragma once

#include <QString>
#include <QTimeZone>
#include <optional>

#include "orbit/date_time.h"

namespace pelorin::app {

/// The clock on the wall at one moment.
struct LocalClock {
  int OffsetMinutes = 0;    ///< ahead of UTC
  bool IsDaylight = false;  ///< the later one of the year's two clocks
  QString Name;             ///< such as "CET", at most 32 characters
};

/// What the clocks of one year are ahead of UTC, in minutes. Twice the same where they are not changed.
struct YearOffsets {
  int StandardMinutes = 0, DaylightMinutes = 0;
};

/// A time zone through the years, as the zone database has it.
///
/// Standard time is the clock that is less ahead of UTC in its year, daylight time the other one. Databases
/// differ in what they call the clocks of Dublin in winter and of Casablanca in Ramadan; people there do not.
class TimeZone {
 public:
  /// Without a zone: one that is not known.
  explicit TimeZone(QTimeZone zone = {});

  /// Nothing where the zone is not known.
  std::optional<LocalClock> At(orbit::TDateTime utc) const;
  /// Both 0 where the zone is not known.
  YearOffsets OffsetsIn(int year) const;

 private:
  QTimeZone zone_;
};

/// The zone that the computer is set to.
TimeZone LocalTimeZone();

/// The local time of a moment with the clock's name: in standard time with the month in English words, in
/// daylight time as the user's locale writes date and time. Empty where the zone is not known.
QString LocalTimeHint(orbit::TDateTime utc, const TimeZone& zone);

}  // namespace pelorin::app
