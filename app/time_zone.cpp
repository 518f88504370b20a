#include "app/time_zone.h"

#include <QDateTime>
#include <QTimeZone>

namespace pelorin::app {
namespace {

constexpr int kLongestName = 32;

}  // namespace

TimeZoneDetails LocalTimeZone() {
  const QTimeZone zone = QTimeZone::systemTimeZone();
  if (!zone.isValid()) return {};
  // A moment in winter and one in summer show both halves of the year on either hemisphere.
  const int year = QDate::currentDate().year();
  const QDateTime january(QDate(year, 1, 1), QTime(12, 0), Qt::UTC),
      july(QDate(year, 7, 1), QTime(12, 0), Qt::UTC);
  const bool daylightInJanuary = zone.isDaylightTime(january);
  const QDateTime standard = daylightInJanuary ? july : january;
  const QDateTime daylight = daylightInJanuary ? january : july;
  return {zone.offsetFromUtc(standard) / 60, zone.offsetFromUtc(daylight) / 60,
          zone.displayName(QTimeZone::StandardTime, QTimeZone::ShortName).left(kLongestName),
          zone.displayName(QTimeZone::DaylightTime, QTimeZone::ShortName).left(kLongestName),
          zone.isDaylightTime(QDateTime::currentDateTimeUtc()) ? TimeZoneDetails::Time::Daylight
                                                               : TimeZoneDetails::Time::Standard};
}

}  // namespace pelorin::app
