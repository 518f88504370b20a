#include "map/local_time_hint.h"

#include <QDateTime>
#include <QLocale>

namespace pelorin::map {
namespace {

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

QString LocalTimeHint(orbit::TDateTime utc, const LocalClock& clock) {
  if (clock.InForce == LocalClock::Kind::Unknown) return QString();
  const auto fields = orbit::TakeApart({utc.Days + clock.OffsetMinutes / orbit::kMinutesPerDay});
  const QDate date(fields.Year, fields.Month, fields.Day);
  const QTime time(fields.Hour, fields.Minute, fields.Second);
  const QLocale locale;
  const QString text = clock.InForce == LocalClock::Kind::Standard
                           ? QLocale::c().toString(date, QStringLiteral("yyyy MMMM dd  ")) +
                                 time.toString(QStringLiteral("HH:mm:ss"))
                           : locale.toString(date, QLocale::ShortFormat) + u' ' +
                                 locale.toString(time, LongTimePattern(locale));
  return text + QStringLiteral("  ") + clock.Name;
}

}  // namespace pelorin::map
