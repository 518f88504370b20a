#include "swath/clock_corrections.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "orbit/number_text.h"

namespace pelorin::swath {
namespace {

/// The name of the clock that a recording's moments are of; empty when none told them to the second.
QString ClockOf(const Recording& recording) {
  if (recording.Satellite.isEmpty()) return QString();
  if (recording.StartIsFrom == StartFrom::Stamps) return recording.Satellite + QStringLiteral(" (stamps)");
  return recording.StartIsFrom == StartFrom::NameSecond ? recording.Satellite : QString();
}

}  // namespace

double ToOffsetStep(double seconds) {
  // A whole number of steps by division: the nearest number there is, as if it had been typed.
  return std::clamp(std::round(seconds / kOffsetStepS) / (1 / kOffsetStepS), -kOffsetLimitS, kOffsetLimitS);
}

QString OffsetText(double seconds) {
  QString text = QString::number(seconds, 'f', 2);
  if (text.endsWith(u'0')) text.chop(1);
  return text;
}

ClockCorrections::ClockCorrections(const QString& saved) {
  for (const QString& entry : saved.split(u';', Qt::SkipEmptyParts)) {
    const qsizetype sign = entry.lastIndexOf(u'=');
    const std::optional<double> seconds = orbit::DecimalNumber(entry.mid(sign + 1).toStdString());
    if (sign > 0 && seconds) clocks_[entry.left(sign)] = ToOffsetStep(*seconds);
  }
}

std::optional<double> ClockCorrections::OffsetOf(const Recording& recording) const {
  const auto clock = clocks_.find(ClockOf(recording));
  return clock == clocks_.end() ? std::nullopt : std::optional(clock->second);
}

void ClockCorrections::Learn(const Recording& recording) {
  const QString clock = ClockOf(recording);
  if (!clock.isEmpty()) clocks_[clock] = recording.OffsetS;
}

void ClockCorrections::Forget(const Recording& recording) { clocks_.erase(ClockOf(recording)); }

QString ClockCorrections::Saved() const {
  QStringList entries;
  for (const auto& [satellite, seconds] : clocks_) {
    entries.append(satellite + u'=' + OffsetText(seconds));
  }
  return entries.join(u';');
}

}  // namespace pelorin::swath
