#include "swath/scanner_match.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <vector>

#include "orbit/model_constants.h"
#include "swath/scanner_geometry.h"

namespace pelorin::swath {
namespace {

/// Orbits of about a day or more.
constexpr double kGeostationaryDays = 0.9;

QString Widths(const Instrument& scanner) {
  const QString name = QString::fromStdString(scanner.Name);
  return scanner.Line.Law != ScanLaw::EvenAngles
             ? QStringLiteral("%1 (909, 1040 or 2080)").arg(name)
             : QStringLiteral("%1 (%2)").arg(name).arg(scanner.Line.Columns);
}

ScannerMatch Without(const QString& problem) {
  ScannerMatch match;
  match.Problem = problem;
  return match;
}

/// The scanner of a satellite that the table does not know.
Instrument ClassicScanner(const orbit::TSatellite& satellite) {
  Instrument scanner;
  scanner.Name = "APT";
  scanner.Line = {kZoneColumns, 2 * FamilyHalfAngle(ScannerFamilyOf(satellite.Name)), ScanLaw::Zones};
  scanner.RowsPerSecond = satellite.LinesPerMinute / orbit::kSecondsPerMinute;
  return scanner;
}

/// The scanner as a satellite of the table flies it.
ScannerMatch MatchOf(const ScannerTable::Flown& flown, int firstColumn) {
  ScannerMatch match;
  match.SeenBy = *flown.Instrument;
  match.SeenBy.Line = flown.Line();
  match.SeenBy.MarkSecond = flown.Satellite->MarkSecond;
  match.FirstColumn = firstColumn;
  match.Fitted = flown.Satellite->Offsets;
  match.TimeOffsetS = flown.Satellite->TimeOffsetS;
  return match;
}

/// The classic law stands in a table because somebody wants the old maps, whatever decoders say of zones.
bool WantsSphere(const orbit::TSatellite& set, const ScannerTable& table, const Recording& recording) {
  return recording.SeenBy.Line.Law == ScanLaw::Zones &&
         MatchScanner(table, set, recording.Columns).SeenBy.Line.Law == ScanLaw::ZonesSphere;
}

/// By the stamps of its lines; six where there are none, as most have.
double RowsPerSecondOf(const Recording& recording) {
  constexpr double usual = 6;
  std::vector<double> apart;
  for (int line = 1; line < recording.Rows; ++line) {
    const double seconds = recording.SecondsOfLine(line) - recording.SecondsOfLine(line - 1);
    if (recording.LineTimesS && seconds > 0) apart.push_back(seconds);
  }
  if (apart.empty()) return usual;
  const auto middle = apart.begin() + static_cast<std::ptrdiff_t>(apart.size() / 2);
  std::ranges::nth_element(apart, middle);
  return 1 / *middle;
}

}  // namespace

QString ClassicNote(const orbit::TSatellite& satellite) {
  // Those of 240 lines are known for what they are.
  if (ScannerFamilyOf(satellite.Name) != ScannerFamily::Other || satellite.LinesPerMinute != 120)
    return QString();
  return QStringLiteral("No scanner of %1 is known: it is taken to look 45 degrees to either side.")
      .arg(QString::fromStdString(satellite.Name));
}

ScannerMatch MatchScanner(const ScannerTable& table, const orbit::TSatellite& satellite, int columns) {
  const QString name = QString::fromStdString(satellite.Name);
  const auto flown = table.Of(satellite);
  QStringList widths;
  for (const ScannerTable::Flown& one : flown) {
    const ScannerMatch match = MatchOf(one, FirstColumnOf(one.Line(), columns).value_or(0));
    if (FirstColumnOf(one.Line(), columns)) return match;
    widths.append(Widths(match.SeenBy));
  }
  if (!flown.empty()) {
    return Without(
        QStringLiteral("A picture of %1 columns fits no scanner of %2, which has %3. Was it cut or "
                       "scaled, or is it of another satellite?")
            .arg(columns)
            .arg(name, widths.join(QStringLiteral(", "))));
  }
  if (satellite.PeriodDays() > kGeostationaryDays) {
    return Without(
        QStringLiteral("%1 is geostationary: its pictures have no lines across a flight, and there "
                       "is no map for them.")
            .arg(name));
  }
  if (satellite.Name.starts_with("METEOR-M") || satellite.Name.starts_with("METEOR M")) {
    return Without(QStringLiteral("No scanner of %1 is known. Its angle and columns can be added in a file "
                                  "scanners.json beside the settings.")
                       .arg(name));
  }
  const Instrument classic = ClassicScanner(satellite);
  const auto first = FirstColumnOf(classic.Line, columns);
  if (!first) {
    return Without(
        QStringLiteral("No scanner of %1 with %2 columns is known, and they are none of the old "
                       "picture format's (909, 1040 or 2080). Is it of another satellite? Scanners "
                       "can be added in a file scanners.json beside the settings.")
            .arg(name)
            .arg(columns));
  }
  ScannerMatch match{{}, {}, classic, KnownFrom::Default, *first, {}, 0};
  match.Note = ClassicNote(satellite);
  return match;
}

void SettleLies(Recording& recording) {
  if (recording.LiesIsFrom != KnownFrom::Default) return;
  recording.Lies = {!recording.SouthBound && recording.SeenBy.Line.Law != ScanLaw::EvenAngles, false};
}

ScannerMatch TakeElements(orbit::TSatellite set, const ScannerTable& table, Recording& recording) {
  const auto isTold = [](KnownFrom from) { return from == KnownFrom::Product || from == KnownFrom::User; };
  ScannerMatch match;
  if (recording.ScannerIsFrom == KnownFrom::User) {
    match.SeenBy = recording.SeenBy;
    match.From = KnownFrom::Default;
    // What was fitted counts where the satellite carries the scanner.
    for (const ScannerTable::Flown& one : table.Of(set)) {
      if (one.Instrument->Name == recording.SeenBy.Name) match = MatchOf(one, recording.FirstColumn);
    }
    recording.SeenBy = match.SeenBy;
  } else if (recording.ScannerIsFrom == KnownFrom::Product && !WantsSphere(set, table, recording)) {
    // Products tell angles and columns; how fast and how it flies the table knows.
    const ScannerMatch known = MatchScanner(table, set, recording.SeenBy.Line.Columns);
    recording.SeenBy.RowsPerSecond =
        known.Problem.isEmpty() ? known.SeenBy.RowsPerSecond : RowsPerSecondOf(recording);
    recording.SeenBy.YawSteering = known.SeenBy.YawSteering;
    recording.SeenBy.MarkSecond = known.SeenBy.MarkSecond;
    match.SeenBy = recording.SeenBy;
    match.TimeOffsetS = known.TimeOffsetS;
  } else {
    match = MatchScanner(table, set, recording.Columns);
    recording.SeenBy = match.SeenBy;
    recording.FirstColumn = match.FirstColumn;
    recording.ScannerIsFrom = match.From;
  }
  if (!isTold(recording.OffsetsAreFrom)) {
    recording.Offsets = match.Fitted;
    recording.OffsetsAreFrom = match.From;
  }
  SettleLies(recording);
  // What age costs is counted in the lines of this scanner.
  if (match.Problem.isEmpty()) {
    set.LinesPerMinute =
        static_cast<int>(std::lround(recording.SeenBy.RowsPerSecond * orbit::kSecondsPerMinute));
  }
  recording.Elements = std::make_shared<const orbit::TSatellite>(std::move(set));
  return match;
}

}  // namespace pelorin::swath
