#include "swath/clock_corrections.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

#include "orbit/number_text.h"

namespace pelorin::swath {

double ToOffsetStep(double seconds) {
  return std::clamp(std::round(seconds / kOffsetStepS) * kOffsetStepS, -kOffsetLimitS, kOffsetLimitS);
}

ClockCorrections::ClockCorrections(const QString& saved) {
  for (const QString& entry : saved.split(u';', Qt::SkipEmptyParts)) {
    const qsizetype sign = entry.lastIndexOf(u'=');
    const std::optional<double> seconds = orbit::DecimalNumber(entry.mid(sign + 1).toStdString());
    if (sign > 0 && seconds) clocks_[entry.left(sign)] = ToOffsetStep(*seconds);
  }
}

double ClockCorrections::OffsetOf(const Recording& recording) const {
  const auto clock = clocks_.find(recording.Satellite);
  return recording.StartIsFrom == StartFrom::NameSecond && clock != clocks_.end() ? clock->second : 0;
}

void ClockCorrections::Learn(const Recording& recording) {
  if (recording.StartIsFrom != StartFrom::NameSecond || recording.Satellite.isEmpty()) return;
  clocks_[recording.Satellite] = recording.OffsetS;
}

QString ClockCorrections::Saved() const {
  QStringList entries;
  for (const auto& [satellite, seconds] : clocks_) {
    if (seconds != 0) entries.append(satellite + u'=' + QString::number(seconds, 'f', 1));
  }
  return entries.join(u';');
}

}  // namespace pelorin::swath
