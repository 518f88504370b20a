#include <cmath>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "swath/ground_track.h"
#include "swath/scanner_geometry.h"

namespace pelorin::cli {

using swath::kHalfLinePixels;

void RunScan(const QStringList& list) {
  const Arguments arguments(QStringLiteral("scan"),
                            QStringLiteral("The distances of pixels 0 to 454 from the track, in km, measured "
                                           "at the satellite's height along the normal of its orbit."),
                            {SatelliteOption(),
                             {QStringLiteral("height"), QStringLiteral("KM"),
                              QStringLiteral("The satellite's height, 100 to 50000 km.")}},
                            list);
  orbit::TSatellite satellite;
  satellite.SetIdentity(arguments.Required(QStringLiteral("satellite")).toStdString(), "");
  arguments.Required(QStringLiteral("height"));
  Say(QStringLiteral("Scan half-angle for that name: %1 degrees.")
          .arg(swath::FamilyHalfAngle(swath::ScannerFamilyOf(satellite.Name))));
  swath::BuildScanTable(satellite, kHalfLinePixels,
                        arguments.Number(QStringLiteral("height"), 0, 100, 50000));
  Table table({QStringLiteral("pixel"), QStringLiteral("distance_km")}, false);
  for (int i = 0; i <= kHalfLinePixels; ++i) table.Add({i, Cell(swath::CrossTrackOffset(satellite, i), 6)});
  table.Finish();
}

void RunLine(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("line"),
      QStringLiteral(
          "The ground points of one scan line: for positions -454 to 454 the geodetic latitude and the "
          "longitude in degrees. "
          "Positive positions lie to the left of the flight, which is east on a south-bound pass."),
      {ElementsOption(),
       SatelliteOption(),
       {QStringLiteral("from"), QStringLiteral("TIME"),
        QStringLiteral("The line's moment: YYYY-MM-DDTHH:MM:SS[.fff] in UTC, or a Julian date.")},
       NewestOption()},
      list);
  const QString name = arguments.Required(QStringLiteral("satellite"));
  const double jd = ParseMoment(arguments.Required(QStringLiteral("from")));
  orbit::TSatellite satellite = ChooseSet(*arguments.ElementSets(), name, jd, arguments);
  const swath::GroundTrack track = swath::TrackAt(satellite, jd);
  if (!std::isfinite(track.Below.Altitude)) {
    throw Failure(QStringLiteral("The elements give no position for that moment"));
  }
  swath::BuildScanTable(satellite, kHalfLinePixels, track.Below.Altitude);
  Table table({QStringLiteral("position"), QStringLiteral("latitude_deg"), QStringLiteral("longitude_deg")},
              false);
  for (int s = -kHalfLinePixels; s <= kHalfLinePixels; ++s) {
    const swath::GroundPoint point = swath::PointAcross(track, swath::CrossTrackOffset(satellite, s));
    table.Add({s, Cell(point.LatitudeDeg, 6), Cell(point.LongitudeDeg, 6)});
  }
  table.Finish();
}

}  // namespace pelorin::cli
