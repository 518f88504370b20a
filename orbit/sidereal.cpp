#include "orbit/sidereal.h"

#include <cmath>

#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// Sidereal angle `ut` days after the midnight `jd0`.
double MeanSiderealAngle(double jd0, double ut) {
  const double t = (jd0 - 2451545.0) / 36525;
  const double gmst = 24110.54841 + t * (8640184.812866 + t * (0.093104 - t * 6.2e-6));
  return kTwoPi * Modulus(gmst + 86636.555366976 * ut, kSecondsPerDay) / kSecondsPerDay;
}

}  // namespace

EpochSidereal ThetaG(double epoch) {
  const EpochParts parts = SplitEpoch(epoch);
  const double ut = parts.Day - std::trunc(parts.Day);
  const double jd = JulianDateOfYear(parts.Year) + std::trunc(parts.Day);
  return {MeanSiderealAngle(jd, ut), jd - 2433281.5 + ut};
}

double ThetaGOfJulianDate(double jd) {
  const double ut = jd + 0.5 - std::floor(jd + 0.5);
  return MeanSiderealAngle(jd - ut, ut);
}

double DeltaET(double year) {
  return 26.465 + 0.747622 * (year - 1950) + 1.886913 * std::sin(kTwoPi * (year - 1975) / 33);
}

}  // namespace pelorin::orbit
