#include "align/logged_alignment.h"

#include <QFileInfo>
#include <cmath>

namespace pelorin::align {

QString NameOf(FoundBy how) {
  switch (how) {
    case FoundBy::CoastsRoughly:
      return QStringLiteral("coasts roughly");
    case FoundBy::Hand:
      return QStringLiteral("by hand");
    case FoundBy::Coasts:
      break;
  }
  return QStringLiteral("coasts");
}

QString WordsOf(FoundBy how) {
  switch (how) {
    case FoundBy::CoastsRoughly:
      return QStringLiteral("roughly by its coasts");
    case FoundBy::Hand:
      return QStringLiteral("by hand");
    case FoundBy::Coasts:
      break;
  }
  return QStringLiteral("by its coasts");
}

LoggedAlignment Logged(const swath::Recording& aligned, const QString& picture, FoundBy how,
                       std::optional<double> chancePeaks, orbit::TDateTime accepted) {
  LoggedAlignment logged;
  logged.Picture = QFileInfo(picture).fileName();
  logged.Satellite = aligned.Satellite;
  logged.CatalogueNumber = QString::fromStdString(aligned.Elements->CatalogueKey());
  logged.Start = aligned.Start;
  logged.StartIsFrom = aligned.StartIsFrom;
  logged.Columns = aligned.Columns;
  logged.Rows = aligned.Rows;
  logged.ScannerColumns = aligned.SeenBy.Line.Columns;
  logged.ClockS = aligned.OffsetS;
  logged.ShiftColumns = aligned.ShiftColumns;
  logged.Offsets = aligned.Offsets;
  logged.DriftPpm = aligned.DriftPpm;
  logged.How = how;
  logged.ChancePeaks = chancePeaks;
  logged.Accepted = accepted;
  return logged;
}

bool IsSameSatellite(const LoggedAlignment& one, const LoggedAlignment& other) {
  if (!one.CatalogueNumber.isEmpty() && !other.CatalogueNumber.isEmpty()) {
    return one.CatalogueNumber == other.CatalogueNumber;
  }
  return one.Satellite.compare(other.Satellite, Qt::CaseInsensitive) == 0;
}

bool IsSamePicture(const LoggedAlignment& one, const LoggedAlignment& other) {
  constexpr double sameS = 0.5;
  return IsSameSatellite(one, other) && one.Columns == other.Columns &&
         std::fabs(one.Start.Days - other.Start.Days) * orbit::kSecondsPerDay < sameS &&
         (one.Picture == other.Picture || one.Rows == other.Rows);
}

swath::Recording Aligned(swath::Recording recording, const LoggedAlignment& logged) {
  recording.OffsetS = logged.ClockS;
  recording.ShiftColumns = logged.ShiftColumns;
  recording.Offsets = logged.Offsets;
  recording.DriftPpm = logged.DriftPpm;
  recording.OffsetsAreFrom = swath::KnownFrom::Alignment;
  return recording;
}

bool LiesAlike(const LoggedAlignment& one, const LoggedAlignment& other) {
  constexpr double same = 0.002;  // of a second, a column, a degree
  constexpr double samePpm = 0.2;
  const auto isSame = [](double a, double b) { return std::fabs(a - b) < same; };
  return isSame(one.ClockS, other.ClockS) && isSame(one.ShiftColumns, other.ShiftColumns) &&
         isSame(one.Offsets.RollDeg, other.Offsets.RollDeg) &&
         isSame(one.Offsets.PitchDeg, other.Offsets.PitchDeg) &&
         isSame(one.Offsets.YawDeg, other.Offsets.YawDeg) &&
         std::fabs(one.DriftPpm - other.DriftPpm) < samePpm;
}

}  // namespace pelorin::align
