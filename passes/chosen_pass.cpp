#include "passes/chosen_pass.h"

#include "orbit/scalar_math.h"

namespace pelorin::passes {
namespace {

constexpr qsizetype kStampLength = 10;  // "mmddhhnnss"
constexpr qsizetype kMinuteLength = 8;  // "mmddhhnn"

/// The text up to the next blank; what follows it stays in `rest`, trimmed.
QStringView TakeField(QStringView& rest) {
  qsizetype end = rest.indexOf(u' ');
  if (end < 0) end = rest.size();
  const QStringView field = rest.first(end);
  rest = rest.sliced(end).trimmed();
  return field;
}

}  // namespace

ChosenPass ParseSelectedPass(const QString& entry, orbit::TDateTime passListDate) {
  QStringView rest(entry);
  const QStringView stamp = TakeField(rest);
  const QStringView direction = TakeField(rest);
  TakeField(rest);  // the longitude at culmination
  bool isNumber = false;
  const qint64 seconds = TakeField(rest).toInt(&isNumber);
  if (stamp.size() != kStampLength || (direction != u'N' && direction != u'S') || !isNumber || seconds < 0 ||
      rest.isEmpty()) {
    throw orbit::ConvertError("'" + entry.toStdString() + "' is not a pass of the list");
  }
  ChosenPass pass;
  // Without the seconds: the picker that shows the start has none.
  pass.PassStart = orbit::ParseTimeString(stamp.first(kMinuteLength).toString().toStdString(), passListDate);
  pass.SouthBound = direction == u'S';
  pass.PassDurationMinutes = static_cast<int>((seconds + 59) / 60);
  pass.SatelliteName = rest.toString();
  return pass;
}

}  // namespace pelorin::passes
