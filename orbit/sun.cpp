#include "orbit/sun.h"

#include <cmath>

#include "orbit/date_time.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"

namespace pelorin::orbit {

void SunPosition(double jd, Vector& position) {
  constexpr double astronomicalUnitKm = 149597870;
  const double days = jd - 2415020;
  const double year = days / 365.25 + 1900;
  const double t = (days + DeltaET(year) / kSecondsPerDay) / 36525;
  const double m =
      Radians(Modulus(Modulus(35999.04975 * t, 360) + 358.47583 - t * t * (0.00015 + 3.3e-6 * t), 360));
  const double l = Radians(Modulus(Modulus(36000.76892 * t, 360) + 279.69668 + 0.0003025 * t * t, 360));
  const double e = 0.01675104 - (4.18e-5 + 1.26e-7 * t) * t;
  const double c = Radians((1.91946 - (0.004789 + 1.4e-5 * t) * t) * std::sin(m) +
                           (0.020094 - 0.0001 * t) * std::sin(2 * m) + 0.000293 * std::sin(3 * m));
  const double o = Radians(Modulus(259.18 - 1934.142 * t, 360));
  const double lsa = FMod2p(l + c - Radians(0.00569 - 0.00479 * std::sin(o)));
  const double nu = FMod2p(m + c);
  const double r = astronomicalUnitKm * 1.0000002 * (1 - e * e) / (1 + e * std::cos(nu));
  const double eps =
      Radians(23.452294 - (0.0130125 + (1.64e-6 - 5.03e-7 * t) * t) * t + 0.00256 * std::cos(o));
  position = {r * std::cos(lsa), r * std::sin(lsa) * std::cos(eps), r * std::sin(lsa) * std::sin(eps), r};
}

}  // namespace pelorin::orbit
