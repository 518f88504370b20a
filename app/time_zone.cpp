#include "app/time_zone.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <utility>

namespace pelorin::app {
namespace {

constexpr int kLongestName = 32;

QDateTime UtcMoment(orbit::TDateTime utc) {
  const orbit::DateTimeFields fields = TakeApart(utc);
  return {QDate(fields.Year, fields.Month, fields.Day), QTime(fields.Hour, fields.Minute, fields.Second),
          Qt::UTC};
}

/// The locale's long time without the zone that some locales put into it: the clock's name stands behind it.
QString LongTimePattern(const QLocale& locale) {
  QString pattern;
  bool quoted = false;
  for (const QChar letter : locale.timeFormat(QLocale::LongFormat)) {
    if (letter == u'\'') quoted = !quoted;
    if (quoted || letter != u't') pattern += letter;
  }
  return pattern.remove(QStringLiteral("()")).remove(QStringLiteral("[]")).simplified();
}

}  // namespace

TimeZone::TimeZone(QTimeZone zone) : zone_(std::move(zone)) {}

std::optional<LocalClock> TimeZone::At(orbit::TDateTime utc) const {
  if (!zone_.isValid()) return std::nullopt;
  const QDateTime moment = UtcMoment(utc);
  const int offset = zone_.offsetFromUtc(moment) / 60;
  return LocalClock{offset, offset > OffsetsIn(moment.date().year()).StandardMinutes,
                    zone_.abbreviation(moment).left(kLongestName)};
}

YearOffsets TimeZone::OffsetsIn(int year) const {
  if (!zone_.isValid()) return {};
  const QDateTime begin = QDate(year, 1, 1).startOfDay(Qt::UTC);
  const int first = zone_.offsetFromUtc(begin) / 60;
  YearOffsets offsets{first, first};
  for (const QTimeZone::OffsetData& change : zone_.transitions(begin, begin.addYears(1))) {
    const int offset = change.offsetFromUtc / 60;
    offsets = {std::min(offsets.StandardMinutes, offset), std::max(offsets.DaylightMinutes, offset)};
  }
  return offsets;
}

TimeZone LocalTimeZone() { return TimeZone(QTimeZone::systemTimeZone()); }

QString LocalTimeHint(orbit::TDateTime utc, const TimeZone& zone) {
  const std::optional<LocalClock> clock = zone.At(utc);
  if (!clock) return QString();
  const QDateTime local = UtcMoment({utc.Days + clock->OffsetMinutes / orbit::kMinutesPerDay});
  const QLocale locale;
  const QString text = clock->IsDaylight
                           ? locale.toString(local.date(), QLocale::ShortFormat) + u' ' +
                                 locale.toString(local.time(), LongTimePattern(locale))
                           : QLocale::c().toString(local, QStringLiteral("yyyy MMMM dd  HH:mm:ss"));
  return text + QStringLiteral("  ") + clock->Name;
}

}  // namespace pelorin::app
