#include <cmath>
#include <memory>

#include "cli/commands.h"
#include "cli/known_scanners.h"
#include "cli/options.h"
#include "cli/table.h"
#include "orbit/element_fields.h"
#include "orbit/julian_date.h"
#include "swath/ground_track.h"
#include "swath/pixel_geometry.h"
#include "swath/scanner_geometry.h"

namespace pelorin::cli {

using swath::kHalfLinePixels;

namespace {

const QString kRoll = QStringLiteral("roll"), kPitch = QStringLiteral("pitch"), kYaw = QStringLiteral("yaw");

}  // namespace

void RunScan(const QStringList& list) {
  const Arguments arguments(QStringLiteral("scan"),
                            QStringLiteral("The distances of pixels 0 to 454 from the track, in km, measured "
                                           "at the satellite's height along the normal of its orbit."),
                            {SatelliteOption(),
                             {QStringLiteral("height"), QStringLiteral("KM"),
                              QStringLiteral("The satellite's height, 100 to 50000 km.")}},
                            list);
  const std::string name = arguments.Required(QStringLiteral("satellite")).toStdString();
  const swath::ScannerFamily family = swath::ScannerFamilyOf(orbit::UpperCased(orbit::Trimmed(name)));
  arguments.Required(QStringLiteral("height"));
  Say(QStringLiteral("Scan half-angle for that name: %1 degrees.").arg(swath::FamilyHalfAngle(family)));
  const swath::ScanDistances distances =
      swath::ScanDistancesOf(family, arguments.Number(QStringLiteral("height"), 0, 100, 50000));
  Table table({QStringLiteral("pixel"), QStringLiteral("distance_km")}, false);
  for (int i = 0; i <= kHalfLinePixels; ++i) table.Add({i, Cell(distances[swath::ScanIndex(i)], 6)});
  table.Finish();
}

namespace {

/// Positions as the classic table of distances has them.
void PrintClassicLine(const orbit::TSatellite& satellite, const swath::GroundTrack& track) {
  const swath::ScanDistances distances =
      swath::ScanDistancesOf(swath::ScannerFamilyOf(satellite.Name), track.Below.Altitude);
  Table table({QStringLiteral("position"), QStringLiteral("latitude_deg"), QStringLiteral("longitude_deg")},
              false);
  for (int s = -kHalfLinePixels; s <= kHalfLinePixels; ++s) {
    const swath::GroundPoint point = swath::PointAcross(track, distances[swath::ScanIndex(s)]);
    table.Add({s, Cell(point.LatitudeDeg, 6), Cell(point.LongitudeDeg, 6)});
  }
  table.Finish();
}

/// A line as one of the known scanners sees it.
void PrintLineOf(const swath::Scanner& scanner, const orbit::TSatellite& satellite,
                 const swath::ScannerTable& scanners, double jd, const Arguments& arguments) {
  swath::Recording recording;
  recording.Elements = std::make_shared<const orbit::TSatellite>(satellite);
  recording.SeenBy = scanner;
  for (const swath::ScannerTable::Flown& flown : scanners.Of(satellite)) {
    if (flown.Instrument == &scanner) recording.SeenBy.Line = flown.Line();
  }
  recording.Offsets = {arguments.Number(kRoll, 0, -45, 45), arguments.Number(kPitch, 0, -45, 45),
                       arguments.Number(kYaw, 0, -180, 180)};
  recording.Start = orbit::DateTimeOfJulianDate(jd);
  recording.Rows = 1;
  recording.Columns = recording.SeenBy.Line.Columns;
  const swath::PixelGeometry geometry(recording);
  Table table({QStringLiteral("column"), QStringLiteral("latitude"), QStringLiteral("longitude")}, false);
  int missed = 0;
  for (int column = 0; column < recording.Columns; ++column) {
    if (const auto point = geometry.GroundOf({1.0 * column, 0})) {
      table.Add({column, Cell(point->LatitudeDeg, 6), Cell(point->LongitudeDeg, 6)});
    } else {
      ++missed;
    }
  }
  table.Finish();
  if (missed > 0) Say(QStringLiteral("%1 columns look past the Earth and are left out.").arg(missed));
}

}  // namespace

void RunLine(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("line"),
      QStringLiteral("The ground points of one scan line. With --scanner: every column in the order of "
                     "reception, seen along "
                     "rays to the ellipsoid. Without it: positions -454 to 454 of the old picture format by "
                     "its table of "
                     "distances on a sphere; positive ones lie to the left of the flight, which is east on a "
                     "south-bound pass."),
      {ElementsOption(),
       SatelliteOption(),
       {QStringLiteral("from"), QStringLiteral("TIME"),
        QStringLiteral("The line's moment: YYYY-MM-DDTHH:MM:SS[.fff] in UTC, or a Julian date.")},
       {QStringLiteral("scanner"), QStringLiteral("NAME"),
        QStringLiteral("One of those that \"pelorin-cli scanners\" lists, as in \"MSU-MR LRPT\".")},
       {kRoll, QStringLiteral("DEG"),
        QStringLiteral("With --scanner: the line moved to the left of the flight. Default: 0.")},
       {kPitch, QStringLiteral("DEG"), QStringLiteral("With --scanner: the line moved forward. Default: 0.")},
       {kYaw, QStringLiteral("DEG"),
        QStringLiteral("With --scanner: the line's left end turned forward. Default: 0.")},
       NewestOption()},
      list);
  const QString name = arguments.Required(QStringLiteral("satellite"));
  const double jd = ParseMoment(arguments.Required(QStringLiteral("from")));
  const QString wanted = arguments.Text(QStringLiteral("scanner"));
  for (const QString& option : {kRoll, kPitch, kYaw}) {
    if (wanted.isEmpty() && arguments.Has(option)) {
      throw UsageError(QStringLiteral("--%1 goes with --scanner").arg(option));
    }
  }
  const swath::ScannerTable scanners = wanted.isEmpty() ? swath::ScannerTable() : KnownScanners();
  const swath::Scanner* scanner = wanted.isEmpty() ? nullptr : &ScannerNamed(scanners, wanted);

  const orbit::TSatellite satellite = ChooseSet(*arguments.ElementSets(), name, jd, arguments);
  const swath::GroundTrack track = swath::TrackAt(satellite, jd);
  if (!std::isfinite(track.Below.Altitude)) {
    throw Failure(QStringLiteral("The elements give no position for that moment"));
  }
  if (scanner == nullptr) return PrintClassicLine(satellite, track);
  PrintLineOf(*scanner, satellite, scanners, jd, arguments);
}

}  // namespace pelorin::cli
