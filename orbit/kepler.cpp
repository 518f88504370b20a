#include "orbit/kepler.h"

#include <cmath>

#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "orbit/small_turn.h"

namespace pelorin::orbit {
void StateFromMeanOrbit(const OrbitTerms& k, const MeanOrbit& mean, Vector& position, Vector& velocity) {
  const double a = mean.a;

  // Long-period terms.
  const SinCos perigee = SinCosOf(mean.omega);
  const double axn = mean.e * perigee.cos;
  const double temp = 1 / (a * (1 - mean.e * mean.e));
  const double ayn = mean.e * perigee.sin + temp * k.aycof;
  const double xlt = mean.xl + temp * k.xlcof * axn;

  // Kepler's equation for the anomaly from the node, by Newton's steps until one is 1e-6 at the most. The
  // last one counts, too: what is left then is below 1e-12.
  const double capu = FMod2p(xlt - mean.xnode);
  double epw = capu;
  SinCos e = SinCosOf(epw);
  for (int i = 0; i < 10; ++i) {
    const double change = (capu - ayn * e.cos + axn * e.sin - epw) / (1 - axn * e.cos - ayn * e.sin);
    epw += change;
    e = TurnedBy(e, change);
    if (!(std::fabs(change) > 1e-6)) break;
  }
  const double ecose = axn * e.cos + ayn * e.sin;
  const double esine = axn * e.sin - ayn * e.cos;

  // Short-period preliminary quantities.
  const double elsq = axn * axn + ayn * ayn;
  const double betal = std::sqrt(1 - elsq);
  const double pl = a * (1 - elsq);
  const double r = a * (1 - ecose);
  const double rInverse = 1 / r;
  const double rdot = XKE * std::sqrt(a) * esine * rInverse;
  const double rfdot = XKE * std::sqrt(pl) * rInverse;
  const double aOverR = a * rInverse;
  const double temp3 = 1 / (1 + betal);
  // Sine and cosine of the argument of latitude; their squares add to 1 for any anomaly, so no arctangent is
  // needed.
  const SinCos u{aOverR * (e.sin - ayn - axn * esine * temp3), aOverR * (e.cos - axn + ayn * esine * temp3)};
  const double sin2u = 2 * u.sin * u.cos;
  const double cos2u = 2 * u.cos * u.cos - 1;
  const double temp1 = CK2 / pl;
  const double temp2 = temp1 / pl;

  // Short-period terms.
  const double xn = XKE / (a * std::sqrt(a));
  const double rk = r * (1 - 1.5 * temp2 * betal * k.x3thm1) + 0.5 * temp1 * k.x1mth2 * cos2u;
  const SinCos uk = TurnedBy(u, -0.25 * temp2 * k.x7thm1 * sin2u);
  const double xnodek = mean.xnode + 1.5 * temp2 * k.cosio * sin2u;
  const SinCos ik =
      TurnedBy({mean.sinInclination, mean.cosInclination}, 1.5 * temp2 * k.cosio * k.sinio * cos2u);
  const double rdotk = rdot - xn * temp1 * k.x1mth2 * sin2u;
  const double rfdotk = rfdot + xn * temp1 * (k.x1mth2 * cos2u + 1.5 * k.x3thm1);

  // Orientation.
  const SinCos node = SinCosOf(xnodek);
  const double xmx = -node.sin * ik.cos;
  const double xmy = node.cos * ik.cos;
  const Vector along{xmx * uk.sin + node.cos * uk.cos, xmy * uk.sin + node.sin * uk.cos, ik.sin * uk.sin, 0};
  const Vector across{xmx * uk.cos - node.cos * uk.sin, xmy * uk.cos - node.sin * uk.sin, ik.sin * uk.cos, 0};
  position = {rk * along.x, rk * along.y, rk * along.z, 0};
  velocity = {rdotk * along.x + rfdotk * across.x, rdotk * along.y + rfdotk * across.y,
              rdotk * along.z + rfdotk * across.z, 0};
}

}  // namespace pelorin::orbit
