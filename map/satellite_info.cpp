#include "map/satellite_info.h"

#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/scalar_math.h"

namespace pelorin::map {

SatelliteInfo InfoOf(const orbit::TSatellite& satellite, const orbit::SatelliteState& state, double jd,
                     orbit::Observer station) {
  orbit::LookAngleSet look;
  SatelliteInfo info;
  orbit::LookAngles(state.Position, state.Velocity, station, jd, look, info.Visible);
  orbit::Geodetic below;
  orbit::SatLatLonAlt(state.Position, jd, below);
  const double azimuthDeg = orbit::Degrees(look.Azimuth);
  info.ElevationDeg = orbit::Degrees(look.Elevation);
  info.StatusText =
      QString::asprintf("Lat: %.0f°  Lon: %.0f°  Alt: %.0fkm  ", orbit::Degrees(below.Latitude),
                        orbit::Degrees(orbit::SignedAngle(below.Longitude)), below.Altitude) +
      QString::asprintf("Az: %.0f°  El: %.1f°  Range: %.0fkm  Dop: %.0fHz  Sig: %.0fdBm", azimuthDeg,
                        info.ElevationDeg, look.Range, orbit::DopplerHz(look.RangeRate),
                        orbit::SignalDbm(look.Range, info.Visible));
  const QString name = QString::fromStdString(satellite.Name);
  info.Title =
      (info.Visible ? name : u'(' + name + u')') +
      QString::asprintf(" Az %.0f  El %.1f  Range %.0fkm", azimuthDeg, info.ElevationDeg, look.Range);
  return info;
}

SatelliteInfo InfoAt(const orbit::TSatellite& satellite, orbit::TDateTime moment,
                     const orbit::Observer& station) {
  const double jd = orbit::JulianDateOfDateTime(moment);
  return InfoOf(satellite, orbit::SatelliteStateKm(satellite, jd), jd, station);
}

}  // namespace pelorin::map
