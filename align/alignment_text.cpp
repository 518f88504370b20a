#include "align/alignment_text.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>

#include "swath/recording_text.h"

namespace pelorin::align {
namespace {

/// "0.30° less yaw"; nothing for what is shown as 0.
void AddTurn(double degrees, const QString& name, QStringList& parts) {
  const QString amount = QString::number(std::fabs(degrees), 'f', 2);
  if (amount.toDouble() == 0) return;
  parts << (degrees > 0 ? QStringLiteral("%1° more %2") : QStringLiteral("%1° less %2")).arg(amount, name);
}

}  // namespace

QString ChanceText(double chancePeaks) {
  constexpr double million = 1e6;
  // Chance itself is not known so well that more than its power of ten would mean anything.
  const double pictures = std::pow(10, std::floor(-std::log10(std::max(chancePeaks, 1 / million))));
  if (pictures >= million) return QStringLiteral("fewer than 1 in a million");
  if (pictures < 10) return QStringLiteral("likely");
  QLocale grouping = QLocale::c();
  grouping.setNumberOptions(QLocale::DefaultNumberOptions);
  return QStringLiteral("fewer than 1 in %1").arg(grouping.toString(pictures, 'f', 0));
}

QString MovedText(const swath::Recording& before, const swath::Recording& after, bool roughly) {
  QStringList parts;
  const double laterS = after.OffsetS - before.OffsetS;
  const QString seconds = QString::number(std::fabs(laterS), 'f', roughly ? 0 : 2);
  if (seconds.toDouble() != 0) {
    parts << (laterS > 0 ? QStringLiteral("%1 s later") : QStringLiteral("%1 s earlier")).arg(seconds);
  }
  const double columns = after.ShiftColumns - before.ShiftColumns;
  const QString shift = QString::number(std::fabs(columns), 'f', 1);
  if (shift.toDouble() != 0) {
    parts << (columns > 0 ? QStringLiteral("lines %1 columns more to the right")
                          : QStringLiteral("lines %1 columns more to the left"))
                 .arg(shift);
  }
  AddTurn(after.Offsets.RollDeg - before.Offsets.RollDeg, QStringLiteral("roll"), parts);
  AddTurn(after.Offsets.YawDeg - before.Offsets.YawDeg, QStringLiteral("yaw"), parts);
  return parts.isEmpty() ? QStringLiteral("where it lies already") : parts.join(QStringLiteral(", "));
}

QString TextOf(const PictureAlignment& alignment, const swath::Recording& before) {
  switch (alignment.Is) {
    case Finding::Found:
      return QStringLiteral("Found: %1 (chance: %2).")
          .arg(MovedText(before, alignment.Aligned), ChanceText(alignment.ChancePeaks));
    case Finding::Roughly:
      return QStringLiteral("Found roughly: %1. To about 2 s, please check.")
          .arg(MovedText(before, alignment.Aligned, true));
    case Finding::NotFound:
      if (alignment.StoredAs) {
        return QStringLiteral(
                   "Not found: the picture is not stored as it is thought to be, but %1. Say so in its "
                   "details, and "
                   "align it "
                   "once more. Nothing was changed.")
            .arg(swath::WordsOf(*alignment.StoredAs));
      }
      return QStringLiteral("Not found: %1 Nothing was changed.").arg(TextOf(alignment.Reason));
    case Finding::Stopped:
      break;
  }
  return {};
}

}  // namespace pelorin::align
