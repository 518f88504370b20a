#include <cmath>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/observer.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::cli {
namespace {

constexpr int kMostSteps = 1000000;

std::vector<Cell> RowAt(const orbit::TSatellite& satellite, orbit::Observer observer, double jd) {
  const orbit::SatelliteState state = orbit::SatelliteStateKm(satellite, jd);
  const orbit::Vector &p = state.Position, &v = state.Velocity;
  orbit::Geodetic below;
  orbit::SatLatLonAlt(p, jd, below);
  double geocentricLatitude = 0, geocentricLongitude = 0;
  orbit::SatGeocentricLatLon(p, jd, geocentricLatitude, geocentricLongitude);
  orbit::LookAngleSet look;
  bool visible = false;
  orbit::LookAngles(p, v, observer, jd, look, visible);
  return {orbit::FormatDateTime("yyyy-mm-ddThh:nn:ss.zzzZ", orbit::DateTimeOfJulianDate(jd)),
          Cell(jd, 9),
          Cell(p.x, 6),
          Cell(p.y, 6),
          Cell(p.z, 6),
          Cell(v.x, 9),
          Cell(v.y, 9),
          Cell(v.z, 9),
          Cell(orbit::Degrees(below.Latitude), 6),
          Cell(orbit::Degrees(below.Longitude), 6),
          Cell(orbit::Degrees(geocentricLatitude), 6),
          Cell(orbit::Degrees(geocentricLongitude), 6),
          Cell(below.Altitude, 4),
          Cell(orbit::Degrees(look.Azimuth), 5),
          Cell(orbit::Degrees(look.Elevation), 5),
          Cell::Flag(visible),
          Cell(look.Range, 4),
          Cell(look.RangeRate, 7),
          Cell(orbit::DopplerHz(look.RangeRate), 2),
          Cell(orbit::SignalDbm(look.Range, visible), 3)};
}

}  // namespace

void RunTrack(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("track"),
      QStringLiteral("Follows a satellite: position and velocity in the inertial frame of the elements (km, "
                     "km/s), the point below it, and how "
                     "the station sees and hears it."),
      {ElementsOption(),
       SatelliteOption(),
       StationOption(),
       {QStringLiteral("from"), QStringLiteral("TIME"),
        QStringLiteral("First moment: YYYY-MM-DDTHH:MM:SS[.fff] in UTC, or a Julian date.")},
       {QStringLiteral("seconds"), QStringLiteral("N"), QStringLiteral("How long. Default: 900.")},
       {QStringLiteral("step"), QStringLiteral("S"), QStringLiteral("Seconds between steps. Default: 10.")},
       TableFormatOption(),
       NewestOption()},
      list);
  const bool json = arguments.WantsJson();
  const QString name = arguments.Required(QStringLiteral("satellite"));
  const double from = ParseMoment(arguments.Required(QStringLiteral("from")));
  const double seconds = arguments.Number(QStringLiteral("seconds"), 900, 0, 366 * orbit::kSecondsPerDay);
  const double step = arguments.Number(QStringLiteral("step"), 10, 0.001, orbit::kSecondsPerDay);
  const orbit::Observer observer = arguments.Station().Place;
  const orbit::TSatellite satellite = ChooseSet(*arguments.ElementSets(), name, from, arguments);

  // Every row before the first is written: a failure must not leave half a table behind.
  const double steps = std::floor(seconds / step + 1e-9);
  if (steps > kMostSteps)
    throw UsageError(QStringLiteral("That would be %1 steps; %2 are the most").arg(steps).arg(kMostSteps));
  std::vector<std::vector<Cell>> rows;
  for (int i = 0; i <= static_cast<int>(steps); ++i)
    rows.push_back(RowAt(satellite, observer, from + i * step / orbit::kSecondsPerDay));
  Table table({QStringLiteral("utc"),
               QStringLiteral("jd"),
               QStringLiteral("x_km"),
               QStringLiteral("y_km"),
               QStringLiteral("z_km"),
               QStringLiteral("vx_km_s"),
               QStringLiteral("vy_km_s"),
               QStringLiteral("vz_km_s"),
               QStringLiteral("latitude_deg"),
               QStringLiteral("longitude_deg"),
               QStringLiteral("geocentric_latitude_deg"),
               QStringLiteral("geocentric_longitude_deg"),
               QStringLiteral("height_km"),
               QStringLiteral("azimuth_deg"),
               QStringLiteral("elevation_deg"),
               QStringLiteral("visible"),
               QStringLiteral("range_km"),
               QStringLiteral("range_rate_km_s"),
               QStringLiteral("doppler_hz"),
               QStringLiteral("signal_dbm")},
              json);
  for (const auto& row : rows) table.Add(row);
  table.Finish();
}

}  // namespace pelorin::cli
