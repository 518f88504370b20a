#include "orbit/orbit_terms.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// 1 + cos i of an equatorial retrograde orbit, where the long-period coefficient has its pole.
constexpr double kSmallestOnePlusCos = 1.5e-12;

constexpr double Fourth(double x) { return x * x * (x * x); }

}  // namespace

SharedTerms InitialiseOrbitTerms(const TSatellite& satellite) {
  OrbitTerms t{};
  DragTerms d{};
  t.xno = satellite.MeanMotion;
  t.eo = satellite.Eccentricity;
  t.xincl = satellite.Inclination;
  t.xmo = satellite.MeanAnomaly;
  t.omegao = satellite.ArgumentOfPerigee;
  t.xnodeo = satellite.RightAscensionOfNode;
  t.bstar = satellite.BStar;

  // Brouwer mean motion and semi-major axis from the element set's mean motion.
  const double a1 = std::pow(XKE / t.xno, kTwoThirds);
  t.cosio = std::cos(t.xincl);
  t.sinio = std::sin(t.xincl);
  t.theta2 = t.cosio * t.cosio;
  t.x3thm1 = 3 * t.theta2 - 1;
  t.x1mth2 = 1 - t.theta2;
  t.x7thm1 = 7 * t.theta2 - 1;
  t.eosq = t.eo * t.eo;
  t.betao2 = 1 - t.eosq;
  t.betao = std::sqrt(t.betao2);
  const double del1 = k15CK2 * t.x3thm1 / (a1 * a1 * t.betao * t.betao2);
  const double ao = a1 * (1 - del1 * (1.0 / 3 + del1 * (1 + 134.0 / 81 * del1)));
  const double delo = k15CK2 * t.x3thm1 / (ao * ao * t.betao * t.betao2);
  t.xnodp = t.xno / (1 + delo);
  t.aodp = ao / (1 - delo);

  // The atmosphere's reference height follows a low perigee down.
  const double perigee = (t.aodp * (1 - t.eo) - AE) * XKMPER;
  double s4 = 78;
  if (perigee < 156) s4 = perigee > 98 ? perigee - 78 : 20;
  const double qoms24 = Fourth((120 - s4) * AE / XKMPER);
  d.s4 = s4 / XKMPER + AE;

  const double pinvsq = 1 / (t.aodp * t.aodp * t.betao2 * t.betao2);
  d.tsi = 1 / (t.aodp - d.s4);
  d.eta = t.aodp * t.eo * d.tsi;
  d.etasq = d.eta * d.eta;
  d.eeta = t.eo * d.eta;
  const double psisq = std::fabs(1 - d.etasq);
  d.coef = qoms24 * Fourth(d.tsi);
  d.coef1 = d.coef / (psisq * psisq * psisq * std::sqrt(psisq));
  const double c2 = d.coef1 * t.xnodp *
                    (t.aodp * (1 + 1.5 * d.etasq + d.eeta * (4 + d.etasq)) +
                     k075CK2 * d.tsi / psisq * t.x3thm1 * (8 + 3 * d.etasq * (8 + d.etasq)));
  t.c1 = t.bstar * c2;
  t.c4 = 2 * t.xnodp * d.coef1 * t.aodp * t.betao2 *
         (d.eta * (2 + 0.5 * d.etasq) + t.eo * (0.5 + 2 * d.etasq) -
          2 * CK2 * d.tsi / (t.aodp * psisq) *
              (-3 * t.x3thm1 * (1 - 2 * d.eeta + d.etasq * (1.5 - 0.5 * d.eeta)) +
               0.75 * t.x1mth2 * (2 * d.etasq - d.eeta * (1 + d.etasq)) * std::cos(2 * t.omegao)));

  const double theta4 = t.theta2 * t.theta2;
  const double temp1 = k3CK2 * pinvsq * t.xnodp;
  const double temp2 = temp1 * CK2 * pinvsq;
  const double temp3 = k125CK4 * pinvsq * pinvsq * t.xnodp;
  t.xmdot = t.xnodp + 0.5 * temp1 * t.betao * t.x3thm1 +
            0.0625 * temp2 * t.betao * (13 - 78 * t.theta2 + 137 * theta4);
  t.omgdot = -0.5 * temp1 * (1 - 5 * t.theta2) + 0.0625 * temp2 * (7 - 114 * t.theta2 + 395 * theta4) +
             temp3 * (3 - 36 * t.theta2 + 49 * theta4);
  const double xhdot1 = -temp1 * t.cosio;
  t.xnodot = xhdot1 + (0.5 * temp2 * (4 - 19 * t.theta2) + 2 * temp3 * (3 - 7 * t.theta2)) * t.cosio;
  t.xnodcf = 3.5 * t.betao2 * xhdot1 * t.c1;
  t.t2cof = 1.5 * t.c1;
  const double onePlusCos = std::fmax(1 + t.cosio, kSmallestOnePlusCos);
  t.xlcof = 0.125 * A3OVK2 * t.sinio * (3 + 5 * t.cosio) / onePlusCos;
  t.aycof = 0.25 * A3OVK2 * t.sinio;
  return {t, d};
}

}  // namespace pelorin::orbit
