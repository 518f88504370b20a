#include "passes/pass_details.h"

#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::passes {
namespace {

double AzimuthDeg(const orbit::TSatellite& satellite, orbit::Observer observer, double jd) {
  const orbit::SatelliteState state = orbit::SatelliteStateKm(satellite, jd);
  orbit::LookAngleSet look;
  bool visible = false;
  orbit::LookAngles(state.Position, state.Velocity, observer, jd, look, visible);
  return orbit::Degrees(look.Azimuth);
}

}  // namespace

PassDetails DetailsOf(const orbit::Pass& pass, const orbit::TSatellite& satellite,
                      const orbit::Observer& observer) {
  const orbit::TrueCulmination top = orbit::RefineCulmination(satellite, observer, pass);
  return {QString::fromStdString(pass.Record.Name),
          QString::fromStdString(satellite.CatalogueNumber),
          orbit::DateTimeOfJulianDate(pass.Aos),
          orbit::DateTimeOfJulianDate(top.JulianDate),
          orbit::DateTimeOfJulianDate(pass.Los),
          AzimuthDeg(satellite, observer, pass.Aos),
          AzimuthDeg(satellite, observer, top.JulianDate),
          AzimuthDeg(satellite, observer, pass.Los),
          orbit::Degrees(top.ElevationRad),
          pass.Record.SouthBound,
          pass.Record.DurationSeconds};
}

}  // namespace pelorin::passes
