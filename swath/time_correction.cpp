#include "swath/time_correction.h"

#include <QStringList>
#include <algorithm>
#include <cmath>

namespace pelorin::swath {
namespace {

double ToStep(double seconds) {
  constexpr double limit = TimeCorrection::kLimitS, step = TimeCorrection::kStepS;
  return std::clamp(std::round(seconds / step) * step, -limit, limit);
}

}  // namespace

TimeCorrection::TimeCorrection(const QString& saved) {
  for (const QString& entry : saved.split(u';', Qt::SkipEmptyParts)) {
    const qsizetype sign = entry.lastIndexOf(u'=');
    bool isNumber = false;
    const double seconds = entry.mid(sign + 1).toDouble(&isNumber);
    if (sign > 0 && isNumber && std::isfinite(seconds)) clocks_[entry.left(sign)] = ToStep(seconds);
  }
}

double TimeCorrection::Begin(const QString& satellite, std::optional<int> secondsOfName) {
  satellite_ = satellite;
  secondsOfName_ = secondsOfName;
  if (!secondsOfName) return 0;
  const auto clock = clocks_.find(satellite);
  return ToStep(*secondsOfName + (clock == clocks_.end() ? 0 : clock->second));
}

double TimeCorrection::Change(double seconds) {
  const double correction = ToStep(seconds);
  if (secondsOfName_ && !satellite_.isEmpty()) clocks_[satellite_] = correction - *secondsOfName_;
  return correction;
}

QString TimeCorrection::Saved() const {
  QStringList entries;
  for (const auto& [satellite, seconds] : clocks_) {
    if (seconds != 0) entries.append(satellite + u'=' + QString::number(seconds, 'f', 1));
  }
  return entries.join(u';');
}

}  // namespace pelorin::swath
