#include "swath/attitude_corrections.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "orbit/comma_text.h"
#include "orbit/number_text.h"

namespace pelorin::swath {
namespace {

QString KeyOf(const Recording& recording) {
  const QString number = QString::fromStdString(recording.Elements->CatalogueKey());
  const QString craft =
      number.isEmpty() ? QString::fromStdString(recording.Elements->Name).toUpper() : number;
  return QStringLiteral("%1/%2").arg(craft).arg(recording.SeenBy.Line.Columns);
}

/// To the hundredth of a degree: a tenth of a column.
double Possible(double degrees) {
  return std::clamp(std::round(degrees * 100) / 100, -kMostTurnedDeg, kMostTurnedDeg);
}

/// "-0.40/0.00/1.25"; nothing for anything else.
std::optional<Attitude> ParseAngles(const QString& text) {
  std::vector<double> angles;
  for (const QString& part : text.split(u'/')) {
    const auto angle = orbit::DecimalNumber(part.toStdString());
    if (!angle || !(std::fabs(*angle) <= kMostTurnedDeg)) return std::nullopt;
    angles.push_back(*angle);
  }
  return angles.size() == 3 ? std::optional(Attitude{angles[0], angles[1], angles[2]}) : std::nullopt;
}

}  // namespace

AttitudeCorrections::AttitudeCorrections(const QString& saved) {
  for (const std::string& item : orbit::SplitCommaText(saved.toStdString())) {
    const QString entry = QString::fromStdString(item);
    const qsizetype sign = entry.lastIndexOf(u'=');
    const auto angles = ParseAngles(entry.mid(sign + 1));
    if (sign > 0 && angles) own_[entry.left(sign)] = *angles;
  }
}

void AttitudeCorrections::TakeOwn(Recording& recording) const {
  const auto own = own_.find(KeyOf(recording));
  if (own == own_.end()) return;
  recording.Offsets = own->second;
  recording.OffsetsAreFrom = KnownFrom::User;
}

void AttitudeCorrections::Learn(const Recording& recording, const Attitude& own) {
  own_[KeyOf(recording)] = {Possible(own.RollDeg), Possible(own.PitchDeg), Possible(own.YawDeg)};
}

void AttitudeCorrections::Forget(const Recording& recording) { own_.erase(KeyOf(recording)); }

QString AttitudeCorrections::Saved() const {
  std::vector<std::string> entries;
  for (const auto& [key, own] : own_) {
    entries.push_back(QStringLiteral("%1=%2/%3/%4")
                          .arg(key)
                          .arg(own.RollDeg, 0, 'f', 2)
                          .arg(own.PitchDeg, 0, 'f', 2)
                          .arg(own.YawDeg, 0, 'f', 2)
                          .toStdString());
  }
  return QString::fromStdString(orbit::JoinCommaText(entries));
}

}  // namespace pelorin::swath
